// Empty stand-ins until the dialog windows are part of the build.
#include "windows/Dialogs.hpp"

namespace quill {

void ShowPreferencesWindow() {}
void ShowAboutWindow() {}
void ShowHelpWindow() {}
void ShowExportWindow() {}

}  // namespace quill
