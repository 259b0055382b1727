// The phonetic-guide page on arbitrary text under arbitrary settings, with
// the real tables: same page twice, the fixed head and tail, and valid UTF-8
// for valid UTF-8 input.
#include "export/Export.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "text/TextOps.hpp"

using namespace quill;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  LookUpEngine& engine = fuzz::RealEngine();
  static const std::string head = DocumentHead();
  fuzz::Input in(data, size);
  const LookUpSettings settings = fuzz::ReadSettings(in);
  const std::string text = in.Rest();

  const ExportPage first = BuildPhoneticPage(text, settings, engine);
  const ExportPage second = BuildPhoneticPage(text, settings, engine);
  QUILL_FUZZ_CHECK(first.status == second.status && first.text == second.text);
  if (first.status != ExportPage::Status::kDone) {
    QUILL_FUZZ_CHECK(Trim(text).empty());
    return 0;
  }
  QUILL_FUZZ_CHECK(first.text.compare(0, head.size(), head) == 0);
  const std::string tail = "</body>\n</html>";
  QUILL_FUZZ_CHECK(first.text.size() >= tail.size() &&
                   first.text.compare(first.text.size() - tail.size(),
                                      tail.size(), tail) == 0);
  if (IsValidUtf8(text)) QUILL_FUZZ_CHECK(IsValidUtf8(first.text));
  return 0;
}
