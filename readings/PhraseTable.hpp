// Words with their readings and costs, from a phrasereadings file:
//
//   WORD<TAB>READINGS<TAB>COST<LF>
//
// WORD is one or more Chinese characters, READINGS one Zhuyin syllable per
// character separated by one blank, COST a decimal integer (lower means more
// common). The file is mapped, not copied; an index of every prefix of every
// word, built once at load, answers "which words start here" with one probe per
// character: an array for a first character, a hash table for longer prefixes.
// A bit per pair of first two characters, in a set small enough to stay in the
// cache, spares the probe for the second character where no word starts with
// the pair, which is most places of a text; a second such set, for the words of
// three characters or more, spares the probe for the third where a word of two
// has been found. Three more sets hold the pairs of neighbours inside a word,
// and those of them where the word reads one of the two otherwise than its own
// word does: a caller can tell where no word joins two characters, and where no
// word changes a reading. Whether every word reads a character as its own word
// does is kept by code point. The hash table knows a prefix by a
// 64-bit hash of its code points alone: that two of the few million prefixes a
// text and a table ask for share one is far less likely than a fault of the
// memory, and leaving the file out of the probes halves the time of a look-up.
// Lines that don't have this form are skipped, so a damaged file gives the
// lines that can be read and a missing one gives an empty table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

// The characters that words are made of: CJK ideographs (the unified block,
// extensions A to H, the compatibility blocks) and 〇. Everything else ends a
// word.
inline bool IsHanzi(std::uint32_t code) {
  return (code >= 0x4E00 && code <= 0x9FFF) ||
         (code >= 0x3400 && code <= 0x4DBF) ||
         (code >= 0xF900 && code <= 0xFAFF) ||
         (code >= 0x20000 && code <= 0x323AF) || code == 0x3007;
}

class PhraseTable {
 public:
  // A word of the table that starts at a given place of a text.
  struct Match {
    std::uint32_t entry;  // for Word(), Readings(), Cost()
    std::uint32_t bytes;  // its length in the text
    std::uint32_t chars;  // its number of characters
    std::uint32_t cost;
    std::string_view readings;  // what Readings(entry) gives
  };

  PhraseTable() = default;
  ~PhraseTable();
  PhraseTable(PhraseTable&& other) noexcept;
  PhraseTable& operator=(PhraseTable&& other) noexcept;
  PhraseTable(const PhraseTable&) = delete;
  PhraseTable& operator=(const PhraseTable&) = delete;

  // Maps the file read-only and indexes it. False, with an empty table, when
  // the file can't be opened or mapped.
  bool Open(const std::string& path);
  // The same on text in memory, which the table keeps.
  void Assign(std::string content);
  void Clear();

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  // Lines that were not taken: malformed, a word seen before, no final LF.
  std::size_t skippedLines() const { return skipped_; }

  // Every word of the table that starts at byte `pos` of `text`, shortest
  // first, into `out` (which is cleared first).
  void WordsAt(std::string_view text, std::size_t pos,
               std::vector<Match>& out) const;
  // The same for the words that the characters `codes` start with.
  void WordsAt(std::span<const std::uint32_t> codes,
               std::vector<Match>& out) const;
  // Calls `visit(match)` for each of those words in turn, shortest first.
  template <class Visit>
  void ForEachWordAt(std::span<const std::uint32_t> codes, Visit&& visit) const;

  // A syllable of the character `code`, given as the table's own word of
  // that one character reads it when the two read alike: a caller that knows
  // syllables by their place then meets one place for each reading of a
  // character. Otherwise `syllable` itself.
  std::string_view AsOwnReading(std::uint32_t code,
                                std::string_view syllable) const {
    const std::string_view own = OwnReading(code).value_or(std::string_view());
    return !own.empty() && own == syllable ? own : syllable;
  }

