#include "script/STConvert.hpp"

#include <iconv.h>

#include <cerrno>
#include <fstream>
#include <utility>

#include "text/TextOps.hpp"

namespace quill {
namespace {

constexpr unsigned char kBlank = ' ';
constexpr unsigned char kFirstDoubleByte = 161;

iconv_t Open(const char* to, const char* from) { return iconv_open(to, from); }
bool IsOpen(iconv_t cd) { return cd != reinterpret_cast<iconv_t>(-1); }

// Converts `input` with `cd`. What the target can't hold, or what isn't valid
// in the source, becomes `substitute` (which may be empty) and the
// conversion goes on behind it; `utf8Source` tells how far to skip then.
std::string Convert(iconv_t cd, std::string_view input,
                    std::string_view substitute, bool utf8Source) {
  std::string out;
  if (!IsOpen(cd)) return out;
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  char buffer[256];
  std::size_t pos = 0;
  while (pos < input.size()) {
    char* in = const_cast<char*>(input.data() + pos);
    std::size_t inLeft = input.size() - pos;
    char* outPtr = buffer;
    std::size_t outLeft = sizeof buffer;
    std::size_t rc = iconv(cd, &in, &inLeft, &outPtr, &outLeft);
    int error = errno;
    out.append(buffer, outPtr);
    pos = input.size() - inLeft;
    if (rc != static_cast<std::size_t>(-1) || error == E2BIG) continue;
    out.append(substitute);
    if (error == EINVAL) break;  // cut off at the end
    // EILSEQ: a character that can't go across, or an invalid byte.
    pos += utf8Source ? DecodeChar(input, pos).length : 1;
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
  }
  return out;
}

}  // namespace

struct STConverter::Converters {
  iconv_t toGb = Open("EUC-CN", "UTF-8");
  iconv_t fromBig5 = Open("UTF-8", "BIG5");
  Converters() = default;
  Converters(const Converters&) = delete;
  Converters& operator=(const Converters&) = delete;
  ~Converters() {
    if (IsOpen(toGb)) iconv_close(toGb);
    if (IsOpen(fromBig5)) iconv_close(fromBig5);
  }
};

STConverter::STConverter(std::string tablePath)
    : tablePath_(std::move(tablePath)) {}

long STConverter::CellPosition(int lead, int trail) {
  if (lead < 176) return (lead - 161) * 188L + (trail - 161) * 2L;
  return 566 + (lead - 176) * 188L + (trail - 161) * 2L;
}

// The table is small and never changes while the program runs, so it is
// read once; a missing one is looked for again at the next call.
bool STConverter::LoadTable() {
  if (loaded_) return true;
  std::ifstream file(tablePath_, std::ios::binary);
  if (!file) return false;
  // Read through istream::read, which records a failed read (a folder, say)
  // in the stream's state where a streambuf iterator would throw. A table
  // that can't be read counts as missing.
  std::string table;
  char buffer[4096];
  while (file.read(buffer, sizeof buffer) || file.gcount() > 0) {
    table.append(buffer, static_cast<std::size_t>(file.gcount()));
  }
  if (file.bad()) return false;
  table_ = std::move(table);
  loaded_ = true;
  return true;
}

std::string STConverter::STConvert(std::string_view source) {
  if (!LoadTable()) return {};
  if (!converters_) converters_ = std::make_shared<Converters>();

  // A character GB 2312 lacks becomes "?", which passes the walk as a
  // single byte and then finds no line.
  const std::string bytes =
      Convert(converters_->toGb, source, "?", /*utf8Source=*/true);
  std::string output;
  const std::size_t size = bytes.size();
  std::size_t position = 0;
  while (position < size) {
    auto current = static_cast<unsigned char>(bytes[position++]);
    while ((current == kBlank || current < kFirstDoubleByte) &&
           position < size) {
      output += static_cast<char>(current);
      current = static_cast<unsigned char>(bytes[position++]);
    }
    if (position >= size) {
      // No byte left to pair with: it goes out as it is.
      output += static_cast<char>(current);
      break;
    }
    const auto trail = static_cast<unsigned char>(bytes[position++]);
    const long cell = CellPosition(current, trail);
    // Near or past the end of the table fewer bytes, or none, are there.
    if (cell >= 0 && static_cast<std::size_t>(cell) < table_.size()) {
      output.append(table_, static_cast<std::size_t>(cell), 2);
    }
  }
  // A cell that is no Big5 code is dropped; the key then simply misses.
  return Convert(converters_->fromBig5, output, "", /*utf8Source=*/false);
}

}  // namespace quill
