// Simplified -> Traditional search keys through the byte table STTABLE.
//
// The text is taken to GB 2312 (EUC), each two-byte code addresses a cell of
// STTABLE holding the Big5 code of its Traditional form, and the result is
// taken back to UTF-8. Single bytes pass through. The result is only ever a
// search key for the reading table.
#pragma once

#include <string>
#include <string_view>

namespace quill {

class STConverter {
 public:
  explicit STConverter(std::string tablePath);

  // The converted text; empty when STTABLE is missing.
  std::string STConvert(std::string_view source);

 private:
  std::string tablePath_;
  std::string table_;
  bool loaded_ = false;
};

}  // namespace quill
