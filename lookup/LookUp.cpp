#include "lookup/LookUp.hpp"

#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/TextConstants.hpp"
#include "lookup/Segmentation.hpp"
#include "platform/Platform.hpp"
#include "text/TextOps.hpp"

namespace quill {

namespace {

constexpr char kEndOfLine = '\n';
constexpr std::string_view kRule = "-------------------";

// A Chinese punctuation mark and what each accumulator gets for it. Rule A
// puts a blank behind it in all five; rule B does so when pinyinResult does
// not end in one.
struct Mark {
  std::uint32_t input;
  std::string_view zhuyin1;
  std::string_view latin;  // pinyinResult, zhuyin2Result, wadeResult
  std::string_view tongyong;
  char rule;
};

constexpr std::array<Mark, 13> kMarks{{
    {0xFF0C, "，", ",", ",", 'A'},
    {0x3001, "，", ",", ",", 'A'},
    {0x3002, "。", ".", ".", 'A'},
    {0xFF1B, "；", "; ", "; ", 0},
    {0xFF08, " (", " (", " (", 0},
    {0xFF09, ")", ")", ") ", 'B'},
    {0xFF1F, "？", "? ", "? ", 0},
    {0xFF01, "! ", "! ", "! ", 0},
    {0x201C, " “", " “", " \"", 0},
    {0x300C, " “", " “", " \"", 0},
    {0x201D, "” ", "” ", "” ", 0},
    {0x300D, "” ", "” ", "” ", 0},
    {0xFF1A, ": ", ": ", ": ", 0},
}};

bool EndsWith(const std::string& s, char c) {
  return !s.empty() && s.back() == c;
}

// Reserves `size` bytes for a text that is written once from start to end.
// A big one asks for transparent huge pages: where the system grants them
// only on request, first touches of the pages otherwise cost more than all
// the writing into them.
void ReserveForWriting(std::string& s, std::size_t size) {
  s.reserve(size);
  constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
  if (s.capacity() < 2 * kHugePage) return;
  const auto begin = reinterpret_cast<std::uintptr_t>(s.data());
  const std::uintptr_t from = (begin + kHugePage - 1) & ~(kHugePage - 1);
  const std::uintptr_t to = (begin + s.capacity()) & ~(kHugePage - 1);
  if (to > from) {
    madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
  }
}

// True when `s` holds anything but white space: what Trim leaves.
bool HasText(std::string_view s) {
  for (char c : s) {
    if (!IsTrimmable(c)) return true;
  }
  return false;
}

// What one character with a reading adds to each accumulator, the blank
// behind the syllable included. Worked out once per character and look-up:
// it depends on the reading string and the settings alone.
struct Contribution {
  std::string zhuyin1;
  std::string pinyin;
  std::string zhuyin2;
  std::string wade;
  std::string tongyong;
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
class Walk {
 public:
  Walk(LookUpEngine& engine, const LookUpSettings& settings)
      : engine_(engine),
        settings_(settings),
        segmented_(settings.segmentationSetting == "1"),
        blankAfterSyllable_(!segmented_ || settings.mode == 0),
        slotOfBmp_(0x10000, kUnknown) {
    const std::string& systems = settings.PinyinSystemsPrefValue;
    for (int position = 1; position <= 5; ++position) {
      on_[static_cast<std::size_t>(position - 1)] =
          SystemIsOn(systems, position);
    }
    latin_.push_back(&r_.pinyinResult);
    if (on_[2]) latin_.push_back(&r_.zhuyin2Result);
    if (on_[3]) latin_.push_back(&r_.wadeResult);
    if (on_[4]) latin_.push_back(&r_.tongyongResult);
    built_ = latin_;
    if (on_[1]) built_.push_back(&r_.zhuyin1Result);
  }

  void Run(std::string_view text) {
    Reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
      const auto byte = static_cast<unsigned char>(text[pos]);
      if (byte == '\n' || byte == '\r') {
        AppendAll(std::string_view(&kEndOfLine, 1));
        ++pos;
      } else if (byte == ' ') {
        if (!EndsWith(r_.pinyinResult, ' ')) AppendAll(" ");
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
        pos += c.length;
        if (TakesCharacterPath(c.code)) {
          Character(c.code, character);
        } else {
          Verbatim(character);
        }
      }
    }
    for (std::string* s : built_) CleanUp(*s);
    if (on_[1]) zhuyin1HasText_ = HasText(r_.zhuyin1Result);
  }

