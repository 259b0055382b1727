// What a window or the application answers in the menu bar. A chosen item
// goes to the frontmost window's handler when it has one, else to the
// application's; an item is enabled when one of them handles it, and then
// the frontmost window's Event_EnableMenuItems has its say.
//
//   class HelpWindow : public QWidget, public MenuHandlers { ... };
//   std::function<bool()> HelpWindow::MenuHandler(const QString& item) {
//     return FindMenuHandler(this, item,
//                            {{"FileCloseWindow",
//                              &HelpWindow::_FileCloseWindow_Action}});
//   }
#pragma once

#include <QLatin1String>
#include <QString>
#include <functional>
#include <initializer_list>
#include <utility>

namespace quill {

class MenuHandlers {
 public:
  virtual ~MenuHandlers() = default;

  // The handler of the item of that name ("FileCloseWindow"), or an empty
  // function when this window or application doesn't handle it.
  virtual std::function<bool()> MenuHandler(const QString& item) = 0;
  // Sets the items this one enables otherwise than by the rule, while it
  // is in front.
  virtual void Event_EnableMenuItems() {}
};

// The handler of `item` from a class's table of item names and handlers,
// bound to `self`; an empty function when the table has no such item.
template <typename Class>
std::function<bool()> FindMenuHandler(
    Class* self, const QString& item,
    std::initializer_list<std::pair<const char*, bool (Class::*)()>> table) {
  for (const auto& [name, handler] : table) {
    if (item == QLatin1String(name)) {
      return [self, handler = handler] { return (self->*handler)(); };
    }
  }
  return {};
}

}  // namespace quill
