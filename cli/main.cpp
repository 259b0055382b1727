// quillmere-cli: the look-up of the window, from a terminal or a script.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "export/Export.hpp"
#include "lookup/LookUp.hpp"
#include "text/TextOps.hpp"

namespace {

constexpr const char* kUsage =
    R"(Usage: quillmere-cli [OPTIONS] [TEXT...]

Transliterates Chinese text into Hanyu Pinyin, Zhuyin 1 (Bopomofo), Zhuyin 2,
Wade-Giles and Tongyong Pinyin, and prints one block per system, as the
Quillmere window shows them. The text comes from the arguments (joined by
blanks), from -i FILE, or else from standard input.

Options:
  --mode converter|dictionary
                   converter (default): running text, with line ends,
                   punctuation and non-Chinese text kept; dictionary: the
                   characters found, then their readings
  --systems BITS   five 0/1 digits switching the systems on in the order
                   Hanyu Pinyin, Zhuyin 1, Zhuyin 2, Wade-Giles, Tongyong
                   Pinyin (default 11111)
  --no-tones       no tone marks or digits
  --numbers        tones as digits instead of marks
  --single         only the first reading of each character
  --segment        segment the text into words with Tokenizer first
  --context        choose each character's reading by the words of the text
                   (银行 yín háng, 行长 háng zhǎng); the user's phrase file,
                   'Quillmere Phrases' in $XDG_CONFIG_HOME or ~/.config, wins
                   over the shipped words
  --phrases FILE   take FILE as the user's phrase file (used with --context):
                   one word a line, then a reading per character in numbered
                   pinyin or Zhuyin, e.g. '银行 yin2 hang2'; '#' starts a
                   comment. Lines that can't be read are reported on standard
                   error and the others used.
  --standard mainland|taiwan
                   whose reading comes first: the mainland's (default) or
                   Taiwan's (垃圾 ㄌㄜˋ ㄙㄜˋ); with --context the words too
                   read by that standard
  -i, --input FILE read the text from FILE
  --table PATH     use another zhuyintable
  --sttable PATH   use another STTABLE
  --tokenizer PATH use another Tokenizer
  --raw            print the result byte for byte, lines ended by CR
  --export text|html
                   instead of the result, what the window exports: text is
                   the trimmed input, two line ends and the result (its CR
                   shown as line ends unless --raw); html is an XHTML page
                   with each system's readings above the characters in ruby
                   elements (the text is never segmented for it). An empty
                   text exports nothing.
  -o, --output FILE
                   write to FILE instead of standard output; FILE is
                   replaced only once everything has been written (a
                   device or a named pipe is written into)
  -h, --help       show this help

Example:
  echo 银行行长 | quillmere-cli --context --single --systems 10000
  echo 垃圾 | quillmere-cli --context --systems 01000 --standard taiwan

Exit status: 0 on success, 1 when the output can't be written, 2 for bad
usage or an unreadable input file, 3 when the data file is missing.
)";

int Usage(const std::string& message) {
  std::cerr << "quillmere-cli: " << message << "\n"
            << "Try 'quillmere-cli --help' for more information.\n";
  return 2;
}

std::optional<std::string> ReadAll(std::istream& in) {
  // istream::read records a failed read (of a folder, say) in the stream's
  // state, where a streambuf iterator would throw.
  std::string text;
  char buffer[1 << 16];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    text.append(buffer, static_cast<std::size_t>(in.gcount()));
  }
  if (in.bad()) return std::nullopt;
  return text;
}

// Each CR of the result shown as a line end, unless `raw`.
void ShowLineEnds(std::string& text, bool raw) {
  if (raw) return;
  // Only the lines of the layout end in CR: find them rather than visit
  // every byte.
  for (auto at = text.find('\r'); at != std::string::npos;
       at = text.find('\r', at + 1)) {
    text[at] = '\n';
  }
}

int WriteFailed(const std::string& path, int error) {
  std::cerr << "quillmere-cli: cannot write '" << path
            << "': " << std::strerror(error) << "\n";
  return 1;
}

bool WriteFully(int fd, const std::string& text) {
  const char* data = text.data();
  std::size_t left = text.size();
  while (left > 0) {
    const ssize_t n = ::write(fd, data, left);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data += n;
    left -= static_cast<std::size_t>(n);
  }
  return true;
}

