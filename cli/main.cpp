// quillmere-cli: the look-up of the window, from a terminal or a script.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "lookup/LookUp.hpp"

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
  -i, --input FILE read the text from FILE
  --table PATH     use another zhuyintable
  --sttable PATH   use another STTABLE
  --tokenizer PATH use another Tokenizer
  --raw            print the result byte for byte, lines ended by CR
  -h, --help       show this help

Exit status: 0 on success, 2 for bad usage or an unreadable input file,
3 when the data file is missing.
)";

int Usage(const std::string& message) {
  std::cerr << "quillmere-cli: " << message << "\n"
            << "Try 'quillmere-cli --help' for more information.\n";
  return 2;
}

std::optional<std::string> ReadAll(std::istream& in) {
  std::string text((std::istreambuf_iterator<char>(in)),
                   std::istreambuf_iterator<char>());
  if (in.bad()) return std::nullopt;
  return text;
}

// Writes `text` with each CR shown as a line end, unless `raw`.
void Print(const std::string& text, bool raw) {
  if (raw) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    return;
  }
  std::string chunk;
  constexpr std::size_t kChunk = 1 << 16;
  for (std::size_t from = 0; from < text.size(); from += kChunk) {
    chunk.assign(text, from, kChunk);
    for (char& c : chunk) {
      if (c == '\r') c = '\n';
    }
    std::fwrite(chunk.data(), 1, chunk.size(), stdout);
  }
}

}  // namespace

int main(int argc, char** argv) {
  quill::LookUpSettings settings;
  quill::DataFiles files = quill::DataFiles::BesideExecutable();
  std::optional<std::string> inputFile;
  std::vector<std::string> words;
  bool raw = false;

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
        settings.mode = 1;
      } else if (v == "dictionary") {
        settings.mode = 0;
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
      settings.segmentationSetting = "1";
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
  if (inputFile) {
    std::ifstream in(*inputFile, std::ios::binary);
    std::optional<std::string> read;
    if (in) read = ReadAll(in);
    if (!read) {
      std::cerr << "quillmere-cli: cannot read '" << *inputFile
                << "': " << std::strerror(errno) << "\n";
      return 2;
    }
    text = std::move(*read);
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

  quill::LookUpEngine engine(files);
  const auto result = engine.LookUp(text, settings);
  if (result.outcome == quill::LookUpEngine::Outcome::kTableMissing) {
    std::cerr
        << "The data file is missing. Please reinstall the application.\n";
    return 3;
  }
  Print(result.text, raw);
  return std::fflush(stdout) == 0 ? 0 : 1;
}
