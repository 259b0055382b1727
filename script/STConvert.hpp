// Simplified -> Traditional search keys through the byte table STTABLE.
//
// The text is taken to GB 2312 (EUC), each two-byte code addresses a cell of
// STTABLE holding the Big5 code of its Traditional form, and the result is
// taken back to UTF-8. Single bytes pass through. The result is only ever a
// search key for the reading table.
//
//   STConverter converter("/usr/lib/quillmere/STTABLE");
//   converter.STConvert("国");   // "國"
//   converter.STConvert("a国");  // "a國"
//
// STTABLE is a run of 2-byte cells, 94 to a row of 188 bytes: the rows of
// the lead bytes 161 to 163 from byte 0, then the rows from lead byte 176 on
// from byte 566. Lead bytes 164 to 175 take the first formula all the same
// and so land in the second section; that is how the table was laid out and
// the conversion keeps it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quill {

class STConverter {
 public:
  explicit STConverter(std::string tablePath);

  // The converted text; empty when STTABLE is missing.
  std::string STConvert(std::string_view source);

  // Byte offset of the cell for a lead and a trail byte.
  static long CellPosition(int lead, int trail);

 private:
  struct Converters;  // the two iconv descriptors, opened at first use

  bool LoadTable();

  std::string tablePath_;
  std::string table_;
  bool loaded_ = false;
  std::shared_ptr<Converters> converters_;
};

}  // namespace quill
