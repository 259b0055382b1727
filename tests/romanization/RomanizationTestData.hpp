// Shared helpers of the romanization tests: the golden text files and the
// tone settings by name.
#pragma once

#include <string>
#include <vector>

#include "romanization/Romanization.hpp"

namespace quill::testing {

// The lines of a golden file, comments ("#") and empty lines left out, each
// split on tabs, or on the first blank when `onBlank` is set. An unreadable
// file gives no rows; the callers assert that rows came.
std::vector<std::vector<std::string>> ReadGoldenRows(const std::string& name,
                                                     bool onBlank);

// "off", "digits", "marks", and "digits-first"/"marks-first" for the same
// with only the first reading converted.
ToneSettings SettingsNamed(const std::string& name);

// One of "pinyin", "tongyong", "wade", "zhuyin2", as the look-up calls it
// (Zhuyin 2 with the trailing blank).
std::string ConvertWith(const std::string& system, const std::string& reading,
                        const ToneSettings& settings);

}  // namespace quill::testing
