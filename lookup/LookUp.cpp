#include "lookup/LookUp.hpp"

#include <array>
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

const Mark* FindMark(std::uint32_t code) {
  for (const Mark& mark : kMarks) {
    if (mark.input == code) return &mark;
  }
  return nullptr;
}

bool EndsWith(const std::string& s, char c) {
  return !s.empty() && s.back() == c;
}

// What one character with a reading adds to each accumulator. Worked out
// once per character and look-up: it depends on the reading string and the
// settings alone.
struct Contribution {
  std::string zhuyin1;
  std::string pinyin;
  std::string zhuyin2;
  std::string wade;
  std::string tongyong;
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

Contribution Contribute(std::string_view entry,
                        const LookUpSettings& settings) {
  const std::string& systems = settings.PinyinSystemsPrefValue;
  const ToneSettings& tones = settings.tones;
  Contribution c;
  c.zhuyin1 = Zhuyin1Readings(entry, tones);
  if (SystemIsOn(systems, 1)) c.pinyin = ZhuyinToPinyin(entry, tones);
  if (SystemIsOn(systems, 3)) {
    c.zhuyin2 = ZhuyinToZhuyin2(std::string(entry) + " ", tones);
  }
  if (SystemIsOn(systems, 4)) c.wade = ZhuyinToWade(entry, tones);
  if (SystemIsOn(systems, 5)) c.tongyong = ZhuyinToTungyong(entry, tones);
  return c;
}

// The character loop over one text.
class Walk {
 public:
  Walk(LookUpEngine& engine, const LookUpSettings& settings)
      : engine_(engine),
        settings_(settings),
        segmented_(settings.segmentationSetting == "1"),
        slotOfBmp_(0x10000, kUnknown) {}

  void Run(std::string_view text) {
    Reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
      const Utf8Char c = DecodeChar(text, pos);
      const std::string_view character = text.substr(pos, c.length);
      pos += c.length;
      if (c.code == '\n' || c.code == '\r') {
        AppendAll(std::string_view(&kEndOfLine, 1));
      } else if (c.code == ' ') {
        if (!EndsWith(r_.pinyinResult, ' ')) AppendAll(" ");
      } else if (TakesCharacterPath(c.code)) {
        Character(c.code, character);
      } else if (settings_.mode == 1) {
        verbatimPending_ = true;
        AppendAll(character);
      }
    }
    for (std::string* s : All()) CleanUp(*s);
  }

  const Accumulators& results() const { return r_; }
  const std::string& foundCharacters() const { return foundCharacters_; }

 private:
  static constexpr int kUnknown = -1;
  static constexpr int kNoReading = -2;

  std::array<std::string*, 5> All() {
    return {&r_.pinyinResult, &r_.zhuyin1Result, &r_.zhuyin2Result,
            &r_.wadeResult, &r_.tongyongResult};
  }

  void Reserve(std::size_t inputSize) {
    // Roughly what a Chinese text grows to; saves most reallocation.
    for (std::string* s : All()) s->reserve(inputSize * 2);
  }

  void AppendAll(std::string_view s) {
    for (std::string* acc : All()) acc->append(s);
  }

  void Character(std::uint32_t code, std::string_view character) {
    if (verbatimPending_ && !segmented_) {
      for (std::string* acc : {&r_.pinyinResult, &r_.zhuyin2Result,
                               &r_.wadeResult, &r_.tongyongResult}) {
        if (!EndsWith(*acc, ' ') && !EndsWith(*acc, kEndOfLine)) *acc += ' ';
      }
    }
    verbatimPending_ = false;
    if (const Mark* mark = FindMark(code)) {
      Punctuation(*mark);
      return;
    }
    const int slot = Slot(code, character);
    if (slot == kNoReading) return;
    const Contribution& c = contributions_[static_cast<std::size_t>(slot)];
    r_.zhuyin1Result += c.zhuyin1;
    r_.pinyinResult += c.pinyin;
    r_.zhuyin2Result += c.zhuyin2;
    r_.wadeResult += c.wade;
    r_.tongyongResult += c.tongyong;
    if (!segmented_ || settings_.mode == 0) {
      for (std::string* acc : {&r_.pinyinResult, &r_.zhuyin2Result,
                               &r_.wadeResult, &r_.tongyongResult}) {
        *acc += ' ';
      }
    }
    if (settings_.mode == 0) foundCharacters_.append(character);
  }

