#include "readings/UserPhrases.hpp"

#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "text/TextOps.hpp"

namespace quill {

namespace {

// The spellings of the standard syllables; the Zhuyin of each follows from
// its spelling by the rules of ToZhuyin below.
constexpr std::string_view kSyllables =
    "a o e ai ei ao ou an en ang ng er yi ya yo ye yai yao you yan yin "
    "yang ying wu wa wo wai wei wan wen wang weng yu yue yuan yun yong "
    "ba bo bai bei bao ban ben bang beng bi bie biao bian bin bing bu pa "
    "po pai pei pao pou pan pen pang peng pi pie piao pian pin ping pu "
    "ma mo me mai mei mao mou man men mang meng mi mie miao miu mian min "
    "ming mu fa fo fei fou fan fen fang feng fu da de dai dei dao dou "
    "dan den dang deng di dia die diao diu dian ding du duo dui duan dun "
    "dong ta te tai tao tan tang teng tou ti tie tiao tian ting tu tuo "
    "tui tuan tun tong na ne nai nei nao nou nan nen nang neng ni nie "
    "niao niu nian nin niang ning nu nuo nuan nong nü nüe la lo le lai "
    "lei lao lou lan lang leng li lia lie liao liu lian lin liang ling "
    "lu luo luan lun long lü lüe ga ge gai gei gao gou gan gen gang "
    "geng gu gua guo guai gui guan gun guang gong ka ke kai kei kao kou "
    "kan ken kang keng ku kua kuo kuai kui kuan kun kuang kong ha he hai "
    "hei hao hou han hen hang heng hu hua huo huai hui huan hun huang "
    "hong ji jia jie jiao jiu jian jin jiang jing ju jue juan jun jiong "
    "qi qia qie qiao qiu qian qin qiang qing qu que quan qun qiong xi "
    "xia xie xiao xiu xian xin xiang xing xu xue xuan xun xiong zhi zha "
    "zhe zhai zhei zhao zhou zhan zhen zhang zheng zhu zhua zhuo zhuai "
    "zhui zhuan zhun zhuang zhong chi cha che chai chao chou chan chen "
    "chang cheng chu chua chuo chuai chui chuan chun chuang chong shi "
    "sha she shai shei shao shou shan shen shang sheng shu shua shuo "
    "shuai shui shuan shun shuang ri re rao rou ran ren rang reng ru rua "
    "ruo rui ruan run rong zi za ze zai zei zao zou zan zen zang zeng zu "
    "zuo zui zuan zun zong ci ca ce cai cao cou can cen cang ceng cu cuo "
    "cui cuan cun cong si sa se sai sao sou san sen sang seng su suo sui "
    "suan sun song ê";

struct Pair {
  std::string_view pinyin, zhuyin;
};

constexpr Pair kInitials[] = {
    {"zh", "ㄓ"}, {"ch", "ㄔ"}, {"sh", "ㄕ"}, {"b", "ㄅ"}, {"p", "ㄆ"},
    {"m", "ㄇ"},  {"f", "ㄈ"},  {"d", "ㄉ"},  {"t", "ㄊ"}, {"n", "ㄋ"},
    {"l", "ㄌ"},  {"g", "ㄍ"},  {"k", "ㄎ"},  {"h", "ㄏ"}, {"j", "ㄐ"},
    {"q", "ㄑ"},  {"x", "ㄒ"},  {"r", "ㄖ"},  {"z", "ㄗ"}, {"c", "ㄘ"},
    {"s", "ㄙ"}};

// Finals after the medial; "e" behind ㄧ or ㄩ is ㄝ.
constexpr Pair kFinals[] = {
    {"a", "ㄚ"},     {"o", "ㄛ"},  {"e", "ㄜ"},  {"ai", "ㄞ"}, {"ei", "ㄟ"},
    {"ao", "ㄠ"},    {"ou", "ㄡ"}, {"an", "ㄢ"}, {"en", "ㄣ"}, {"ang", "ㄤ"},
    {"eng", "ㄥ"},   {"er", "ㄦ"}, {"n", "ㄣ"},  {"ng", "ㄥ"}, {"ê", "ㄝ"},
    {"ong", "ㄨㄥ"}, {"", ""}};

bool StartsWith(std::string_view s, std::string_view head) {
  return s.substr(0, head.size()) == head;
}

// The Zhuyin letters of a standard spelling (no tone).
std::string ToZhuyin(std::string_view pinyin) {
  if (pinyin == "ng") return "ㄥ";
  std::string_view initial;
  std::string out;
  for (const Pair& p : kInitials) {
    if (StartsWith(pinyin, p.pinyin) && pinyin.size() > p.pinyin.size()) {
      initial = p.pinyin;
      out = p.zhuyin;
      break;
    }
  }
  std::string rest(pinyin.substr(initial.size()));
  if (initial.empty()) {  // the spellings with y and w
    if (StartsWith(rest, "yu"))
      rest = "ü" + rest.substr(2);
    else if (StartsWith(rest, "yi"))
      rest = "i" + rest.substr(2);
    else if (StartsWith(rest, "y"))
      rest = "i" + rest.substr(1);
    else if (StartsWith(rest, "wu"))
      rest = "u" + rest.substr(2);
    else if (StartsWith(rest, "w"))
      rest = "u" + rest.substr(1);
  }
  if ((initial == "j" || initial == "q" || initial == "x") &&
      StartsWith(rest, "u")) {
    rest = "ü" + rest.substr(1);
  }
  if (rest == "i" &&
      (initial == "zh" || initial == "ch" || initial == "sh" ||
       initial == "r" || initial == "z" || initial == "c" || initial == "s")) {
    return out;  // zhi, chi, ... ri, zi, ci, si: the initial alone
  }
  if (rest == "iu") rest = "iou";
  if (rest == "ui") rest = "uei";
  if (rest == "iong") rest = "üong";
  bool frontMedial = false;
  if (StartsWith(rest, "i")) {
    out += "ㄧ", rest.erase(0, 1), frontMedial = true;
  } else if (StartsWith(rest, "u")) {
    out += "ㄨ", rest.erase(0, 1);
  } else if (StartsWith(rest, "ü")) {
    out += "ㄩ", rest.erase(0, 2), frontMedial = true;
  }
  if (rest == "ong" && frontMedial) return out + "ㄥ";  // iong: ㄩㄥ
  if (rest == "e" && frontMedial) return out + "ㄝ";
  for (const Pair& p : kFinals) {
    if (rest == p.pinyin) return out + std::string(p.zhuyin);
  }
  return {};
}

struct Syllables {
  std::unordered_map<std::string, std::string> zhuyinOf;
  std::unordered_set<std::string> zhuyin;
};

const Syllables& Standard() {
  static const Syllables table = [] {
    Syllables t;
    std::string_view all = kSyllables;
    while (!all.empty()) {
      const std::size_t blank = all.find(' ');
      const std::string spelling(all.substr(0, blank));
      const std::string zhuyin = ToZhuyin(spelling);
      t.zhuyinOf.emplace(spelling, zhuyin);
      t.zhuyin.insert(zhuyin);
      all.remove_prefix(blank == std::string_view::npos ? all.size()
                                                        : blank + 1);
    }
    return t;
  }();
  return table;
}

constexpr std::string_view kToneMarks[] = {"", "", "ˊ", "ˇ", "ˋ", "˙"};

std::string PinyinToZhuyin(std::string_view reading) {
  std::string spelling;
  int tone = 5;
  for (std::size_t i = 0; i < reading.size(); ++i) {
    const char c = reading[i];
    if (c >= '1' && c <= '5' && i + 1 == reading.size()) {
      tone = c - '0';
    } else if (c >= 'A' && c <= 'Z') {
      spelling += static_cast<char>(c - 'A' + 'a');
    } else if (c == 'v' || c == 'V') {
      spelling += "ü";
    } else if (c == ':' && !spelling.empty() && spelling.back() == 'u') {
      spelling.back() = '\xC3', spelling += '\xBC';   // u: is ü
    } else if (reading.substr(i, 2) == "\xC3\x9C") {  // Ü
      spelling += "ü", ++i;
    } else {
      spelling += c;
    }
  }
  const auto& standard = Standard().zhuyinOf;
  auto hit = standard.find(spelling);
  if (hit == standard.end()) {
    // ju, qu, xu and yu may be written with ü as well.
    const std::size_t u = spelling.find("ü");
    if (u != std::string::npos && u > 0 &&
        std::string_view("jqxy").find(spelling[u - 1]) !=
            std::string_view::npos) {
      hit = standard.find(spelling.replace(u, 2, "u"));
    }
  }
  if (hit == standard.end()) return {};
  return hit->second + std::string(kToneMarks[tone]);
}

// Zhuyin as people type it: the neutral-tone dot in front or behind, and
// the first-tone mark ˉ written or not.
std::string ZhuyinToData(std::string_view reading) {
  std::string letters;
  std::string_view tone;
  bool ended = false;  // a tone mark behind the letters ends the syllable
  for (std::size_t pos = 0; pos < reading.size();) {
    const Utf8Char c = DecodeChar(reading, pos);
    const std::string_view ch = reading.substr(pos, c.length);
    pos += c.length;
    if (c.code >= 0x3105 && c.code <= 0x3129 && !ended) {
      letters += ch;
    } else if (c.code == 0x2D9 && letters.empty() && tone.empty()) {
      tone = ch;
    } else if ((c.code == 0x2CA || c.code == 0x2C7 || c.code == 0x2CB ||
                c.code == 0x2D9 || c.code == 0x2C9) &&
               !letters.empty() && tone.empty() && !ended) {
      tone = c.code == 0x2C9 ? std::string_view() : ch;
      ended = true;
    } else {
      return {};
    }
  }
  if (letters.empty() || !Standard().zhuyin.contains(letters)) return {};
  return letters + std::string(tone);
}

bool IsZhuyinStart(std::string_view reading) {
  const std::uint32_t code = DecodeChar(reading, 0).code;
  return (code >= 0x3105 && code <= 0x3129) || code == 0x2D9;
}

std::string Quoted(std::string_view s) { return "\"" + std::string(s) + "\""; }

std::string Counted(std::size_t n, std::string_view what) {
  return Str(static_cast<long long>(n)) + " " + std::string(what) +
         (n == 1 ? "" : "s");
}

constexpr std::size_t kLongestWord = 60;

// Reads one line into `entry`; the problem, or empty when the line is good.
std::string ParseLine(std::string_view line, UserPhraseEntry& entry) {
  std::vector<std::string_view> fields;
  for (std::size_t pos = 0; pos < line.size();) {
    const std::size_t start = line.find_first_not_of(" \t\r", pos);
    if (start == std::string_view::npos) break;
    const std::size_t end =
        std::min(line.find_first_of(" \t\r", start), line.size());
    fields.push_back(line.substr(start, end - start));
    pos = end;
  }
  if (fields.empty()) return {};
  if (!IsValidUtf8(line)) return "the line is not valid UTF-8";
  const std::string_view word = fields[0];
  std::size_t chars = 0;
  for (std::size_t pos = 0; pos < word.size(); ++chars) {
    const Utf8Char c = DecodeChar(word, pos);
    if (!IsHanzi(c.code)) {
      return Quoted(word) + " is not a word of Chinese characters";
    }
    pos += c.length;
  }
  if (chars > kLongestWord) {
    return "a word of more than " + Str(kLongestWord) + " characters";
  }
  const std::size_t readings = fields.size() - 1;
  if (readings == 0) return "no readings for " + Quoted(word);
  if (readings != chars) {
    return Counted(readings, "reading") + " for " + Counted(chars, "character");
  }
  entry.word = word;
  entry.readings.clear();
  for (std::size_t i = 1; i < fields.size(); ++i) {
    const bool zhuyin = IsZhuyinStart(fields[i]);
    const std::string syllable = ReadingToZhuyin(fields[i]);
    if (syllable.empty()) {
      return Quoted(fields[i]) + (zhuyin ? " is not a Zhuyin syllable"
                                         : " is not a pinyin syllable");
    }
    if (i > 1) entry.readings += ' ';
    entry.readings += syllable;
  }
  return {};
}

}  // namespace

std::string ReadingToZhuyin(std::string_view reading) {
  if (reading.empty()) return {};
  return IsZhuyinStart(reading) ? ZhuyinToData(reading)
                                : PinyinToZhuyin(reading);
}

ParsedUserPhrases ParseUserPhrases(std::string_view text) {
  ParsedUserPhrases parsed;
  if (StartsWith(text, "\xEF\xBB\xBF")) text.remove_prefix(3);  // a BOM
  std::size_t number = 0;
  while (!text.empty()) {
    ++number;
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    line = line.substr(0, line.find('#'));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    UserPhraseEntry entry;
    std::string problem = ParseLine(line, entry);
    if (!problem.empty()) {
      parsed.problems.push_back({number, std::move(problem)});
    } else if (!entry.word.empty()) {
      parsed.entries.push_back(std::move(entry));
    }
  }
  return parsed;
}

UserPhrases::UserPhrases(std::string path) : path_(std::move(path)) {}

void UserPhrases::SetPath(std::string path) {
  path_ = std::move(path);
  read_ = false;
}

bool UserPhrases::Refresh() {
  Version now;
  struct stat st {};
  // Only a regular file: opening a FIFO would wait for a writer.
  if (!path_.empty() && stat(path_.c_str(), &st) == 0 && S_ISREG(st.st_mode)) {
    now = {true, static_cast<std::uint64_t>(st.st_ino), st.st_mtim.tv_sec,
           st.st_mtim.tv_nsec, st.st_size};
  }
  if (read_ && now == version_) return false;
  read_ = true;
  version_ = now;
  reported_ = false;
  std::string text;
  if (now.exists) {
    std::ifstream in(path_, std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(in),
                std::istreambuf_iterator<char>());
  }
  ParsedUserPhrases parsed = ParseUserPhrases(text);
  problems_ = std::move(parsed.problems);
  // The table keeps the first line of a word, so the lines go in from the
  // last: a word written twice reads as written last.
  std::string lines;
  const std::string cost = "\t" + Str(kUserWordCost) + "\n";
  for (auto e = parsed.entries.rbegin(); e != parsed.entries.rend(); ++e) {
    lines += e->word + "\t" + e->readings + cost;
  }
  table_.Assign(std::move(lines));
  return true;
}

}  // namespace quill
