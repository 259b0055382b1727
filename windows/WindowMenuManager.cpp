#include "windows/WindowMenuManager.hpp"

#include <QApplication>
#include <QMenu>

#include "windows/MenuBar1.hpp"

namespace quill {

namespace {
int count = 0;
}  // namespace

WindowMenuItem::WindowMenuItem(QWidget* window)
    : QAction(Menu("WindowMenu")), ownerWindow(window) {
  setText(window->windowTitle());
  setCheckable(true);
  Menu("WindowMenu")->addAction(this);
  connect(this, &QAction::triggered, this, [this] { Event_Action(); });
}

void WindowMenuItem::Event_EnableMenu() {
  if (ownerWindow.isNull()) {
    deleteLater();  // not at once: the menu is walking its items
    if (QMenu* menu = Menu("WindowMenu")) menu->removeAction(this);
    return;
  }
  setText(ownerWindow->windowTitle());
  setEnabled(true);
}

void WindowMenuItem::Event_Action() {
  if (ownerWindow.isNull()) return;
  ownerWindow->setWindowState(ownerWindow->windowState() &
                              ~Qt::WindowMinimized);
  ownerWindow->show();
  ownerWindow->raise();
  ownerWindow->activateWindow();
}

namespace WindowMenuManager {

void Add(QWidget* window) {
  auto* item = new WindowMenuItem(window);
  for (QAction* action : Menu("WindowMenu")->actions())
    action->setChecked(false);
  item->setChecked(true);
  ++count;
}

void Minimize(QWidget* window) {
  if (window != nullptr && window->isWindow()) {
    window->showMinimized();
  }
}

void BringAllToFront() {
  // Raising each window in turn from the rearmost keeps the order they had.
  QWidget* active = QApplication::activeWindow();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->isWindow() && window != active) {
      window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
      window->show();
      window->raise();
    }
  }
  if (active != nullptr) {
    active->setWindowState(active->windowState() & ~Qt::WindowMinimized);
    active->show();
    active->raise();
  }
}

void EnableMenu(QMenu* menu) {
  for (QAction* action : menu->actions()) {
    if (auto* item = qobject_cast<WindowMenuItem*>(action))
      item->Event_EnableMenu();
  }
}

int Count() { return count; }

}  // namespace WindowMenuManager

}  // namespace quill
