#include "lookup/LookUp.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <deque>
#include <fstream>
#include <unordered_map>
#include <utility>
#include <vector>

#include "lookup/Segmentation.hpp"
#include "platform/Platform.hpp"
#include "readings/ContextReadings.hpp"
#include "text/TextOps.hpp"

namespace quill {

namespace {

constexpr char kEndOfLine = '\n';
constexpr std::string_view kRule = "-------------------";

// Whether a blank follows a punctuation mark in every result, outside
// segmented text (where the blanks are Tokenizer's).
enum class BlankAfter {
  kNever,                    // the mark's own text holds what blanks it needs
  kAlways,                   // a comma or a full stop
  kUnlessPinyinEndsInBlank,  // a closing bracket: one blank, not two
};

// A Chinese punctuation mark and what each accumulator gets for it.
struct Mark {
  std::uint32_t input;
  std::string_view zhuyin1;
  std::string_view latin;  // Hanyu Pinyin, Zhuyin 2 and Wade-Giles
  std::string_view tongyong;
  BlankAfter blank;
};

constexpr std::array<Mark, 13> kMarks{{
    {0xFF0C, "，", ",", ",", BlankAfter::kAlways},
    {0x3001, "，", ",", ",", BlankAfter::kAlways},
    {0x3002, "。", ".", ".", BlankAfter::kAlways},
    {0xFF1B, "；", "; ", "; ", BlankAfter::kNever},
    {0xFF08, " (", " (", " (", BlankAfter::kNever},
    {0xFF09, ")", ")", ") ", BlankAfter::kUnlessPinyinEndsInBlank},
    {0xFF1F, "？", "? ", "? ", BlankAfter::kNever},
    {0xFF01, "! ", "! ", "! ", BlankAfter::kNever},
    {0x201C, " “", " “", " \"", BlankAfter::kNever},
    {0x300C, " “", " “", " \"", BlankAfter::kNever},
    {0x201D, "” ", "” ", "” ", BlankAfter::kNever},
    {0x300D, "” ", "” ", "” ", BlankAfter::kNever},
    {0xFF1A, ": ", ": ", ": ", BlankAfter::kNever},
}};

// The mark's text in one system's result.
std::string_view MarkText(const Mark& mark, System system) {
  switch (system) {
    case System::kZhuyin1:
      return mark.zhuyin1;
    case System::kTongyongPinyin:
      return mark.tongyong;
    default:
      return mark.latin;
  }
}

// a == b for the few bytes of a syllable, without a call to memcmp.
bool SameBytes(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i]) return false;
  }
  return true;
}

// True when `s` holds anything but white space: what Trim leaves.
bool HasText(std::string_view s) {
  for (char c : s) {
    if (!IsTrimmable(c)) return true;
  }
  return false;
}

// True when `s` holds one of the pairs that the clean-up closes up: "( ",
// " )" or "“ ".
bool HasPair(std::string_view s) {
  // Each pair holds a blank, and most pieces, such as a run of ASCII between
  // blanks or a blank alone, hold none or nothing else.
  if (s.size() < 2 || s.find(' ') == std::string_view::npos) return false;
  return s.find("( ") != std::string_view::npos ||
         s.find(" )") != std::string_view::npos ||
         s.find("“ ") != std::string_view::npos;
}

// True when `s` starts with what can make such a pair with the text in
// front of it: ")" behind a blank, or a blank behind "(" or "“".
bool MayPairAtSeam(std::string_view s) {
  return !s.empty() && (s.front() == ')' || s.front() == ' ');
}

// Whether the blank at `j` goes in the clean-up. Replacing every "( " by
// "(", then every " )" by ")", then every "“ " by "“" takes away exactly the
// blanks that stand, in the text before the first of them, behind "(", in
// front of ")" or behind "“": no replacement makes or breaks a pair for the
// next, since each takes only a blank and leaves the characters around it.
bool IsClosedUp(std::string_view s, std::size_t j) {
  if (s[j] != ' ') return false;
  return (j > 0 && s[j - 1] == '(') || (j + 1 < s.size() && s[j + 1] == ')') ||
         (j >= 3 && s.substr(j - 3, 3) == "“");
}

