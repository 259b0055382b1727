#include "tests/fuzz/FuzzSupport.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace quill::fuzz {

LookUpEngine& RealEngine() {
  static LookUpEngine engine([] {
    DataFiles files;
    files.zhuyintable = QUILLMERE_SOURCE_DIR "/data/zhuyintable";
    files.sttable = QUILLMERE_SOURCE_DIR "/data/STTABLE";
    files.tokenizer = "/nonexistent/Tokenizer";
    files.temporaryFolder = "/nonexistent";
    return files;
  }());
  return engine;
}

LookUpSettings ReadSettings(Input& in) {
  const std::uint8_t bits = in.Byte();
  LookUpSettings settings;
  settings.mode = (bits & 1) ? Mode::kConverter : Mode::kDictionary;
  std::string systems;
  for (int i = 0; i < 5; ++i) systems += (in.Byte() & 1) ? '1' : '0';
  settings.PinyinSystemsPrefValue = systems;
  settings.tones.indicateTonesPrefValue = (bits & 2) ? "0" : "1";
  settings.tones.UseToneNumbersPrefValue = (bits & 4) ? "1" : "0";
  settings.tones.ShowMultipleReadingsPrefValue = (bits & 8) ? "0" : "1";
  if (settings.mode == Mode::kDictionary && (bits & 16)) {
    settings.segmentation = true;
  }
  return settings;
}

std::string WriteTemporaryFile(const std::string& name,
                               const std::string& content) {
  const auto folder = std::filesystem::temp_directory_path() /
                      ("quill-fuzz-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const std::string path = (folder / name).string();
  std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
  return path;
}

}  // namespace quill::fuzz
