// STConvert on arbitrary text, with the real STTABLE and with an arbitrary
// one: no crash, and valid UTF-8 out, since the result becomes a search key.
#include "script/STConvert.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "text/TextOps.hpp"

using namespace quill;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  static STConverter real(QUILLMERE_SOURCE_DIR "/data/STTABLE");
  fuzz::Input in(data, size);
  const bool ownTable = in.Byte() & 1;
  const std::string text = in.Part();
  const std::string result =
      ownTable ? STConverter(fuzz::WriteTemporaryFile("STTABLE", in.Rest()))
                     .STConvert(text)
               : real.STConvert(text);
  QUILL_FUZZ_CHECK(IsValidUtf8(result));
  return 0;
}
