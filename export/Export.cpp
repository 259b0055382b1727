#include "export/Export.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "text/TextOps.hpp"

namespace quill {

namespace {

constexpr std::string_view kEndOfLine = "\n";

// The ruby text of one character in each system that is on; empty for a
// system that is off.
using RubyTexts = PerSystem<std::string>;

RubyTexts RubyTextsOf(std::string_view tableEntry, const LookUpSettings& s) {
  // Readings never hold a blank, so the first field on one blank is the
  // first reading; every system then gets that one alone.
  const std::string readingEntry = s.tones.ShowMultipleReadingsPrefValue == "0"
                                       ? NthField(tableEntry, " ", 1)
                                       : std::string(tableEntry);
  RubyTexts texts;
  for (const SystemRow& row : kSystemTable) {
    if (s.PinyinSystemsPrefValue.Has(row.system)) {
      texts[row.system] = Convert(row, readingEntry, s.tones);
    }
  }
  return texts;
}

// The walk over the export text, building the five accumulators of markup.
class PageWalk {
 public:
  // `chosen`: the readings chosen in context for the text, as the look-up
  // has them.
  PageWalk(LookUpEngine& engine, const LookUpSettings& settings,
           ChosenReadings chosen)
      : engine_(engine),
        settings_(settings),
        on_(settings.PinyinSystemsPrefValue),
        chosen_(std::move(chosen)) {}

  void Run(std::string_view text) {
    for (std::size_t pos = 0; pos < text.size();) {
      const Utf8Char c = DecodeChar(text, pos);
      const std::string_view character = text.substr(pos, c.length);
      std::string_view chosen;
      if (c.code > 0xFF) chosen = chosen_.Of(pos, c.code);
      pos += c.length;
      const RubyTexts* ruby = TakesCharacterPath(c.code)
                                  ? Lookup(c.code, character, chosen)
                                  : nullptr;
      if (ruby == nullptr) {
        Verbatim(character);
      } else {
        WithReading(character, *ruby);
      }
    }
  }

  const PerSystem<std::string>& results() const { return results_; }

 private:
  static constexpr int kNoReading = -1;

  // Verbatim characters gather in one ruby element without rt.
  void Verbatim(std::string_view character) {
    for (System system : kAllSystems) {
      if (!on_.Has(system)) continue;
      if (!rubyRunOpen_) results_[system] += "<ruby>";
      results_[system] += character;
    }
    rubyRunOpen_ = true;
  }

  // A character with a reading stands in an element of its own; the base
  // is the character as typed, even when its reading came through its
  // Traditional form.
  void WithReading(std::string_view character, const RubyTexts& ruby) {
    for (System system : kAllSystems) {
      if (!on_.Has(system)) continue;
      std::string& out = results_[system];
      out += rubyRunOpen_ ? "</ruby><ruby>" : "<ruby>";
      out += character;
      out += "<rt>";
      out += ruby[system];
      out += "</rt></ruby>";
    }
    rubyRunOpen_ = false;
  }

  // The ruby texts of a character, nullptr for one without a reading. Worked
  // out once per character and export: a text repeats its characters, and a
  // miss costs a Simplified-to-Traditional conversion.
  const RubyTexts* Lookup(std::uint32_t code, std::string_view character,
                          std::string_view chosen) {
    if (!chosen.empty() || engine_.HasOwnReading(character, settings_)) {
      // A reading of its own: once per character and chosen syllable, which
      // is a view into the phrase table.
      const auto key = std::make_pair(code, chosen.data());
      const auto [it, isNew] = slotOfChosen_.try_emplace(key, kNoReading);
      if (isNew) {
        const std::string entry =
            engine_.ReadingEntryOf(character, chosen, settings_);
        if (!entry.empty()) {
          texts_.push_back(RubyTextsOf(entry, settings_));
          it->second = static_cast<int>(texts_.size() - 1);
        }
      }
      if (it->second == kNoReading) return nullptr;
      return &texts_[static_cast<std::size_t>(it->second)];
    }
    const auto [it, isNew] = slotOf_.try_emplace(code, kNoReading);
    if (isNew) {
      const long hit = engine_.Search(character);
      if (hit >= 1) {
        texts_.push_back(
            RubyTextsOf(engine_.table().ReadingEntry(hit), settings_));
        it->second = static_cast<int>(texts_.size() - 1);
      }
    }
    if (it->second == kNoReading) return nullptr;
    return &texts_[static_cast<std::size_t>(it->second)];
  }