  // Index of the character's contribution, or kNoReading.
  int Slot(std::uint32_t code, std::string_view character) {
    int* known = nullptr;
    if (code < 0x10000) {
      known = &slotOfBmp_[code];
    } else {
      known = &slotOfOther_.try_emplace(code, kUnknown).first->second;
    }
    if (*known != kUnknown) return *known;
    const long hit = engine_.Search(character);
    if (hit < 1) return *known = kNoReading;
    contributions_.push_back(
        Contribute(engine_.table().ReadingEntry(hit), settings_));
    return *known = static_cast<int>(contributions_.size() - 1);
  }

  void Punctuation(const Mark& mark) {
    const std::array<std::pair<std::string*, std::string_view>, 5> order{{
        {&r_.zhuyin1Result, mark.zhuyin1},
        {&r_.pinyinResult, mark.latin},
        {&r_.zhuyin2Result, mark.latin},
        {&r_.wadeResult, mark.latin},
        {&r_.tongyongResult, mark.tongyong},
    }};
    for (const auto& [acc, text] : order) {
      TrimInPlace(*acc);
      acc->append(text);
    }
    if (segmented_) return;
    if (mark.rule == 'A' ||
        (mark.rule == 'B' && !EndsWith(r_.pinyinResult, ' '))) {
      AppendAll(" ");
    }
  }

  static void CleanUp(std::string& s) {
    if (s.find("( ") != std::string::npos) s = ReplaceAll(s, "( ", "(");
    if (s.find(" )") != std::string::npos) s = ReplaceAll(s, " )", ")");
    if (s.find("“ ") != std::string::npos) s = ReplaceAll(s, "“ ", "“");
  }

  LookUpEngine& engine_;
  const LookUpSettings& settings_;
  const bool segmented_;
  bool verbatimPending_ = false;
  Accumulators r_;
  std::string foundCharacters_;
  std::vector<int> slotOfBmp_;
  std::unordered_map<std::uint32_t, int> slotOfOther_;
  std::vector<Contribution> contributions_;
};

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

std::string LookUpEngine::TextToLookUp(const std::string& trimmed,
                                       const LookUpSettings& settings) {
  if (settings.mode == 0 || settings.segmentationSetting != "1") return trimmed;
  const std::string folder = files_.temporaryFolder.empty()
                                 ? TemporaryFolder()
                                 : files_.temporaryFolder;
  return SegmentText(trimmed, files_.tokenizer, folder);
}

LookUpEngine::Result LookUpEngine::LookUp(std::string_view fieldText,
                                          const LookUpSettings& settings) {
  const std::string lookUpText = TextToLookUp(Trim(fieldText), settings);
  if (lookUpText.empty()) return {Outcome::kNothing, {}};
  if (!LoadTable()) return {Outcome::kTableMissing, {}};
  Walk walk(*this, settings);
  walk.Run(lookUpText);
  return {Outcome::kShown,
          AssembleResult(walk.results(), settings.mode, walk.foundCharacters(),
                         settings.PinyinSystemsPrefValue)};
}

std::string AssembleResult(const Accumulators& results, int mode,
                           const std::string& foundCharacters,
                           const std::string& PinyinSystemsPrefValue) {
  if (Trim(results.zhuyin1Result).empty()) return {};
  const std::array<std::pair<std::string, const std::string*>, 5> blocks{{
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
  text.reserve(size);
  if (mode == 0) text.append(foundCharacters).append("\r\r");
  for (int position = 1; position <= 5; ++position) {
    if (!SystemIsOn(PinyinSystemsPrefValue, position)) continue;
    const auto& [header, body] = blocks[static_cast<std::size_t>(position - 1)];
    // Every block but the first of the table opens with two empty lines,
    // whichever block happens to come first.
    if (position > 1) text.append("\r\r");
    text.append(header).append("\r").append(kRule).append("\r");
    text.append(*body).append("\r");
  }
  return text;
}

}  // namespace quill