  // The syllable of the table's word of the character `code` alone, empty
  // when it has none; nothing for a character outside U+3400..U+9FFF, which
  // this does not know.
  std::optional<std::string_view> OwnReading(std::uint32_t code) const {
    if (!IsDirect(code) || direct_.empty()) return std::nullopt;
    const Slot& slot = direct_[code - kFirstDirect];
    // A character of the array takes three bytes: the slot names its own
    // word when that word is three bytes long. Its line: WORD<TAB>SYLLABLE.
    if (slot.wordBytes != 3) return std::string_view();
    return std::string_view(content_.data() + slot.line + 4, slot.readingBytes);
  }

  // False when no word of the table has the character `first` followed by
  // `second`: then no word takes in both. True may be said of a pair that no
  // word has.
  bool MayJoin(std::uint32_t first, std::uint32_t second) const {
    return !pairs_.empty() &&
           HasPairBit(2 * kPairBits + PairBit(first, second));
  }

  // The characters that have a word of their own and that every word of the
  // table reads alike: each reads as OwnReading(code) whatever its
  // neighbours. Known for U+3400..U+9FFF only; a set of bits that stays in
  // the cache, valid while the table is.
  class FixedSet {
   public:
    bool Has(std::uint32_t code) const {
      const std::uint32_t bit = code - kFirstDirect;  // wraps below
      return bits_ != nullptr && bit < kEndDirect - kFirstDirect &&
             ((bits_[bit / 64] >> (bit % 64)) & 1);
    }

   private:
    friend class PhraseTable;
    const std::uint64_t* bits_ = nullptr;
  };
  FixedSet Fixed() const {
    FixedSet set;
    if (!fixedBits_.empty()) set.bits_ = fixedBits_.data();
    return set;
  }

  // False when no word of the table that has the character `first` followed
  // by `second` reads `first` otherwise than its own word does (or has it
  // without a word of its own); ReadsSecondOtherwise the same for `second`.
  // True may be said of a pair that no such word has.
  bool ReadsFirstOtherwise(std::uint32_t first, std::uint32_t second) const {
    return !pairs_.empty() &&
           HasPairBit(4 * kPairBits + PairBit(first, second));
  }
  bool ReadsSecondOtherwise(std::uint32_t first, std::uint32_t second) const {
    return !pairs_.empty() &&
           HasPairBit(3 * kPairBits + PairBit(first, second));
  }

  std::string_view Word(std::uint32_t entry) const;
  // The syllables of the word, one per character, separated by one blank.
  std::string_view Readings(std::uint32_t entry) const;
  std::uint32_t Cost(std::uint32_t entry) const;

 private:
  // A prefix of some word: the hash of its bytes and the line of a word
  // that starts with it (the word itself when the prefix is a word), with
  // what a look-up needs of that word. A free slot has wordBytes 0.
  struct Slot {
    std::uint64_t hash;
    std::uint32_t line;  // offset of the line in the content
    std::uint16_t cost;
    std::uint8_t wordBytes;
    std::uint8_t readingBytes;  // 0 when over 255: the TAB is searched for
  };

  // The first character of a word in the main CJK blocks, U+3400..U+9FFF,
  // is looked up in a plain array instead of the hash index.
  static constexpr std::uint32_t kFirstDirect = 0x3400;
  static constexpr std::uint32_t kEndDirect = 0xA000;
  static bool IsDirect(std::uint32_t code) {
    return code >= kFirstDirect && code < kEndDirect;
  }

  // A character of a word of two or more, as indexing meets it: its
  // neighbours in the word (0 for none) and the key of its syllable there.
  struct InWord {
    std::uint32_t code, before, after, key;
  };

