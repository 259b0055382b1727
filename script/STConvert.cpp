#include "script/STConvert.hpp"

#include <utility>

// Placeholder until the table walk lands: as if STTABLE were missing.
namespace quill {

STConverter::STConverter(std::string tablePath)
    : tablePath_(std::move(tablePath)) {}

std::string STConverter::STConvert(std::string_view) { return {}; }

}  // namespace quill
