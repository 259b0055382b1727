// The secondary windows as the menus and the main window reach them. Each
// shows its window's one instance, making it if there is none.
#pragma once

namespace quill {

void ShowPreferencesWindow();
void ShowAboutWindow();
void ShowHelpWindow();
void ShowExportWindow();

}  // namespace quill
