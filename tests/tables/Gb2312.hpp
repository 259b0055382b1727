// The 6763 Chinese characters of GB 2312 in code order, as UTF-8.
#pragma once

#include <iconv.h>

#include <string>
#include <vector>

namespace quill {

inline std::vector<std::string> Gb2312Characters() {
  std::vector<std::string> characters;
  iconv_t cd = iconv_open("UTF-8", "EUC-CN");
  for (int lead = 176; lead <= 247; ++lead) {
    for (int trail = 161; trail <= 254; ++trail) {
      char in[2] = {static_cast<char>(lead), static_cast<char>(trail)};
      char out[8];
      char *inPtr = in, *outPtr = out;
      std::size_t inLeft = 2, outLeft = sizeof out;
      if (iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) !=
          static_cast<std::size_t>(-1)) {
        characters.emplace_back(out, outPtr);
      }
    }
  }
  iconv_close(cd);
  return characters;
}

}  // namespace quill
