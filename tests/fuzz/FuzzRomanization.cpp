// Every conversion and marking routine on arbitrary reading strings under
// every setting: no crash, and valid UTF-8 out for valid UTF-8 in.
#include "romanization/Romanization.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "text/TextOps.hpp"

using namespace quill;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string reading(reinterpret_cast<const char*>(data), size);
  const bool valid = IsValidUtf8(reading);
  auto check = [&](const std::string& out) {
    if (valid) QUILL_FUZZ_CHECK(IsValidUtf8(out));
  };
  for (int bits = 0; bits < 8; ++bits) {
    const ToneSettings s{(bits & 1) ? "0" : "1", (bits & 2) ? "1" : "0",
                         (bits & 4) ? "0" : "1"};
    check(ZhuyinToPinyin(reading, s));
    check(ZhuyinToTungyong(reading, s));
    check(ZhuyinToWade(reading, s));
    check(ZhuyinToZhuyin2(reading, s));
  }
  check(AddPinyinToneSymbol(reading));
  check(AddTongYongPinyinToneSymbol(reading));
  check(AddZhuyin2ToneSymbol(reading));
  return 0;
}
