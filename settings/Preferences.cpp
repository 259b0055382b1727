#include "settings/Preferences.hpp"

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <pugixml.hpp>
#include <sstream>
#include <system_error>
#include <utility>

#include "text/TextOps.hpp"

namespace quill {

namespace {

namespace fs = std::filesystem;

// A preferences file holds a dozen short values. Anything this large is not
// one, and parsing it would only cost memory.
constexpr std::uintmax_t kLargestFile = 16 * 1024 * 1024;

bool Exists(const std::string& path) {
  std::error_code ec;
  return fs::exists(fs::symlink_status(path, ec));
}

void Load(pugi::xml_document& document, const std::string& path) {
  std::error_code ec;
  if (fs::is_directory(path, ec)) {
    throw PreferencesError(path, "it is a folder, not a file");
  }
  const std::uintmax_t size = fs::file_size(path, ec);
  if (!ec && size > kLargestFile) {
    throw PreferencesError(path,
                           "the file is too large to be a preferences file");
  }
  // parse_default neither reads a DOCTYPE nor expands entities beyond the
  // five predefined ones and character references.
  const pugi::xml_parse_result result =
      document.load_file(path.c_str(), pugi::parse_default);
  if (!result) {
    std::string problem = "the file is not well-formed XML (";
    problem += result.description();
    if (result.status != pugi::status_file_not_found &&
        result.status != pugi::status_io_error) {
      problem += " at byte " + std::to_string(result.offset);
    }
    problem += ")";
    throw PreferencesError(path, problem);
  }
}

// The document as text, as the file holds it. Unindented: indentation grows
// with the square of the depth of a deeply nested file.
std::string ToString(const pugi::xml_document& document) {
  std::ostringstream out;
  document.save(out, "", pugi::format_raw, pugi::encoding_utf8);
  return out.str();
}

// A new empty file with the text in it; nothing when it can't be created.
void CreateAndWrite(const std::string& path, const std::string& text) {
  std::FILE* file = std::fopen(path.c_str(), "wbx");
  if (file == nullptr) return;
  std::fwrite(text.data(), 1, text.size(), file);
  std::fclose(file);
}

// Whether the existing file can be opened for writing; nothing is changed.
bool CanWrite(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "r+b");
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

// A key becomes an element name, so it has to be a legal one.
bool IsElementName(const std::string& name) {
  if (name.empty()) return false;
  const auto start = static_cast<unsigned char>(name[0]);
  if (!(std::isalpha(start) || start == '_' || start >= 0x80)) return false;
  for (const char c : name) {
    const auto u = static_cast<unsigned char>(c);
    if (!(std::isalnum(u) || u == '_' || u == '-' || u == '.' || u >= 0x80)) {
      return false;
    }
  }
  return true;
}

bool Matches(const pugi::xml_node& node, const std::string& key) {
  return node.type() == pugi::node_element && Equals(node.name(), key);
}

std::string NoTextProblem(const pugi::xml_node& node) {
  return std::string("the element <") + node.name() + "> holds no value";
}

}  // namespace

PreferencesError::PreferencesError(std::string path, std::string problem)
    : std::runtime_error(path + ": " + problem),
      path_(std::move(path)),
      problem_(std::move(problem)) {}

Preferences::Preferences(std::string folder) : folder_(std::move(folder)) {}

std::string Preferences::FilePath() const {
  return folder_.empty() ? std::string() : folder_ + "/" + kFileName;
}

std::string Preferences::ReadPreferences(const std::string& key) const {
  const std::string path = FilePath();
  if (path.empty() || !Exists(path)) return {};
  pugi::xml_document document;
  Load(document, path);
  std::string result;
  for (const pugi::xml_node child : document.document_element().children()) {
    if (!Matches(child, key)) continue;
    const pugi::xml_node text = child.first_child();
    if (!text) throw PreferencesError(path, NoTextProblem(child));
    result = text.value();  // no break: the last duplicate wins
  }
  return result;
}

void Preferences::WritePreferences(const std::string& key,
                                   const std::string& value) const {
  const std::string path = FilePath();
  if (path.empty()) return;
  if (!IsElementName(key)) {
    throw PreferencesError(path, "\"" + key + "\" can't be the name of a key");
  }
  pugi::xml_document document;
  if (!Exists(path)) {
    // A new file starts with this one element, whatever the key; the walk
    // below then adds the key itself beside it.
    pugi::xml_node root = document.append_child("root");
    root.append_child("MainFontSize")
        .append_child(pugi::node_pcdata)
        .set_value(value.data(), value.size());
    CreateAndWrite(path, ToString(document));
  }
  if (!CanWrite(path)) return;  // locked, gone or not a file: left alone
  document.reset();
  Load(document, path);

  const pugi::xml_node element = document.document_element();
  pugi::xml_node current;
  bool found = false;
  for (pugi::xml_node child : element.children()) {
    current = child;
    if (!Matches(child, key)) continue;
    pugi::xml_node text = child.first_child();
    if (!text) throw PreferencesError(path, NoTextProblem(child));
    text.set_value(value.data(), value.size());
    found = true;  // no break: every duplicate gets the value
  }
  if (!found) {
    if (!current) {
      throw PreferencesError(path, "the document element <" +
                                       std::string(element.name()) +
                                       "> has no children");
    }
    current.parent()
        .append_child(key.c_str())
        .append_child(pugi::node_pcdata)
        .set_value(value.data(), value.size());
  }

  std::error_code ec;
  fs::remove(path, ec);
  CreateAndWrite(path, ToString(document));  // a failure here loses the file
}

}  // namespace quill
