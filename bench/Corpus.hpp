// What the benchmarks share: the corpus files, the data files beside the
// executables, and the count that every rate is given in.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "lookup/LookUp.hpp"

namespace quill::bench {

// The whole file, or nothing when it can't be read.
std::optional<std::string> ReadFile(const std::string& path);

// build/corpus/NAME, e.g. "simplified-1m.txt".
std::string CorpusPath(const std::string& name);

// zhuyintable, STTABLE and Tokenizer in the build's output folder.
DataFiles BuildDataFiles();

// Chinese characters (CJK ideographs, extension A and the compatibility
// block included) in a UTF-8 text. Every rate is given in these, so that
// tools that treat the rest of a text differently are measured alike.
std::size_t CountChinese(std::string_view text);

// Processor time of this process in seconds. The drivers time with it rather
// than the wall clock, so that figures stay fair on a busy machine.
double CpuSeconds();

// Settings of the measured look-up: converter mode, the given systems, tones
// as marks, all readings.
LookUpSettings BenchSettings(const std::string& systems, bool segmented);

}  // namespace quill::bench
