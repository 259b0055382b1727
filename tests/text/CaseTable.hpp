// Tables of cases in tests/data: one case a line, fields split by tabs,
// blank lines and lines opening with # left out. Fields may hold bytes that
// plain text cannot: \xNN, \0, \t, \r, \n and \\ stand for them.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace quill {

inline std::string Unescape(const std::string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 >= text.size()) {
      out += text[i];
      continue;
    }
    const char kind = text[++i];
    const std::string names = "0trn", bytes = {'\0', '\t', '\r', '\n'};
    if (kind == 'x' && i + 2 < text.size()) {
      out += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      const auto at = names.find(kind);
      out += at == std::string::npos ? kind : bytes[at];
    }
  }
  return out;
}

// The rows of tests/data/`name`, each with its line number in front.
inline std::vector<std::vector<std::string>> ReadCaseTable(
    const std::string& name) {
  std::ifstream file(std::string(QUILLMERE_TEST_DATA) + "/" + name);
  std::vector<std::vector<std::string>> rows;
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> row = {std::to_string(number)};
    std::size_t start = 0;
    for (std::size_t tab; (tab = line.find('\t', start)) != std::string::npos;
         start = tab + 1) {
      row.push_back(Unescape(line.substr(start, tab - start)));
    }
    row.push_back(Unescape(line.substr(start)));
    rows.push_back(row);
  }
  return rows;
}

}  // namespace quill
