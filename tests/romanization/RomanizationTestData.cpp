#include "RomanizationTestData.hpp"

#include <fstream>

namespace quill::testing {

std::vector<std::vector<std::string>> ReadGoldenRows(const std::string& name,
                                                     bool onBlank) {
  std::vector<std::vector<std::string>> rows;
  std::ifstream in(std::string(QUILLMERE_TEST_DATA) + "/romanization/" + name);
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> cells;
    if (onBlank) {
      const std::size_t blank = line.find(' ');
      cells.push_back(line.substr(0, blank));
      if (blank != std::string::npos) cells.push_back(line.substr(blank + 1));
    } else {
      std::size_t from = 0;
      for (std::size_t tab; (tab = line.find('\t', from)) != std::string::npos;
           from = tab + 1) {
        cells.push_back(line.substr(from, tab - from));
      }
      cells.push_back(line.substr(from));
    }
    rows.push_back(cells);
  }
  return rows;
}

ToneSettings SettingsNamed(const std::string& name) {
  if (name == "off") return {"0", "1", "1"};
  if (name == "digits") return {"1", "1", "1"};
  if (name == "marks") return {"1", "0", "1"};
  if (name == "digits-first") return {"1", "1", "0"};
  if (name == "marks-first") return {"1", "0", "0"};
  return {"?", "?", "?"};
}

std::string ConvertWith(const std::string& system, const std::string& reading,
                        const ToneSettings& settings) {
  if (system == "pinyin") return ZhuyinToPinyin(reading, settings);
  if (system == "tongyong") return ZhuyinToTungyong(reading, settings);
  if (system == "wade") return ZhuyinToWade(reading, settings);
  if (system == "zhuyin2") return ZhuyinToZhuyin2(reading + " ", settings);
  return "unknown system " + system;
}

}  // namespace quill::testing
