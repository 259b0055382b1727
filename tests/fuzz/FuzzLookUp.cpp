// The look-up on arbitrary bytes under arbitrary settings, with the real
// tables: it must not crash, must give the same result twice, and must give
// valid UTF-8 for valid UTF-8 input.
#include "lookup/LookUp.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "text/TextOps.hpp"

using namespace quill;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  LookUpEngine& engine = fuzz::RealEngine();
  fuzz::Input in(data, size);
  const LookUpSettings settings = fuzz::ReadSettings(in);
  const std::string text = in.Rest();

  const auto first = engine.LookUp(text, settings);
  const auto second = engine.LookUp(text, settings);
  QUILL_FUZZ_CHECK(first.outcome == second.outcome);
  QUILL_FUZZ_CHECK(first.text == second.text);
  QUILL_FUZZ_CHECK(first.outcome != LookUpEngine::Outcome::kTableMissing);
  if (IsValidUtf8(text)) QUILL_FUZZ_CHECK(IsValidUtf8(first.text));
  return 0;
}