// Writes `text` to a new file beside `path` and renames it over `path`, so
// that an existing file is replaced only by a complete one. A device or a
// named pipe is written to where it stands: renaming over it would put a
// file in its place, /dev/null among them.
int WriteFile(const std::string& path, const std::string& text) {
  struct stat target {};
  if (::stat(path.c_str(), &target) == 0 && !S_ISREG(target.st_mode) &&
      !S_ISDIR(target.st_mode)) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd < 0) return WriteFailed(path, errno);
    int error = WriteFully(fd, text) ? 0 : errno;
    if (::close(fd) != 0 && error == 0) error = errno;
    return error == 0 ? 0 : WriteFailed(path, error);
  }
  const std::size_t slash = path.rfind('/');
  const std::string folder =
      slash == std::string::npos ? "." : path.substr(0, slash + 1);
  const std::string name =
      slash == std::string::npos ? path : path.substr(slash + 1);
  if (name.empty()) return WriteFailed(path, EISDIR);
  std::string temporary =
      folder + (slash == std::string::npos ? "/" : "") + "." + name + ".XXXXXX";
  const int fd = ::mkstemp(temporary.data());
  if (fd < 0) return WriteFailed(path, errno);
  // A replaced file keeps its permissions; a new one gets the usual ones.
  struct stat existing {};
  mode_t mode = 0;
  if (::stat(path.c_str(), &existing) == 0) {
    mode = existing.st_mode & 07777;
  } else {
    mode = ::umask(0);
    ::umask(mode);
    mode = 0666 & ~mode;
  }
  int error = 0;
  if (::fchmod(fd, mode) != 0 || !WriteFully(fd, text) || ::fsync(fd) != 0) {
    error = errno;
  }
  if (::close(fd) != 0 && error == 0) error = errno;
  if (error == 0 && ::rename(temporary.c_str(), path.c_str()) != 0) {
    error = errno;
  }
  if (error != 0) {
    ::unlink(temporary.c_str());
    return WriteFailed(path, error);
  }
  return 0;
}

// The lines of the user's phrase file that were passed over, once.
void ReportPhraseProblems(quill::UserPhrases& phrases) {
  if (!phrases.HasUnreportedProblems()) return;
  for (const auto& problem : phrases.Problems()) {
    std::cerr << "quillmere-cli: " << phrases.Path() << ":" << problem.line
              << ": " << problem.what << "\n";
  }
  phrases.MarkProblemsReported();
}

// A plain file mapped read-only, its pages mapped at once: a big input is
// neither copied nor zero-filled first. Mapped until the program ends.
class MappedFile {
 public:
  // False for anything but a non-empty plain file that can be mapped.
  bool Open(const std::string& path) {
    // Anything else is not opened here at all: opening a FIFO and closing it
    // again would cost its writer the text.
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return false;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return false;
    if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size > 0) {
      void* map = ::mmap(nullptr, static_cast<std::size_t>(st.st_size),
                         PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
      if (map != MAP_FAILED) {
        data_ = static_cast<const char*>(map);
        size_ = static_cast<std::size_t>(st.st_size);
      }
    }
    ::close(fd);
    return data_ != nullptr;
  }
  bool mapped() const { return data_ != nullptr; }
  std::string_view view() const { return {data_, size_}; }

 private:
  const char* data_ = nullptr;
  std::size_t size_ = 0;
};