  // The bit of the pair sets for words that start with `first`, `second`:
  // in the first set for words of two characters or more, kPairBits further
  // on for those of three or more, 2 * kPairBits further on for
  // neighbours anywhere in a word, and then the two sets of ReadsOtherwise.
  static constexpr int kPairBitsLog = 18;
  static constexpr std::size_t kPairBits = std::size_t{1} << kPairBitsLog;
  static std::size_t PairBit(std::uint32_t first, std::uint32_t second) {
    const std::uint64_t key = std::uint64_t{first} << 21 | second;
    return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15ull) >>
                                    (64 - kPairBitsLog));
  }
  bool HasPairBit(std::size_t bit) const {
    return (pairs_[bit / 64] >> (bit % 64)) & 1;
  }
  void SetPairBit(std::size_t bit) {
    pairs_[bit / 64] |= std::uint64_t{1} << (bit % 64);
  }

  // FNV-1a over code points, which can be carried on one character at a
  // time while a word grows, and a final mix so that the high bits place the
  // slot well.
  static constexpr std::uint64_t kFnvOffset = 14695981039346656037ull;
  static std::uint64_t HashMore(std::uint64_t h, std::uint32_t code) {
    return (h ^ code) * 1099511628211ull;
  }
  static std::uint64_t Finish(std::uint64_t h) {
    h ^= h >> 33;
    h *= 0xff51afd7ed558ccdull;
    h ^= h >> 33;
    h *= 0xc4ceb9fe1a85ec53ull;
    h ^= h >> 33;
    return h;
  }

  void Index();
  // Takes in the line that starts at `offset`, or counts it skipped; gives
  // where the next line starts.
  std::size_t AddLine(std::size_t offset);
  // Once every line is in: which characters every word reads as their own
  // word does, and where a word reads a character otherwise.
  void NoteReadings();
  const Slot* Find(std::uint64_t hash) const;
  // Adds the prefix of `length` bytes of a word; false when it was known
  // and stays as it was.
  bool Insert(std::uint64_t hash, const Slot& word, std::size_t length);
  // Puts `word` into `slot` for its prefix of `length` bytes; false when the
  // slot stays as it was.
  static bool Put(Slot& slot, const Slot& word, std::size_t length);
  void Grow();

  std::string_view content_;
  std::string owned_;    // content given by Assign
  void* map_ = nullptr;  // content mapped by Open
  std::size_t mapSize_ = 0;
  std::vector<Slot> slots_;
  std::vector<Slot> direct_;              // by code point from kFirstDirect
  std::vector<std::uint64_t> pairs_;      // the five sets of pair bits
  std::vector<std::uint64_t> fixedBits_;  // by code point from kFirstDirect
  // While indexing: the characters of longer words, and the key of each
  // character's own syllable by code point from kFirstDirect.
  std::vector<InWord> inWords_;
  std::vector<std::uint32_t> ownKeys_;
  std::size_t used_ = 0;
  std::size_t size_ = 0;
  std::size_t skipped_ = 0;
};

template <class Visit>
void PhraseTable::ForEachWordAt(std::span<const std::uint32_t> codes,
                                Visit&& visit) const {
  if (size_ == 0) return;
  std::uint64_t h = kFnvOffset;
  std::size_t bytes = 0;
  std::size_t pair = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const std::uint32_t code = codes[i];
    h = HashMore(h, code);
    // Only Chinese characters make words, three or four bytes each: a
    // shorter character is counted long, and no word goes on with it anyway.
    bytes += code < 0x10000 ? 3 : 4;
    if (bytes > 255) return;  // longer than any word of the table
    if (i == 1) {
      pair = PairBit(codes[0], code);
      if (!HasPairBit(pair)) return;
    } else if (i == 2 && !HasPairBit(kPairBits + pair)) {
      return;
    }
    const Slot* slot = i == 0 && IsDirect(code) ? &direct_[code - kFirstDirect]
                                                : Find(Finish(h));
    if (!slot || slot->wordBytes == 0) return;  // no word goes on like this
    if (slot->wordBytes == bytes) {
      const std::uint32_t entry = slot->line + slot->wordBytes + 1;
      visit(Match{
          entry, slot->wordBytes, static_cast<std::uint32_t>(i + 1), slot->cost,
          slot->readingBytes != 0
              ? std::string_view(content_.data() + entry, slot->readingBytes)
              : Readings(entry)});
    }
  }
}

}  // namespace quill
