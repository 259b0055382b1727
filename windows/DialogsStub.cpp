// Empty stand-in until the export dialog is part of the build.
#include "windows/Dialogs.hpp"

namespace quill {

void ShowExportWindow() {}

}  // namespace quill