// The clean-up for a text whose blanks that it takes away are all among
// `candidates`.
void CloseUp(std::string& s, std::vector<std::size_t>& candidates) {
  std::sort(candidates.begin(), candidates.end());
  std::size_t kept = 0;
  for (std::size_t j : candidates) {
    const bool repeated = kept > 0 && candidates[kept - 1] == j;
    if (j < s.size() && !repeated && IsClosedUp(s, j)) candidates[kept++] = j;
  }
  candidates.resize(kept);
  char* const data = s.data();
  std::size_t to = 0;
  std::size_t from = 0;
  for (std::size_t j : candidates) {
    std::memmove(data + to, data + from, j - from);
    to += j - from;
    from = j + 1;
  }
  std::memmove(data + to, data + from, s.size() - from);
  s.resize(to + (s.size() - from));
}

// A result text while the walk writes it. Most pieces are a syllable of a
// few bytes; appending them to a std::string checks its room and calls
// memcpy each time. Here the string is kept longer than the text, a stretch
// at a time, and a short piece is copied as one block of fixed size.
class Accumulator {
 public:
  // Pieces of up to this many bytes whose source has as many readable bytes
  // may be appended by AppendPadded.
  static constexpr std::size_t kBlock = 32;

  void Reserve(std::size_t size) { ReserveForWriting(s_, size); }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  char front() const { return s_[0]; }
  char back() const { return s_[size_ - 1]; }
  bool EndsWith(std::string_view end) const {
    return std::string_view(s_.data(), size_).ends_with(end);
  }

  void Append(std::string_view piece) {
    if (s_.size() - size_ < piece.size()) Grow(piece.size());
    std::memcpy(s_.data() + size_, piece.data(), piece.size());
    size_ += piece.size();
  }
  // `piece` is at most kBlock bytes long and kBlock bytes can be read from
  // its start.
  void AppendPadded(std::string_view piece) {
    if (s_.size() - size_ < kBlock) Grow(kBlock);
    std::memcpy(s_.data() + size_, piece.data(), kBlock);
    size_ += piece.size();
  }

  // White space off both ends, as TrimInPlace.
  void Trim() {
    while (size_ > 0 && IsTrimmable(s_[size_ - 1])) --size_;
    std::size_t from = 0;
    while (from < size_ && IsTrimmable(s_[from])) ++from;
    if (from == 0) return;
    std::memmove(s_.data(), s_.data() + from, size_ - from);
    size_ -= from;
  }

  // The text, for good: the accumulator is not written again.
  std::string& Finish() {
    s_.resize(size_);
    return s_;
  }

 private:
  void Grow(std::size_t needed) {
    // The stretch is mapped in one call before it is zero-filled: where huge
    // pages are not granted, a fault on every small page costs more than
    // the writing.
    constexpr std::size_t kStretch = std::size_t{1} << 18;
    const std::size_t size = size_ + std::max(needed, kStretch);
    MapAhead(s_, size);
    s_.resize(size);
  }

  std::string s_;  // the text, then room: zeros or text taken away
  std::size_t size_ = 0;
};

// A piece of text held in a walk's store of texts.
struct Piece {
  std::uint32_t offset = 0;
  std::uint32_t length = 0;
  bool hasPair = false;  // HasPair() of the text
  bool mayPair = false;  // MayPairAtSeam() of the text
};

// What one character with a reading adds to each accumulator, the blank
// behind the syllable included. Worked out once per character and look-up:
// it depends on the reading string and the settings alone.
struct Contribution {
  // A syllable chosen in context found to be the first reading of the
  // reading string: the same place of a phrase table gives the same
  // syllable, so a second look is spared.
  const char* sameAsFirst = nullptr;
  PerSystem<Piece> text;
  Piece first;  // the first reading of the reading string
  bool zhuyin1HasText = false;
};

