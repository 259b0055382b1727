// The segmentation on arbitrary text with the real word list: every byte of
// the input comes back in order, and only blanks are added, never two in a
// row and never next to white space the text already has.
#include <string>

#include "tests/fuzz/FuzzSupport.hpp"
#include "tokenizer/Segmenter.hpp"

using namespace quill;

namespace {

bool IsSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  static Lexicon lexicon;
  static const bool loaded = [] {
    std::string error;
    return lexicon.Load(QUILLMERE_SOURCE_DIR "/data/tokenizerlexicon", &error);
  }();
  QUILL_FUZZ_CHECK(loaded);
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::string out = Segment(text, lexicon);
  std::size_t i = 0;
  for (std::size_t o = 0; o < out.size(); ++o) {
    if (i < text.size() && out[o] == text[i]) {
      ++i;
      continue;
    }
    // An added blank: not at the ends, not beside white space.
    QUILL_FUZZ_CHECK(out[o] == ' ');
    QUILL_FUZZ_CHECK(o > 0 && o + 1 < out.size());
    QUILL_FUZZ_CHECK(!IsSpace(out[o - 1]) && !IsSpace(out[o + 1]));
  }
  QUILL_FUZZ_CHECK(i == text.size());
  return 0;
}
