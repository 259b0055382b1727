// A temporary folder per test, with a zhuyintable written into it.
#pragma once

#include <optional>
#include <string>

#include "lookup/LookUp.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {

inline const std::string kRule = "-------------------";

// The body of the block with `header` in a result text.
inline std::string Block(const std::string& text, const std::string& header) {
  const std::string opening = header + "\r" + kRule + "\r";
  const auto at = text.find(opening);
  if (at == std::string::npos) return "<no block " + header + ">";
  const auto from = at + opening.size();
  return text.substr(from, text.find('\r', from) - from);
}

class TableFixture : public TempFolderTest {
 protected:
  // Files in the test's folder; the table only if `table` is given.
  DataFiles FilesWithTable(const std::optional<std::string>& table) {
    DataFiles files;
    files.zhuyintable = Path("zhuyintable");
    files.sttable = Path("STTABLE");
    files.tokenizer = Path("Tokenizer");
    files.temporaryFolder = folder().string();
    if (table) WriteFile(files.zhuyintable, *table);
    return files;
  }
};

}  // namespace quill
