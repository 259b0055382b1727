// The preferences store on arbitrary files: a read and a write either work
// or end in a PreferencesError (which ends the program), never in a crash,
// and a failure leaves the file as it was.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "settings/Preferences.hpp"
#include "tests/fuzz/FuzzSupport.hpp"

using namespace quill;

namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  fuzz::Input in(data, size);
  const std::string key = in.Byte() & 1 ? "PinyinSystems" : "pinyinsystems";
  const std::string value = in.Part();
  const std::string content = in.Rest();
  const std::string path =
      fuzz::WriteTemporaryFile(Preferences::kFileName, content);
  const Preferences store(std::filesystem::path(path).parent_path().string());

  try {
    store.ReadPreferences(key);
  } catch (const PreferencesError&) {
    QUILL_FUZZ_CHECK(ReadFile(path) == content);
    return 0;
  }
  try {
    store.WritePreferences(key, value.empty() ? "1" : value);
  } catch (const PreferencesError&) {
    QUILL_FUZZ_CHECK(ReadFile(path) == content);
    return 0;
  }
  return 0;
}