  LookUpEngine& engine_;
  const LookUpSettings& settings_;
  const SystemSet on_;
  PerSystem<std::string> results_;
  // Shared by all accumulators: they all see the same characters.
  bool rubyRunOpen_ = false;
  std::unordered_map<std::uint32_t, int> slotOf_;
  std::map<std::pair<std::uint32_t, const char*>, int> slotOfChosen_;
  std::vector<RubyTexts> texts_;
  ChosenReadings chosen_;
};

}  // namespace

std::string BuildPlainText(std::string_view textFieldText,
                           std::string_view resultFieldText) {
  std::string text = Trim(textFieldText);
  text += kEndOfLine;
  text += kEndOfLine;
  text += resultFieldText;
  return text;
}

std::string DocumentHead() {
  constexpr std::array<std::string_view, 7> kLines{
      R"(<!DOCTYPE html PUBLIC "-//W3C//DTD XHTML 1.1//EN" )"
      R"("http://www.w3.org/TR/xhtml11/DTD/xhtml11.dtd">)",
      R"(<html xmlns="http://www.w3.org/1999/xhtml">)",
      "<head>",
      R"(<meta http-equiv="Content-Type" content="text/html; charset=UTF-8" />)",
      "<title>Untitled Document</title>",
      R"(<style type="text/css">ruby { display: inline-table; )"
      R"(margin-right: 3px; } ruby * { display: inline; line-height: 1.2; )"
      R"(text-indent: 0; text-align: center; white-space: nowrap; } )"
      R"(ruby > * { display: table-row-group; } ruby > rt, ruby rtc { )"
      R"(display: table-header-group; font-size: 60%; } ruby rtc + rtc { )"
      R"(display: table-footer-group } ruby rbc > *, ruby rtc > * { )"
      R"(display: table-cell } </style></head>)",
      "<body>",
  };
  std::string head;
  for (std::string_view line : kLines) {
    head += line;
    head += kEndOfLine;
  }
  return head;
}

ExportPage BuildPhoneticPage(std::string_view exportText,
                             const LookUpSettings& settings,
                             LookUpEngine& engine) {
  if (Trim(exportText).empty()) return {ExportPage::Status::kNothing, {}};
  // The table must be there even for a text that never searches it.
  if (!engine.LoadTable()) return {ExportPage::Status::kTableMissing, {}};

  PageWalk walk(engine, settings,
                engine.ReadingsInContext(exportText, exportText, settings));
  walk.Run(exportText);
  const PerSystem<std::string>& results = walk.results();
  const SystemSet& on = settings.PinyinSystemsPrefValue;
  const BlockHeaders& names = settings.headers;

  // One system alone stands in a bare "<p>"; with several, each block is
  // headed by its name; with none, nothing is wrapped.
  const auto count = std::count_if(kAllSystems.begin(), kAllSystems.end(),
                                   [&](System s) { return on.Has(s); });

  std::string page = DocumentHead();
  std::size_t size = page.size() + 256;
  for (System system : kAllSystems) {
    size += results[system].size() + names[system].size();
  }
  page.reserve(size);
  for (const SystemRow& row : kSystemTable) {
    if (on.Has(row.system)) {
      page += "<p>";
      if (count > 1) page.append(names[row.system]).append("<br /><br />");
      page += results[row.system];
      page += "</p>";
    }
    // Every seam is written whether its system is on or not, and its
    // "</ruby>" closes a run left open inside the block, or nothing.
    const bool last = row.system == kAllSystems.back();
    page += last ? "</ruby>" : "</ruby><br />";
    page += kEndOfLine;
  }
  page += "</body>";
  page += kEndOfLine;
  page += "</html>";
  return {ExportPage::Status::kDone, std::move(page)};
}

}  // namespace quill
