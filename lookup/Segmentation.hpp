// Word segmentation through the external Tokenizer tool.
#pragma once

#include <string>

namespace quill {

// Writes `text` to "textforsegmentationtemp" in `temporaryFolder`, runs the
// tool at `tokenizerPath` on it through the shell, and returns what the tool
// printed, trimmed, with the blanks inside full-width brackets closed up.
// "Bus error" as the whole output gives `text` back unsegmented. No folder
// gives the empty string. The input file is removed in every case.
std::string SegmentText(const std::string& text,
                        const std::string& tokenizerPath,
                        const std::string& temporaryFolder);

}  // namespace quill