// The readings as they stand, further ones in brackets:
// r1, blank, "(", r2, two blanks, r3, ")", blank.
std::string Zhuyin1Readings(std::string_view entry, const ToneSettings& tones) {
  std::string out;
  const long count = CountFields(entry, "  ");
  // The fields in turn, as NthField gives them: asking NthField for each
  // index would search from the start every time, and a damaged table with
  // one huge line would take minutes.
  std::size_t from = 0;
  for (long index = 1; index <= count; ++index) {
    if (index == 2) {
      out += '(';
    } else if (index > 2) {
      out += ' ';
    }
    const std::size_t end = entry.find("  ", from);
    out += entry.substr(from, end == std::string_view::npos
                                  ? std::string_view::npos
                                  : end - from);
    from = end == std::string_view::npos ? entry.size() : end + 2;
    out += (index == count && count > 1) ? ") " : " ";
    if (tones.ShowMultipleReadingsPrefValue == "0") break;
  }
  return out;
}

// The character loop over one text.
//
// Only the accumulators that reach the result are built: pinyinResult always
// (its last character decides where blanks go), the others when their system
// is on. Of zhuyin1Result, when it is off, only whether Trim would leave
// anything is kept, since that alone decides whether a result is shown; text
// once appended is never taken away again, only white space.
//
// The pairs that the clean-up closes up are noted where they are made, so
// that it need not search the whole of a big result for "(": a pair inside a
// piece appended (which well-formed readings never make) or white space
// trimmed off the front of an accumulator sends it back to the full search.
class Walk {
 public:
  // `slotOfBmp` is the engine's table of slots by code point, all kUnknown;
  // the walk puts it back so when it ends.
  // `chosen` gives the reading chosen in context for each character above
  // U+00FF of the text to be walked, or nothing.
  Walk(LookUpEngine& engine, const LookUpSettings& settings,
       std::vector<int>& slotOfBmp, ChosenReadings chosen)
      : engine_(engine),
        settings_(settings),
        chosen_(std::move(chosen)),
        taiwan_(settings.standard == ReadingStandard::kTaiwan),
        on_(settings.PinyinSystemsPrefValue),
        segmented_(settings.segmentation),
        blankAfterSyllable_(!segmented_ || settings.mode == Mode::kDictionary),
        dictionary_(settings.mode == Mode::kDictionary),
        slotOfBmp_(slotOfBmp) {
    if (slotOfBmp_.empty()) slotOfBmp_.assign(0x10000, kUnknown);
    for (System system : kAllSystems) {
      const bool pinyin = system == System::kHanyuPinyin;
      if (pinyin || on_.Has(system)) built_.push_back(system);
      if (pinyin || (on_.Has(system) && system != System::kZhuyin1)) {
        latin_.push_back(system);
      }
    }
  }

