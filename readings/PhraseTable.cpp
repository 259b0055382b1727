#include "readings/PhraseTable.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "text/TextOps.hpp"

namespace quill {

namespace {

inline std::size_t Home(std::uint64_t hash, std::size_t capacity) {
  return static_cast<std::size_t>(((hash >> 32) * capacity) >> 32);
}

bool IsToneMark(char second) {
  return second == '\x8A' || second == '\x87' || second == '\x8B' ||
         second == '\x99';
}

}  // namespace

PhraseTable::~PhraseTable() { Clear(); }

PhraseTable::PhraseTable(PhraseTable&& other) noexcept {
  *this = std::move(other);
}

PhraseTable& PhraseTable::operator=(PhraseTable&& other) noexcept {
  if (this == &other) return *this;
  Clear();
  owned_ = std::move(other.owned_);
  map_ = other.map_;
  mapSize_ = other.mapSize_;
  // A short string moves its bytes, so the view is taken again.
  content_ = map_ ? other.content_ : std::string_view(owned_);
  slots_ = std::move(other.slots_);
  direct_ = std::move(other.direct_);
  pairs_ = std::move(other.pairs_);
  fixedBits_ = std::move(other.fixedBits_);
  used_ = other.used_;
  size_ = other.size_;
  skipped_ = other.skipped_;
  other.map_ = nullptr;
  other.Clear();
  return *this;
}

void PhraseTable::Clear() {
  if (map_) munmap(map_, mapSize_);
  map_ = nullptr;
  mapSize_ = 0;
  content_ = {};
  owned_.clear();
  owned_.shrink_to_fit();
  slots_.clear();
  slots_.shrink_to_fit();
  direct_.clear();
  direct_.shrink_to_fit();
  pairs_.clear();
  pairs_.shrink_to_fit();
  fixedBits_.clear();
  fixedBits_.shrink_to_fit();
  used_ = 0;
  size_ = 0;
  skipped_ = 0;
}

bool PhraseTable::Open(const std::string& path) {
  Clear();
  // Not blocking: a FIFO in the place of the file must not hang the caller.
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return false;
  struct stat st {};
  bool ok = fstat(fd, &st) == 0 && S_ISREG(st.st_mode) &&
            static_cast<std::uint64_t>(st.st_size) <
                std::numeric_limits<std::uint32_t>::max();
  if (ok && st.st_size > 0) {
    // Indexing reads every page: mapped at once, not a fault at a time.
    void* map = mmap(nullptr, static_cast<std::size_t>(st.st_size), PROT_READ,
                     MAP_PRIVATE | MAP_POPULATE, fd, 0);
    if (map == MAP_FAILED) {
      ok = false;
    } else {
      map_ = map;
      mapSize_ = static_cast<std::size_t>(st.st_size);
      content_ = std::string_view(static_cast<const char*>(map), mapSize_);
    }
  }
  close(fd);
  if (ok) Index();
  return ok;
}

void PhraseTable::Assign(std::string content) {
  Clear();
  if (content.size() >= std::numeric_limits<std::uint32_t>::max()) return;
  owned_ = std::move(content);
  content_ = owned_;
  Index();
}

void PhraseTable::Index() {
  // A line takes about 40 bytes, and most prefixes of a word list are
  // words themselves: some 1.3 keys a line. A slot for every 20 bytes keeps
  // the probes short; the index grows if that is too few.
  // Zero-filled slot by slot, the pages are better mapped in one call.
  const auto fresh = [](std::vector<Slot>& index, std::size_t size) {
    index.reserve(size);
    MapForWriting(index.data(), size * sizeof(Slot));
    index.assign(size, Slot{});
  };
  fresh(slots_, std::max<std::size_t>(16, content_.size() / 20));
  fresh(direct_, kEndDirect - kFirstDirect);
  pairs_.assign(5 * kPairBits / 64, 0);
  ownKeys_.assign(kEndDirect - kFirstDirect, 0);
  // A character of a word takes seven bytes of its line or more (three of
  // the word, a letter and a blank): room enough, never moved. Pages not
  // written take no memory.
  inWords_.reserve(content_.size() / 7);
  for (std::size_t offset = 0; offset < content_.size();) {
    offset = AddLine(offset);
  }
  NoteReadings();
}

// Read byte by byte, in one pass, as this runs on every line of the table at
// load.
std::size_t PhraseTable::AddLine(std::size_t offset) {
  const char* const data = content_.data();
  const std::size_t size = content_.size();
  // A line that can't be read is passed over, up to its LF.
  const auto skip = [&](std::size_t from) {
    ++skipped_;
    const void* lf = std::memchr(data + from, '\n', size - from);
    return lf ? static_cast<std::size_t>(static_cast<const char*>(lf) - data) +
                    1
              : size;
  };
  // The word: Chinese characters up to the first TAB, 255 bytes at most, so
  // 85 characters at most.
  std::uint32_t codes[255 / 3];
  std::size_t chars = 0;
  std::size_t pos = offset;
  while (pos < size && data[pos] != '\t') {
    const Utf8Char c = DecodeChar(content_, pos);
    if (!IsHanzi(c.code) || pos + c.length - offset > 255) return skip(pos);
    codes[chars++] = c.code;
    pos += c.length;
  }
  if (chars == 0 || pos == size) return skip(pos);
  const std::size_t tab1 = pos++;
  // The readings: a syllable for each character, with a blank between. A
  // syllable is one to three Zhuyin letters (U+3105..U+3129, E3 84 85..A9),
  // then at most one tone mark (CB 8A, CB 87, CB 8B, CB 99); its key has a
  // byte for the last byte of each letter, and the top one for the mark's.
  std::uint32_t keys[255 / 3];
  std::size_t syllables = 0;
  for (;;) {
    std::uint32_t key = 0;
    int letters = 0;
    while (pos + 3 <= size && data[pos] == '\xE3' && data[pos + 1] == '\x84' &&
           static_cast<unsigned char>(data[pos + 2]) >= 0x85 &&
           static_cast<unsigned char>(data[pos + 2]) <= 0xA9 && letters < 3) {
      key |= std::uint32_t{static_cast<unsigned char>(data[pos + 2])}
             << (8 * letters++);
      pos += 3;
    }
    if (letters == 0 || syllables == chars) return skip(pos);
    if (pos + 2 <= size && data[pos] == '\xCB' && IsToneMark(data[pos + 1])) {
      key |= std::uint32_t{static_cast<unsigned char>(data[pos + 1])} << 24;
      pos += 2;
    }
    keys[syllables++] = key;
    if (pos == size || data[pos] != ' ') break;
    ++pos;
  }
  if (pos == size || data[pos] != '\t' || syllables != chars) {
    return skip(pos);
  }
  const std::size_t tab2 = pos++;
  // The cost: decimal digits up to the LF.
  std::uint32_t value = 0;
  const std::size_t digits = pos;
  for (; pos < size && data[pos] >= '0' && data[pos] <= '9'; ++pos) {
    value = std::min<std::uint32_t>(value * 10 + (data[pos] - '0'), 65535);
  }
  if (pos == digits || pos == size || data[pos] != '\n') return skip(pos);
  const std::size_t wordBytes = tab1 - offset;
  const std::size_t readingBytes = tab2 - tab1 - 1;
  const Slot slot{
      0, static_cast<std::uint32_t>(offset), static_cast<std::uint16_t>(value),
      static_cast<std::uint8_t>(wordBytes),
      static_cast<std::uint8_t>(readingBytes <= 255 ? readingBytes : 0)};
  if (chars >= 2) {
    const std::size_t bit = PairBit(codes[0], codes[1]);
    SetPairBit(bit);
    if (chars >= 3) SetPairBit(kPairBits + bit);
  }
  std::uint64_t h = kFnvOffset;
  std::size_t bytes = 0;
  for (std::size_t k = 0; k < chars; ++k) {
    const std::uint32_t code = codes[k];
    if (chars >= 2) {
      inWords_.push_back({code, k > 0 ? codes[k - 1] : 0,
                          k + 1 < chars ? codes[k + 1] : 0, keys[k]});
      if (k > 0) SetPairBit(2 * kPairBits + PairBit(codes[k - 1], code));
    }
    h = HashMore(h, code);
    bytes += code < 0x10000 ? 3 : 4;
    const bool added = k == 0 && IsDirect(code)
                           ? Put(direct_[code - kFirstDirect], slot, bytes)
                           : Insert(Finish(h), slot, bytes);
    if (!added && bytes == wordBytes) {
      ++skipped_;  // each word once: the first line stands
      return pos + 1;
    }
  }
  if (chars == 1 && IsDirect(codes[0])) {
    ownKeys_[codes[0] - kFirstDirect] = keys[0];
  }
  ++size_;
  return pos + 1;
}

void PhraseTable::NoteReadings() {
  fixedBits_.assign((direct_.size() + 63) / 64, 0);
  for (std::size_t i = 0; i < direct_.size(); ++i) {
    // A character of the array takes three bytes: a word of three bytes is
    // its own.
    if (direct_[i].wordBytes == 3) {
      fixedBits_[i / 64] |= std::uint64_t{1} << (i % 64);
    }
  }
  for (const InWord& w : inWords_) {
    if (IsDirect(w.code)) {
      const std::uint32_t bit = w.code - kFirstDirect;
      if (ownKeys_[bit] == w.key) continue;
      fixedBits_[bit / 64] &= ~(std::uint64_t{1} << (bit % 64));
    }
    if (w.before != 0) SetPairBit(3 * kPairBits + PairBit(w.before, w.code));
    if (w.after != 0) SetPairBit(4 * kPairBits + PairBit(w.code, w.after));
  }
  ownKeys_.clear();
  ownKeys_.shrink_to_fit();
  inWords_.clear();
  inWords_.shrink_to_fit();
}

const PhraseTable::Slot* PhraseTable::Find(std::uint64_t hash) const {
  if (slots_.empty()) return nullptr;
  for (std::size_t i = Home(hash, slots_.size());;
       i = i + 1 == slots_.size() ? 0 : i + 1) {
    const Slot& slot = slots_[i];
    if (slot.wordBytes == 0) return nullptr;
    if (slot.hash == hash) return &slot;
  }
}

bool PhraseTable::Insert(std::uint64_t hash, const Slot& word,
                         std::size_t length) {
  if ((used_ + 1) * 4 > slots_.size() * 3) Grow();
  for (std::size_t i = Home(hash, slots_.size());;
       i = i + 1 == slots_.size() ? 0 : i + 1) {
    Slot& slot = slots_[i];
    if (slot.wordBytes == 0) ++used_;
    if (slot.wordBytes == 0 || slot.hash == hash) {
      Slot named = word;
      named.hash = hash;
      return Put(slot, named, length);
    }
  }
}

bool PhraseTable::Put(Slot& slot, const Slot& word, std::size_t length) {
  if (slot.wordBytes != 0) {
    // The prefix is known; when it is this very word, the slot names it,
    // unless it named the word already.
    if (word.wordBytes != length || slot.wordBytes == length) return false;
  }
  slot = word;
  return true;
}

void PhraseTable::Grow() {
  std::vector<Slot> old(std::max<std::size_t>(16, slots_.size() * 2), Slot{});
  old.swap(slots_);
  for (const Slot& slot : old) {
    if (slot.wordBytes == 0) continue;
    std::size_t i = Home(slot.hash, slots_.size());
    while (slots_[i].wordBytes != 0) i = i + 1 == slots_.size() ? 0 : i + 1;
    slots_[i] = slot;
  }
}

void PhraseTable::WordsAt(std::string_view text, std::size_t pos,
                          std::vector<Match>& out) const {
  std::vector<std::uint32_t> codes;
  for (std::size_t end = pos; end < text.size() && end - pos < 255;) {
    const Utf8Char c = DecodeChar(text, end);
    if (!IsHanzi(c.code)) break;
    codes.push_back(c.code);
    end += c.length;
  }
  WordsAt(codes, out);
}

void PhraseTable::WordsAt(std::span<const std::uint32_t> codes,
                          std::vector<Match>& out) const {
  out.clear();
  ForEachWordAt(codes, [&out](const Match& m) { out.push_back(m); });
}

// An entry is the offset of the word's readings, behind WORD<TAB>.
std::string_view PhraseTable::Word(std::uint32_t entry) const {
  const std::size_t lineEnd = content_.rfind('\n', entry - 1);
  const std::size_t start = lineEnd == std::string_view::npos ? 0 : lineEnd + 1;
  return content_.substr(start, entry - 1 - start);
}

std::string_view PhraseTable::Readings(std::uint32_t entry) const {
  // Every line in the index has a TAB behind its readings.
  const char* const start = content_.data() + entry;
  const auto* tab = static_cast<const char*>(
      std::memchr(start, '\t', content_.size() - entry));
  return std::string_view(start, static_cast<std::size_t>(tab - start));
}

std::uint32_t PhraseTable::Cost(std::uint32_t entry) const {
  std::uint32_t cost = 0;
  for (std::size_t i = entry + Readings(entry).size() + 1;
       i < content_.size() && content_[i] != '\n'; ++i) {
    cost = std::min<std::uint32_t>(cost * 10 + (content_[i] - '0'), 65535);
  }
  return cost;
}

}  // namespace quill
