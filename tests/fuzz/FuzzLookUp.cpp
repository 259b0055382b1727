// The look-up on arbitrary bytes under arbitrary settings, with the real
// tables: it must not crash, must give the same result twice, and must give
// valid UTF-8 for valid UTF-8 input.
#include "lookup/LookUp.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "text/TextOps.hpp"

using namespace quill;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  static LookUpEngine engine({QUILLMERE_SOURCE_DIR "/data/zhuyintable",
                              QUILLMERE_SOURCE_DIR "/data/STTABLE",
                              "/nonexistent/Tokenizer", "/nonexistent"});
  fuzz::Input in(data, size);
  const std::uint8_t bits = in.Byte();
  LookUpSettings settings;
  settings.mode = bits & 1;
  settings.PinyinSystemsPrefValue.clear();
  for (int i = 0; i < 5; ++i) {
    settings.PinyinSystemsPrefValue += (in.Byte() & 1) ? '1' : '0';
  }
  settings.tones.indicateTonesPrefValue = (bits & 2) ? "0" : "1";
  settings.tones.UseToneNumbersPrefValue = (bits & 4) ? "1" : "0";
  settings.tones.ShowMultipleReadingsPrefValue = (bits & 8) ? "0" : "1";
  // Segmentation runs an external program; in dictionary mode the setting
  // only governs the blanks behind punctuation.
  if (settings.mode == 0 && (bits & 16)) settings.segmentationSetting = "1";
  const std::string text = in.Rest();

  const auto first = engine.LookUp(text, settings);
  const auto second = engine.LookUp(text, settings);
  QUILL_FUZZ_CHECK(first.outcome == second.outcome);
  QUILL_FUZZ_CHECK(first.text == second.text);
  QUILL_FUZZ_CHECK(first.outcome != LookUpEngine::Outcome::kTableMissing);
  if (IsValidUtf8(text)) QUILL_FUZZ_CHECK(IsValidUtf8(first.text));
  return 0;
}