  ~Walk() {
    for (std::uint16_t code : touched_) slotOfBmp_[code] = kUnknown;
  }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  void Run(std::string_view text) {
    Reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
      const auto byte = static_cast<unsigned char>(text[pos]);
      if (byte == '\n' || byte == '\r') {
        AppendAll(std::string_view(&kEndOfLine, 1));
        ++pos;
      } else if (byte == ' ') {
        if (!EndsWith(System::kHanyuPinyin, ' ')) AppendAll(" ");
        ++pos;
      } else if (byte < 0x80) {
        // A run of ASCII goes verbatim as one piece.
        std::size_t end = pos + 1;
        while (end < text.size() && IsPlainAscii(text[end])) ++end;
        Verbatim(text.substr(pos, end - pos));
        pos = end;
      } else {
        const Utf8Char c = DecodeChar(text, pos);
        const std::string_view character = text.substr(pos, c.length);
        // A character that reads alike in every word has its reading put
        // first when it is met first, as any other reading of it is.
        std::string_view chosen;
        if (c.code > 0xFF && chosen_.Varies(c.code)) {
          chosen = chosen_.At(pos, c.code);
        }
        pos += c.length;
        if (TakesCharacterPath(c.code)) {
          Character(c.code, character, chosen);
        } else {
          Verbatim(character);
        }
      }
    }
    for (System system : built_) {
      std::string& s = results_[system];
      s = std::move(r_[system].Finish());
      if (searchAll_[system]) {
        CleanUp(s);
      } else if (!pairs_[system].empty()) {
        CloseUp(s, pairs_[system]);
      }
    }
    if (on_.Has(System::kZhuyin1)) {
      zhuyin1HasText_ = HasText(results_[System::kZhuyin1]);
    }
  }

  Accumulators& results() { return results_; }
  bool zhuyin1HasText() const { return zhuyin1HasText_; }
  const std::string& foundCharacters() const { return foundCharacters_; }

 private:
  // Slots of the character cache: an index into contributions_, or one of
  // these, or kFirstMark - i for the punctuation mark kMarks[i].
  static constexpr int kUnknown = -1;
  static constexpr int kNoReading = -2;
  static constexpr int kFirstMark = -3;

  static bool IsPlainAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80 && c != '\n' && c != '\r' &&
           c != ' ';
  }

  void Reserve(std::size_t inputSize) {
    // What running Chinese text grows to, a little over; spares the copies
    // of growing. Pages reserved and never written take no memory.
    for (System system : built_) {
      r_[system].Reserve(inputSize * (system == System::kZhuyin1 ? 5 : 3));
    }
  }

  bool EndsWith(System system, char c) const {
    return !r_[system].empty() && r_[system].back() == c;
  }

  void Append(System system, std::string_view piece, bool pieceHasPair) {
    NotePairs(system, piece, pieceHasPair);
    r_[system].Append(piece);
  }

  // Notes where appending `piece` makes a pair for the clean-up.
  void NotePairs(System system, std::string_view piece, bool pieceHasPair) {
    const Accumulator& s = r_[system];
    if (pieceHasPair) {
      searchAll_[system] = true;
    } else if (!s.empty() && MayPairAtSeam(piece)) {
      // The blank of a pair made across the seam.
      if (piece.front() == ')' && s.back() == ' ') {
        pairs_[system].push_back(s.size() - 1);
      } else if (piece.front() == ' ' && (s.back() == '(' || s.EndsWith("“"))) {
        pairs_[system].push_back(s.size());
      }
    }
  }

  void AppendAll(std::string_view piece) {
    const bool pieceHasPair = HasPair(piece);
    for (System system : built_) Append(system, piece, pieceHasPair);
  }

  // Text copied as it is into all five, in converter mode only.
  void Verbatim(std::string_view piece) {
    if (settings_.mode != Mode::kConverter) return;
    verbatimPending_ = true;
    AppendAll(piece);
    if (!on_.Has(System::kZhuyin1) && !zhuyin1HasText_) {
      zhuyin1HasText_ = HasText(piece);
    }
  }

  void Character(std::uint32_t code, std::string_view character,
                 std::string_view chosen) {
    // Mostly the character was met before, nothing waits to go in front of
    // it, and its word reads it as its reading string starts: that case is
    // kept small enough to sit in the loop.
    if (!verbatimPending_ && code < 0x10000) {
      const int slot = slotOfBmp_[code];
      if (slot >= 0 &&
          (chosen.empty() ||
           contributions_[static_cast<std::size_t>(slot)].sameAsFirst ==
               chosen.data())) {
        Write(static_cast<std::size_t>(slot), character);
        return;
      }
    }
    AnyCharacter(code, character, chosen);
  }

  // Every other character: met for the first time, behind verbatim text, a
  // punctuation mark, or read otherwise in its word. Kept out of the loop.
  [[gnu::noinline]] void AnyCharacter(std::uint32_t code,
                                      std::string_view character,
                                      std::string_view chosen) {
    if (verbatimPending_ && !segmented_) {
      for (System system : latin_) {
        if (!EndsWith(system, ' ') && !EndsWith(system, kEndOfLine)) {
          Append(system, " ", false);
        }
      }
    }
    verbatimPending_ = false;
    int slot = Slot(code, character);
    // Mostly the word reads the character as its reading string starts.
    if (!chosen.empty() &&
        (slot < 0 ||
         !StartsWith(contributions_[static_cast<std::size_t>(slot)], chosen))) {
      slot = Slot(code, character, chosen);
    }
    if (slot >= 0) {
      Write(static_cast<std::size_t>(slot), character);
    } else if (slot <= kFirstMark) {
      Punctuation(kMarks[static_cast<std::size_t>(kFirstMark - slot)]);
    }
  }

  // Appends the contribution of `slot` for `character`.
  [[gnu::always_inline]] void Write(std::size_t slot,
                                    std::string_view character) {
    const Contribution& c = contributions_[slot];
    for (System system : built_) {
      const Piece& piece = c.text[system];
      const std::string_view text = Text(piece);
      if (piece.hasPair || piece.mayPair) {
        Append(system, text, piece.hasPair);
      } else if (piece.length <= Accumulator::kBlock) {
        r_[system].AppendPadded(text);
      } else {
        r_[system].Append(text);
      }
    }
    // With Zhuyin 1 on, its text decides this at the end instead.
    if (!zhuyin1HasText_) zhuyin1HasText_ = c.zhuyin1HasText;
    if (dictionary_) foundCharacters_.append(character);
  }

  // The text of a piece of the store, with Accumulator::kBlock bytes
  // readable from its start.
  std::string_view Text(const Piece& piece) const {
    return std::string_view(texts_.data() + piece.offset, piece.length);
  }

  bool StartsWith(Contribution& c, std::string_view chosen) const {
    if (c.sameAsFirst == chosen.data()) return true;
    if (!SameBytes(Text(c.first), chosen)) return false;
    c.sameAsFirst = chosen.data();
    return true;
  }

  // The character's slot, worked out at its first occurrence: punctuation
  // first, then the table.
  int Slot(std::uint32_t code, std::string_view character) {
    int* known = nullptr;
    if (code < 0x10000) {
      known = &slotOfBmp_[code];
      if (*known == kUnknown)
        touched_.push_back(static_cast<std::uint16_t>(code));
    } else {
      known = &slotOfOther_.try_emplace(code, kUnknown).first->second;
    }
    if (*known != kUnknown) return *known;
    for (std::size_t i = 0; i < kMarks.size(); ++i) {
      if (kMarks[i].input == code) {
        return *known = kFirstMark - static_cast<int>(i);
      }
    }
    // The line of the table as it stands, unless a reading goes in front of
    // it: the Taiwan one, or one that every word gives (mostly the first of
    // the line already).
    const std::string_view fixed = chosen_.Fixed(code);
    if (!taiwan_ || !engine_.HasOwnReading(character, settings_)) {
      const long hit = engine_.Search(character);
      const std::string_view entry =
          hit < 1 ? std::string_view() : engine_.table().ReadingEntry(hit);
      if (fixed.empty() || FirstReading(entry) == fixed) {
        return *known = SlotOfEntry(entry);
      }
    }
    return *known =
               SlotOfEntry(engine_.ReadingEntryOf(character, fixed, settings_));
  }

  // The slot of a character with a reading chosen in context. The chosen
  // syllables are views into the phrase tables, so a syllable's place there
  // names it: the reading string is made once per character and place.
  int Slot(std::uint32_t code, std::string_view character,
           std::string_view chosen) {
    // The last few asked for, by a hash of both, spare the map most times.
    const ChosenKey key{code, chosen.data()};
    RecentChosen& recent = recentChosen_[ChosenKeyHash()(key) % kRecentChosen];
    if (recent.key == key) return recent.slot;
    const auto [it, isNew] = slotOfChosen_.try_emplace(key, kUnknown);
    if (isNew) {
      it->second =
          SlotOfEntry(engine_.ReadingEntryOf(character, chosen, settings_));
    }
    recent = {key, it->second};
    return it->second;
  }

  // Characters that read alike share one contribution.
  int SlotOfEntry(std::string_view entry) {
    if (entry.empty()) return kNoReading;
    const auto found = slotOfEntry_.find(entry);
    if (found != slotOfEntry_.end()) return found->second;
    return AddEntry(entry);
  }
  int SlotOfEntry(std::string&& entry) {
    if (entry.empty()) return kNoReading;
    const auto found = slotOfEntry_.find(entry);
    if (found != slotOfEntry_.end()) return found->second;
    ownedEntries_.push_back(std::move(entry));
    return AddEntry(ownedEntries_.back());
  }
  int AddEntry(std::string_view entry) {
    const int slot = static_cast<int>(contributions_.size());
    slotOfEntry_.emplace(entry, slot);
    contributions_.push_back(Contribute(entry));
    return slot;
  }

  Contribution Contribute(std::string_view entry) {
    const ToneSettings& tones = settings_.tones;
    Contribution c;
    c.first = Store(FirstReading(entry));
    for (const SystemRow& row : kSystemTable) {
      std::string text;
      if (row.system == System::kZhuyin1) {
        // Needed also when Zhuyin 1 is off: whether it has text decides
        // whether anything is shown.
        text = Zhuyin1Readings(entry, tones);
        c.zhuyin1HasText = HasText(text);
      } else {
        if (on_.Has(row.system)) text = Convert(row, entry, tones);
        if (blankAfterSyllable_) text += ' ';
      }
      c.text[row.system] = Store(text);
    }
    return c;
  }

  // Puts `text` into the store, which keeps Accumulator::kBlock bytes of
  // room behind its last text.
  Piece Store(std::string_view text) {
    texts_.resize(texts_.size() - std::min(texts_.size(), Accumulator::kBlock));
    Piece piece{static_cast<std::uint32_t>(texts_.size()),
                static_cast<std::uint32_t>(text.size()), HasPair(text),
                MayPairAtSeam(text)};
    texts_.append(text);
    texts_.resize(texts_.size() + Accumulator::kBlock);
    return piece;
  }

  void Punctuation(const Mark& mark) {
    // Every mark shows in Zhuyin 1.
    if (!on_.Has(System::kZhuyin1)) zhuyin1HasText_ = true;
    for (System system : built_) {
      const std::string_view text = MarkText(mark, system);
      Accumulator& s = r_[system];
      if (!s.empty() && IsTrimmable(s.front())) searchAll_[system] = true;
      s.Trim();
      Append(system, text, HasPair(text));
    }
    if (segmented_) return;
    if (mark.blank == BlankAfter::kAlways ||
        (mark.blank == BlankAfter::kUnlessPinyinEndsInBlank &&
         !EndsWith(System::kHanyuPinyin, ' '))) {
      AppendAll(" ");
    }
  }

  static void CleanUp(std::string& s) {
    ReplaceAllInPlace(s, "( ", "(");
    ReplaceAllInPlace(s, " )", ")");
    ReplaceAllInPlace(s, "“ ", "“");
  }

  struct ChosenKey {
    std::uint32_t code;
    const char* reading;
    bool operator==(const ChosenKey&) const = default;
  };
  struct ChosenKeyHash {
    std::size_t operator()(const ChosenKey& k) const {
      return std::hash<const char*>()(k.reading) * 31 + k.code;
    }
  };

  LookUpEngine& engine_;
  const LookUpSettings& settings_;
  ChosenReadings chosen_;
  const bool taiwan_;
  const SystemSet on_;
  const bool segmented_;
  const bool blankAfterSyllable_;
  const bool dictionary_;
  PerSystem<Accumulator> r_;
  Accumulators results_;  // the texts of r_ when the walk is done
  PerSystem<std::vector<std::size_t>> pairs_;  // blanks of pairs
  PerSystem<bool> searchAll_;
  std::vector<System> built_;  // the accumulators built
  std::vector<System> latin_;  // the same but Zhuyin 1
  bool verbatimPending_ = false;
  bool zhuyin1HasText_ = false;
  std::string foundCharacters_;
  std::vector<int>& slotOfBmp_;
  std::vector<std::uint16_t> touched_;  // the codes whose slot was set
  std::unordered_map<std::uint32_t, int> slotOfOther_;
  std::unordered_map<std::string_view, int> slotOfEntry_;
  std::vector<Contribution> contributions_;
  std::string texts_;  // the texts of the contributions
  std::unordered_map<ChosenKey, int, ChosenKeyHash> slotOfChosen_;
  struct RecentChosen {
    ChosenKey key{0, nullptr};
    int slot = kUnknown;
  };
  static constexpr std::size_t kRecentChosen = 256;
  std::array<RecentChosen, kRecentChosen> recentChosen_{};
  std::deque<std::string> ownedEntries_;  // reading strings made here
};

