// The table search on arbitrary table contents: the index must answer what a
// byte search from the start answers, and cutting out a line never fails.
#include "lookup/ReadingTable.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "text/TextOps.hpp"

using namespace quill;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  fuzz::Input in(data, size);
  const std::string needles = in.Part();
  const std::string content = in.Rest();
  ReadingTable table;
  table.Assign(content);
  for (std::size_t pos = 0; pos < needles.size();) {
    const std::size_t length = DecodeChar(needles, pos).length;
    const std::string needle = needles.substr(pos, length);
    pos += length;
    const long hit = table.Find(needle);
    QUILL_FUZZ_CHECK(hit == InStrB(0, content, needle));
    if (hit > 0) {
      const std::string_view entry = table.ReadingEntry(hit);
      QUILL_FUZZ_CHECK(entry.size() <= content.size());
    }
  }
  QUILL_FUZZ_CHECK(table.Find(needles) == InStrB(0, content, needles));
  return 0;
}
