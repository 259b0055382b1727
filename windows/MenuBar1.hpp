// The one menu bar: File, Edit, Window and Help. Items are found by name
// (their objectName), and a chosen item goes to the handler of the
// frontmost window, else to that of the application object, as their
// MenuHandlers tell them; the Edit items are served by the focused field.
#pragma once

#include <QMenuBar>
#include <QString>

class QAction;
class QMenu;

namespace quill {

// Built at first use, and again if the window that showed it went.
QMenuBar* MenuBar1();

// The item of that name at any depth, or nullptr.
QAction* MenuItem(const QString& name);
// The menu of that name ("FileMenu", "EditMenu", "WindowMenu", "HelpMenu").
QMenu* Menu(const QString& name);

// Sends the item's command to its handler; false when nobody handles it.
bool DispatchMenuItem(const QString& name);

// Sets each item's enabling as the frontmost window wants it: an item is
// on when someone handles it, the Edit items when the focused field can do
// them; then the frontmost window's Event_EnableMenuItems has its say.
void EnableMenuItems();

}  // namespace quill