// The next character above U+00FF of `text` from `pos` on, which is moved
// behind it; 0 at the end.
std::uint32_t NextWideCharacter(std::string_view text, std::size_t& pos) {
  while (pos < text.size()) {
    const Utf8Char c = DecodeChar(text, pos);
    pos += c.length;
    if (c.code > 0xFF) return c.code;
  }
  return 0;
}

// True when the two texts hold the same characters above U+00FF, in order.
bool SameWideCharacters(std::string_view a, std::string_view b) {
  std::size_t i = 0;
  std::size_t j = 0;
  for (;;) {
    const std::uint32_t code = NextWideCharacter(a, i);
    if (code != NextWideCharacter(b, j)) return false;
    if (code == 0) return true;
  }
}

// The blocks of the selected systems. Each body is released once it is
// copied, so that the accumulators and the result are never both whole in
// memory; the first body, whose room was reserved for more than it holds,
// mostly has room for the whole result and takes its header in front
// instead of being copied.
std::string Assemble(Accumulators& results, bool shown,
                     const LookUpSettings& settings,
                     const std::string& foundCharacters) {
  if (!shown) return {};
  std::size_t size = foundCharacters.size() + 2;
  for (System system : kAllSystems) {
    size += settings.headers[system].size() + results[system].size() + 32;
  }
  std::string text;
  std::string head;
  if (settings.mode == Mode::kDictionary) {
    head.append(foundCharacters).append("\r\r");
  }
  for (const SystemRow& row : kSystemTable) {
    if (!settings.PinyinSystemsPrefValue.Has(row.system)) continue;
    std::string& body = results[row.system];
    // Every block but the first of the table opens with two empty lines,
    // whichever block happens to come first.
    if (row.position > 1) head.append("\r\r");
    head.append(settings.headers[row.system]).append("\r");
    head.append(kRule).append("\r");
    if (text.empty() && body.capacity() >= size) {
      body.insert(0, head);
      text.swap(body);
    } else {
      if (text.empty()) {
        ReserveForWriting(text, size);
        MapAhead(text, size);
      }
      text.append(head).append(body);
    }
    text.append("\r");
    head.clear();
    std::string().swap(body);
  }
  if (text.empty()) return head;  // no block: the found characters alone
  return text;
}

}  // namespace

