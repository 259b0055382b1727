// Zhuyin readings rewritten into the four derived systems.
//
// Each conversion takes a whole reading string as it stands in zhuyintable
// (readings two blanks apart, tone mark last) and returns the converted
// readings, the further ones bracketed: "ㄇㄚ  ㄇㄛˊ" -> "mā(mó)". The result
// depends on the reading string and the three settings alone.
#pragma once

#include <string>
#include <string_view>

namespace quill {

// The three settings the conversions read; values as stored in the
// preferences ("0"/"1"/empty).
struct ToneSettings {
  std::string indicateTonesPrefValue;         // "0": no tones at all
  std::string UseToneNumbersPrefValue;        // "1": digits instead of marks
  std::string ShowMultipleReadingsPrefValue;  // "0": first reading only
};

std::string ZhuyinToPinyin(std::string_view reading, const ToneSettings& s);
std::string ZhuyinToTungyong(std::string_view reading, const ToneSettings& s);
std::string ZhuyinToWade(std::string_view reading, const ToneSettings& s);
std::string ZhuyinToZhuyin2(std::string_view reading, const ToneSettings& s);

// Tone digit at the end of a syllable -> mark on the right letter.
std::string AddPinyinToneSymbol(std::string_view syllable);
std::string AddTongYongPinyinToneSymbol(std::string_view syllable);
std::string AddZhuyin2ToneSymbol(std::string_view syllable);

}  // namespace quill