  Accumulators& results() { return r_; }
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
    for (std::string* s : latin_) ReserveForWriting(*s, inputSize * 3);
    if (on_[1]) ReserveForWriting(r_.zhuyin1Result, inputSize * 5);
  }

  void AppendAll(std::string_view s) {
    for (std::string* acc : built_) acc->append(s);
  }

  // Text copied as it is into all five, in converter mode only.
  void Verbatim(std::string_view piece) {
    if (settings_.mode != 1) return;
    verbatimPending_ = true;
    AppendAll(piece);
    if (!on_[1] && !zhuyin1HasText_) zhuyin1HasText_ = HasText(piece);
  }

  void Character(std::uint32_t code, std::string_view character) {
    if (verbatimPending_ && !segmented_) {
      for (std::string* acc : latin_) {
        if (!EndsWith(*acc, ' ') && !EndsWith(*acc, kEndOfLine)) *acc += ' ';
      }
    }
    verbatimPending_ = false;
    const int slot = Slot(code, character);
    if (slot >= 0) {
      Append(contributions_[static_cast<std::size_t>(slot)]);
      if (settings_.mode == 0) foundCharacters_.append(character);
    } else if (slot <= kFirstMark) {
      Punctuation(kMarks[static_cast<std::size_t>(kFirstMark - slot)]);
    }
  }

  void Append(const Contribution& c) {
    r_.pinyinResult += c.pinyin;
    if (on_[1]) {
      r_.zhuyin1Result += c.zhuyin1;
    } else {
      zhuyin1HasText_ = zhuyin1HasText_ || c.zhuyin1HasText;
    }
    if (on_[2]) r_.zhuyin2Result += c.zhuyin2;
    if (on_[3]) r_.wadeResult += c.wade;
    if (on_[4]) r_.tongyongResult += c.tongyong;
  }

  // The character's slot, worked out at its first occurrence: punctuation
  // first, then the table.
  int Slot(std::uint32_t code, std::string_view character) {
    int* known = nullptr;
    if (code < 0x10000) {
      known = &slotOfBmp_[code];
    } else {
      known = &slotOfOther_.try_emplace(code, kUnknown).first->second;
    }
    if (*known != kUnknown) return *known;
    for (std::size_t i = 0; i < kMarks.size(); ++i) {
      if (kMarks[i].input == code)
        return *known = kFirstMark - static_cast<int>(i);
    }
    const long hit = engine_.Search(character);
    if (hit < 1) return *known = kNoReading;
    contributions_.push_back(Contribute(engine_.table().ReadingEntry(hit)));
    return *known = static_cast<int>(contributions_.size() - 1);
  }

  Contribution Contribute(std::string_view entry) const {
    const ToneSettings& tones = settings_.tones;
    const std::string_view blank = blankAfterSyllable_ ? " " : "";
    Contribution c;
    c.zhuyin1 = Zhuyin1Readings(entry, tones);
    c.zhuyin1HasText = HasText(c.zhuyin1);
    if (on_[0]) c.pinyin = ZhuyinToPinyin(entry, tones);
    c.pinyin += blank;
    if (on_[2]) {
      c.zhuyin2 = ZhuyinToZhuyin2(std::string(entry) + " ", tones);
      c.zhuyin2 += blank;
    }
    if (on_[3]) c.wade = ZhuyinToWade(entry, tones) + std::string(blank);
    if (on_[4])
      c.tongyong = ZhuyinToTungyong(entry, tones) + std::string(blank);
    return c;
  }

  void Punctuation(const Mark& mark) {
    if (on_[1]) {
      TrimInPlace(r_.zhuyin1Result);
      r_.zhuyin1Result.append(mark.zhuyin1);
    } else {
      zhuyin1HasText_ = true;  // every mark shows in Zhuyin 1
    }
    for (std::string* acc : latin_) {
      TrimInPlace(*acc);
      acc->append(acc == &r_.tongyongResult ? mark.tongyong : mark.latin);
    }
    if (segmented_) return;
    if (mark.rule == 'A' ||
        (mark.rule == 'B' && !EndsWith(r_.pinyinResult, ' '))) {
      AppendAll(" ");
    }
  }