DataFiles DataFiles::BesideExecutable() {
  const std::string folder = ApplicationFolder();
  const std::string preferences = PreferencesFolder();
  return {folder + "/zhuyintable",
          folder + "/STTABLE",
          folder + "/Tokenizer",
          {},
          folder + "/phrasereadings",
          folder + "/phrasereadings-tw",
          folder + "/taiwanreadings",
          preferences.empty() ? std::string()
                              : preferences + "/" + kUserPhrasesFileName};
}

bool TakesCharacterPath(std::uint32_t code) {
  return code > 255 && !(code >= 0x3105 && code <= 0x312C) && code != 0x02C7 &&
         code != 0x02CB && code != 0x02CA && code != 0x02D9;
}

LookUpEngine::LookUpEngine(DataFiles files)
    : files_(std::move(files)),
      converter_(files_.sttable),
      userPhrases_(files_.userPhrases) {}

const PhraseTable& LookUpEngine::Phrases(ReadingStandard standard) {
  const bool taiwan = standard == ReadingStandard::kTaiwan;
  bool& opened = taiwan ? taiwanOpened_ : mainlandOpened_;
  PhraseTable& table = taiwan ? taiwanPhrases_ : mainlandPhrases_;
  // A file that can't be read leaves the table empty: no context readings.
  if (!opened)
    table.Open(taiwan ? files_.phrasereadingsTw : files_.phrasereadings);
  opened = true;
  return table;
}

