#include "romanization/Romanization.hpp"

// Placeholder until the rule chains land: every conversion yields nothing.
namespace quill {

std::string ZhuyinToPinyin(std::string_view, const ToneSettings&) { return {}; }
std::string ZhuyinToTungyong(std::string_view, const ToneSettings&) {
  return {};
}
std::string ZhuyinToWade(std::string_view, const ToneSettings&) { return {}; }
std::string ZhuyinToZhuyin2(std::string_view, const ToneSettings&) {
  return {};
}
std::string AddPinyinToneSymbol(std::string_view s) { return std::string(s); }
std::string AddTongYongPinyinToneSymbol(std::string_view s) {
  return std::string(s);
}
std::string AddZhuyin2ToneSymbol(std::string_view s) { return std::string(s); }

}  // namespace quill