  static void CleanUp(std::string& s) {
    ReplaceAllInPlace(s, "( ", "(");
    ReplaceAllInPlace(s, " )", ")");
    ReplaceAllInPlace(s, "“ ", "“");
  }

  LookUpEngine& engine_;
  const LookUpSettings& settings_;
  const bool segmented_;
  const bool blankAfterSyllable_;
  std::array<bool, 5> on_{};
  std::vector<std::string*> latin_;  // the built ones but zhuyin1Result
  std::vector<std::string*> built_;
  bool verbatimPending_ = false;
  bool zhuyin1HasText_ = false;
  Accumulators r_;
  std::string foundCharacters_;
  std::vector<int> slotOfBmp_;
  std::unordered_map<std::uint32_t, int> slotOfOther_;
  std::vector<Contribution> contributions_;
};

// The blocks of the selected systems. Each body is released once it is
// copied, so that the accumulators and the result are never both whole in
// memory.
std::string Assemble(Accumulators& results, bool shown, int mode,
                     const std::string& foundCharacters,
                     const std::string& PinyinSystemsPrefValue) {
  if (!shown) return {};
  const std::array<std::pair<std::string, std::string*>, 5> blocks{{
      {App::kHanyuPinyinText(), &results.pinyinResult},
      {App::kZhuyin1Text(), &results.zhuyin1Result},
      {App::kZhuyin2Text(), &results.zhuyin2Result},
      {App::kWadeGilesText(), &results.wadeResult},
      {App::kTongyongPinyinText(), &results.tongyongResult},
  }};
  std::size_t size = foundCharacters.size() + 2;
  for (const auto& [header, body] : blocks)
    size += header.size() + body->size() + 32;
  std::string text;
  ReserveForWriting(text, size);
  if (mode == 0) text.append(foundCharacters).append("\r\r");
  for (int position = 1; position <= 5; ++position) {
    if (!SystemIsOn(PinyinSystemsPrefValue, position)) continue;
    const auto& [header, body] = blocks[static_cast<std::size_t>(position - 1)];
    // Every block but the first of the table opens with two empty lines,
    // whichever block happens to come first.
    if (position > 1) text.append("\r\r");
    text.append(header).append("\r").append(kRule).append("\r");
    text.append(*body).append("\r");
    std::string().swap(*body);
  }
  return text;
}

}  // namespace

DataFiles DataFiles::BesideExecutable() {
  const std::string folder = ApplicationFolder();
  return {
      folder + "/zhuyintable", folder + "/STTABLE", folder + "/Tokenizer", {}};
}

bool SystemIsOn(const std::string& PinyinSystemsPrefValue, int position) {
  return MidB(PinyinSystemsPrefValue, position, 1) != "0";
}

bool TakesCharacterPath(std::uint32_t code) {
  return code > 255 && !(code >= 0x3105 && code <= 0x312C) && code != 0x02C7 &&
         code != 0x02CB && code != 0x02CA && code != 0x02D9;
}

LookUpEngine::LookUpEngine(DataFiles files)
    : files_(std::move(files)), converter_(files_.sttable) {}

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
  std::string segmented;
  if (settings.mode == 1 && settings.segmentationSetting == "1") {
    segmented = TextToLookUp(std::string(lookUpText));
    lookUpText = segmented;
  }
  if (lookUpText.empty()) return {Outcome::kNothing, {}};
  if (!LoadTable()) return {Outcome::kTableMissing, {}};
  Walk walk(*this, settings);
  walk.Run(lookUpText);
  return {Outcome::kShown,
          Assemble(walk.results(), walk.zhuyin1HasText(), settings.mode,
                   walk.foundCharacters(), settings.PinyinSystemsPrefValue)};
}

std::string AssembleResult(const Accumulators& results, int mode,
                           const std::string& foundCharacters,
                           const std::string& PinyinSystemsPrefValue) {
  Accumulators copy = results;
  return Assemble(copy, HasText(results.zhuyin1Result), mode, foundCharacters,
                  PinyinSystemsPrefValue);
}

}  // namespace quill