const std::string* LookUpEngine::TaiwanReading(std::string_view character) {
  if (!taiwanReadingsLoaded_) {
    taiwanReadingsLoaded_ = true;
    // CHAR<TAB>READING<LF>; a line of another form is passed over.
    std::ifstream in(files_.taiwanreadings, std::ios::binary);
    std::string line;
    while (std::getline(in, line)) {
      const std::size_t tab = line.find('\t');
      if (tab == 0 || tab == std::string::npos || tab + 1 == line.size() ||
          line.find_first_of("\t ", tab + 1) != std::string::npos) {
        continue;
      }
      taiwanReadings_.try_emplace(line.substr(0, tab), line.substr(tab + 1));
    }
  }
  const auto it = taiwanReadings_.find(std::string(character));
  return it == taiwanReadings_.end() ? nullptr : &it->second;
}

void LookUpEngine::RefreshUserPhrases() {
  if (userPhrases_.Path() != files_.userPhrases) {
    userPhrases_.SetPath(files_.userPhrases);
  }
  userPhrases_.Refresh();
}

ChosenReadings LookUpEngine::ReadingsInContext(std::string_view text,
                                               std::string_view walked,
                                               const LookUpSettings& settings) {
  if (!settings.contextReadings) return {};
  RefreshUserPhrases();
  return ChosenReadings(Phrases(settings.standard), userPhrases_.Table(), text,
                        walked);
}

