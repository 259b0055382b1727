// The one list of the five systems: for each, its place in PinyinSystems,
// the English header of its result block and its conversion routine. The
// look-up, the export and the preferences list loop over it.
//
//   for (const SystemRow& row : kSystemTable) {
//     if (row.convert != nullptr) text = row.convert(entry, tones);
//   }
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "romanization/Romanization.hpp"
#include "settings/Systems.hpp"

namespace quill {

struct SystemRow {
  System system;
  int position;  // 1 to 5, the system's character in PinyinSystems
  // The header of the block when the caller brings no translation.
  std::string_view header;
  // From a reading string of zhuyintable to this system; none for Zhuyin 1,
  // whose readings are shown as the table has them.
  std::string (*convert)(std::string_view, const ToneSettings&);
  // The routine expects the reading string with a blank behind it.
  bool takesTrailingBlank;
};

inline constexpr std::array<SystemRow, kSystemCount> kSystemTable{{
    {System::kHanyuPinyin, 1, "Hanyu Pinyin", &ZhuyinToPinyin, false},
    {System::kZhuyin1, 2, "Zhuyin 1 (Bopomofo)", nullptr, false},
    {System::kZhuyin2, 3, "Zhuyin 2", &ZhuyinToZhuyin2, true},
    {System::kWadeGiles, 4, "Wade-Giles", &ZhuyinToWade, false},
    {System::kTongyongPinyin, 5, "Tongyong Pinyin", &ZhuyinToTungyong, false},
}};

constexpr const SystemRow& RowOf(System system) {
  return kSystemTable[Index(system)];
}

// The headers of the five blocks.
using BlockHeaders = PerSystem<std::string>;

// The English headers of the table.
inline BlockHeaders DefaultHeaders() {
  BlockHeaders headers;
  for (const SystemRow& row : kSystemTable) {
    headers[row.system] = std::string(row.header);
  }
  return headers;
}

// The system's text of a reading string: the routine's result, or for
// Zhuyin 1 the string itself.
inline std::string Convert(const SystemRow& row, std::string_view entry,
                           const ToneSettings& tones) {
  if (row.convert == nullptr) return std::string(entry);
  if (row.takesTrailingBlank) {
    return row.convert(std::string(entry) + " ", tones);
  }
  return row.convert(entry, tones);
}

}  // namespace quill