int Emit(const std::string& text, const std::optional<std::string>& path) {
  if (path) return WriteFile(*path, text);
  std::fwrite(text.data(), 1, text.size(), stdout);
  return std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  quill::LookUpSettings settings;
  quill::DataFiles files = quill::DataFiles::BesideExecutable();
  std::optional<std::string> inputFile;
  std::vector<std::string> words;
  bool raw = false;
  std::string exportFormat;  // "", "text" or "html"
  std::optional<std::string> outputFile;

  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    auto value = [&](std::string& out) {
      if (i + 1 >= argc) return false;
      out = argv[++i];
      return true;
    };
    std::string v;
    if (arg == "-h" || arg == "--help") {
      std::cout << kUsage;
      return 0;
    } else if (arg == "--mode") {
      if (!value(v)) return Usage("--mode needs converter or dictionary");
      if (v == "converter") {
        settings.mode = quill::Mode::kConverter;
      } else if (v == "dictionary") {
        settings.mode = quill::Mode::kDictionary;
      } else {
        return Usage("unknown mode '" + v + "' (converter or dictionary)");
      }
    } else if (arg == "--systems") {
      if (!value(v) || v.size() != 5 ||
          v.find_first_not_of("01") != std::string::npos) {
        return Usage("--systems needs five digits 0 or 1, such as 11111");
      }
      settings.PinyinSystemsPrefValue = v;
    } else if (arg == "--no-tones") {
      settings.tones.indicateTonesPrefValue = "0";
    } else if (arg == "--numbers") {
      settings.tones.UseToneNumbersPrefValue = "1";
    } else if (arg == "--single") {
      settings.tones.ShowMultipleReadingsPrefValue = "0";
    } else if (arg == "--segment") {
      settings.segmentation = true;
    } else if (arg == "--context") {
      settings.contextReadings = true;
    } else if (arg == "--phrases") {
      if (!value(files.userPhrases) || files.userPhrases.empty()) {
        return Usage("--phrases needs a file");
      }
    } else if (arg == "--standard") {
      if (!value(v)) return Usage("--standard needs mainland or taiwan");
      if (v == "mainland") {
        settings.standard = quill::ReadingStandard::kMainland;
      } else if (v == "taiwan") {
        settings.standard = quill::ReadingStandard::kTaiwan;
      } else {
        return Usage("unknown standard '" + v + "' (mainland or taiwan)");
      }
    } else if (arg == "-i" || arg == "--input") {
      if (!value(v)) return Usage(arg + " needs a file");
      inputFile = v;
    } else if (arg == "--table") {
      if (!value(files.zhuyintable)) return Usage("--table needs a path");
    } else if (arg == "--sttable") {
      if (!value(files.sttable)) return Usage("--sttable needs a path");
    } else if (arg == "--tokenizer") {
      if (!value(files.tokenizer)) return Usage("--tokenizer needs a path");
    } else if (arg == "--raw") {
      raw = true;
    } else if (arg == "--export") {
      if (!value(v) || (v != "text" && v != "html")) {
        return Usage("--export needs text or html");
      }
      exportFormat = v;
    } else if (arg == "-o" || arg == "--output") {
      if (!value(v) || v.empty()) return Usage(arg + " needs a file");
      outputFile = v;
    } else if (arg == "--") {
      for (++i; i < argc; ++i) words.emplace_back(argv[i]);
    } else if (arg.size() > 1 && arg[0] == '-') {
      return Usage("unknown option '" + arg + "'");
    } else {
      words.push_back(arg);
    }
  }
  if (inputFile && !words.empty()) {
    return Usage("give the text either as arguments or with -i, not both");
  }

  std::string text;
  MappedFile mapped;
  if (inputFile) {
    // A plain file is mapped; anything else (a pipe, say) is read.
    if (!mapped.Open(*inputFile)) {
      std::ifstream in(*inputFile, std::ios::binary);
      std::optional<std::string> read;
      if (in) read = ReadAll(in);
      if (!read) {
        std::cerr << "quillmere-cli: cannot read '" << *inputFile
                  << "': " << std::strerror(errno) << "\n";
        return 2;
      }
      text = std::move(*read);
    }
  } else if (!words.empty()) {
    for (std::size_t i = 0; i < words.size(); ++i) {
      if (i > 0) text += ' ';
      text += words[i];
    }
  } else {
    auto read = ReadAll(std::cin);
    if (!read) {
      std::cerr << "quillmere-cli: cannot read standard input\n";
      return 2;
    }
    text = std::move(*read);
  }

  const std::string_view input =
      mapped.mapped() ? mapped.view() : std::string_view(text);
  quill::LookUpEngine engine(files);
  if (exportFormat == "html") {
    const std::string exportText = quill::Trim(input);
    const auto page = quill::BuildPhoneticPage(exportText, settings, engine);
    ReportPhraseProblems(engine.userPhrases());
    if (page.status == quill::ExportPage::Status::kTableMissing) {
      std::cerr << quill::kTableMissingMessage << "\n";
      return 3;
    }
    if (page.status == quill::ExportPage::Status::kNothing) return 0;
    return Emit(page.text, outputFile);
  }

  auto result = engine.LookUp(input, settings);
  ReportPhraseProblems(engine.userPhrases());
  if (result.outcome == quill::LookUpEngine::Outcome::kTableMissing) {
    std::cerr << quill::kTableMissingMessage << "\n";
    return 3;
  }
  if (exportFormat == "text") {
    // Like the window, which exports nothing before a look-up of some text.
    // The text typed counts, not what segmentation made of it: where
    // Tokenizer printed nothing, the input is written with an empty result.
    if (quill::Trim(input).empty()) return 0;
    ShowLineEnds(result.text, raw);
    return Emit(quill::BuildPlainText(input, result.text), outputFile);
  }
  ShowLineEnds(result.text, raw);
  return Emit(result.text, outputFile);
}