std::string_view ChosenReadings::Next() {
  while (pos_ < text_.size()) {
    const Utf8Char c = DecodeChar(text_, pos_);
    pos_ += c.length;
    if (c.code > 0xFF && chooser_->Varies(c.code)) {
      return chooser_->At(pos_ - c.length, c.code);
    }
  }
  return {};
}

bool LookUpEngine::HasOwnReading(std::string_view character,
                                 const LookUpSettings& settings) {
  return settings.standard == ReadingStandard::kTaiwan &&
         TaiwanReading(character) != nullptr;
}

std::string LookUpEngine::ReadingEntryOf(std::string_view character,
                                         std::string_view chosen,
                                         const LookUpSettings& settings) {
  const long hit = Search(character);
  std::string entry(hit >= 1 ? table_.ReadingEntry(hit) : std::string_view());
  if (settings.standard == ReadingStandard::kTaiwan) {
    if (const std::string* reading = TaiwanReading(character)) {
      entry = PutFirst(entry, *reading);
    }
  }
  if (!chosen.empty()) entry = PutFirst(entry, chosen);
  return entry;
}

bool LookUpEngine::LoadTable() { return table_.Load(files_.zhuyintable); }

long LookUpEngine::Search(std::string_view character) {
  const long hit = table_.Find(character);
  if (hit != 0) return hit;
  return table_.Find(converter_.STConvert(character));
}

std::string LookUpEngine::TextToLookUp(const std::string& trimmed) {
  const std::string folder = files_.temporaryFolder.empty()
                                 ? TemporaryFolder()
                                 : files_.temporaryFolder;
  return SegmentText(trimmed, files_.tokenizer, folder);
}

LookUpEngine::Result LookUpEngine::LookUp(std::string_view fieldText,
                                          const LookUpSettings& settings) {
  // The input is walked where it stands unless Tokenizer rewrites it.
  std::string_view lookUpText = TrimView(fieldText);
  // Readings are chosen on the text as typed, so that segmentation, which
  // only puts blanks between words, changes none of them.
  const std::string_view typed = lookUpText;
  std::string segmented;
  if (settings.mode == Mode::kConverter && settings.segmentation) {
    segmented = TextToLookUp(std::string(lookUpText));
    lookUpText = segmented;
  }
  if (lookUpText.empty()) return {Outcome::kNothing, {}};
  if (!LoadTable()) return {Outcome::kTableMissing, {}};
  ChosenReadings chosen;
  if (settings.contextReadings) {
    // Should Tokenizer ever change more than blanks, the readings are
    // chosen on what it gave.
    const bool same =
        segmented.empty() || SameWideCharacters(typed, lookUpText);
    chosen = ReadingsInContext(same ? typed : lookUpText, lookUpText, settings);
  }
  Walk walk(*this, settings, slotOfBmp_, std::move(chosen));
  walk.Run(lookUpText);
  return {Outcome::kShown, Assemble(walk.results(), walk.zhuyin1HasText(),
                                    settings, walk.foundCharacters())};
}

}  // namespace quill
