// Every reading string of the shipped zhuyintable, under every combination of
// the three settings, must come out of the four conversions with no Zhuyin
// letter and no tone mark left: a leftover means a syllable that the chains
// don't know, that is, a fault in the data or in a chain.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

#include "romanization/Romanization.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

bool HoldsZhuyin(const std::string& s) {
  for (std::size_t pos = 0; pos < s.size();) {
    const Utf8Char c = DecodeChar(s, pos);
    pos += c.length;
    if ((c.code >= 0x3105 && c.code <= 0x3129) || c.code == 0x02CA ||
        c.code == 0x02C7 || c.code == 0x02CB || c.code == 0x02D9) {
      return true;
    }
  }
  return false;
}

TEST(ZhuyinTableConversion, NoReadingLeavesZhuyinBehind) {
  const std::string path =
      std::string(QUILLMERE_SOURCE_DIR) + "/data/zhuyintable";
  std::ifstream in(path, std::ios::binary);
  ASSERT_TRUE(in) << "missing " << path;

  // Each line: a 3-byte key, 3 filler bytes, the readings.
  std::set<std::string> readings;
  std::string line;
  while (std::getline(in, line)) {
    if (line.size() > 6) readings.insert(line.substr(6));
  }
  ASSERT_GT(readings.size(), 1000u) << path;

  std::set<std::string> leftovers;
  for (const std::string& reading : readings) {
    for (const char* indicate : {"0", "1"}) {
      for (const char* numbers : {"0", "1"}) {
        for (const char* multiple : {"0", "1"}) {
          const ToneSettings s{indicate, numbers, multiple};
          const std::string outs[] = {
              ZhuyinToPinyin(reading, s), ZhuyinToTungyong(reading, s),
              ZhuyinToWade(reading, s), ZhuyinToZhuyin2(reading + " ", s)};
          for (const std::string& out : outs) {
            if (HoldsZhuyin(out)) leftovers.insert(reading + " -> " + out);
          }
        }
      }
    }
  }
  std::string report;
  int shown = 0;
  for (const std::string& l : leftovers) {
    if (++shown > 30) break;
    report += "\n  " + l;
  }
  EXPECT_TRUE(leftovers.empty())
      << leftovers.size() << " conversions keep Zhuyin:" << report;
}

}  // namespace
}  // namespace quill
