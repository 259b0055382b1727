// The Window menu's list of open windows: one item per window, following
// its title, bringing it forward, and gone at the first opening of the menu
// after its window has gone.
#pragma once

#include <QAction>
#include <QPointer>
#include <QWidget>

class QMenu;

namespace quill {

class WindowMenuItem : public QAction {
  Q_OBJECT

 public:
  // Takes the window's title and appends itself to the Window menu.
  explicit WindowMenuItem(QWidget* window);

  // When the menu is about to show: gone with the window, or its title now.
  void Event_EnableMenu();
  // Brings the window forward.
  void Event_Action();

  // Held weakly: null once the window has been destroyed.
  QPointer<QWidget> ownerWindow;
};

namespace WindowMenuManager {

// Adds an item for the window and gives it the menu's one check mark.
void Add(QWidget* window);
// Minimises the window if it can be minimised.
void Minimize(QWidget* window);
// Shows every window, keeping their order.
void BringAllToFront();
// Event_EnableMenu of each window item of `menu`.
void EnableMenu(QMenu* menu);
// How many items Add has made.
int Count();

}  // namespace WindowMenuManager

}  // namespace quill
