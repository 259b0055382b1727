// The preferences store: one small XML file, "Quillmere Preferences", in the
// user's preferences folder. Every value is text in a child element of the
// document element, named by its key. Nothing is cached: each call parses
// the file again, and each write deletes it and writes it anew.
//
//   Preferences store(PreferencesFolder());
//   store.WritePreferences("PinyinSystems", "11111");
//   store.ReadPreferences("pinyinsystems");  // "11111": keys ignore case
#pragma once

#include <stdexcept>
#include <string>

namespace quill {

// A preferences file that can't be worked with: it doesn't parse, an element
// has no text, or a write finds nothing to add a key beside. The program
// can't go on with such a file and ends; the file is left as it is.
class PreferencesError : public std::runtime_error {
 public:
  PreferencesError(std::string path, std::string problem);
  const std::string& path() const { return path_; }
  const std::string& problem() const { return problem_; }

 private:
  std::string path_;
  std::string problem_;
};

class Preferences {
 public:
  // `folder` holds the file; an empty folder means there is none, and then
  // a read gives "" and a write does nothing.
  explicit Preferences(std::string folder);

  static constexpr const char* kFileName = "Quillmere Preferences";

  // The value of the last child whose name equals `key` (letter case
  // ignored), or "" when there is none or no file. Throws PreferencesError.
  std::string ReadPreferences(const std::string& key) const;

  // Sets `value` on every child named `key`, or appends a new child, and
  // writes the file anew. A file that can't be written is left alone in
  // silence. Throws PreferencesError.
  void WritePreferences(const std::string& key, const std::string& value) const;

  // The full path of the file, "" without a folder.
  std::string FilePath() const;

 private:
  std::string folder_;
};

}  // namespace quill
