#include "windows/MenuBar1.hpp"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextEdit>
#include <array>
#include <functional>

#include "windows/App.hpp"
#include "windows/MenuHandlers.hpp"
#include "windows/WindowMenuManager.hpp"

namespace quill {

namespace {

struct Item {
  const char* name;
  const char* parent;  // nullptr: a menu of the bar
  std::string (*text)();
  const char* literal;  // used when text is nullptr
  QKeySequence shortcut;
};

std::string Dash() { return "-"; }

// In the order of the menus. Cmd is Ctrl here.
const std::array<Item, 24>& Items() {
  static const std::array<Item, 24> items{{
      {"FileMenu", nullptr, App::kFileMenuText, nullptr, {}},
      {"FileCloseWindow", "FileMenu", App::kFileCloseWindow, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_W)},
      {"UntitledItem1", "FileMenu", Dash, nullptr, {}},
      {"FileQuit", "FileMenu", nullptr, "&Quit",
       QKeySequence(Qt::CTRL | Qt::Key_Q)},
      {"EditMenu", nullptr, App::kEditMenuText, nullptr, {}},
      {"EditUndo", "EditMenu", App::kEditUndo, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_Z)},
      {"UntitledMenu1", "EditMenu", Dash, nullptr, {}},
      {"EditCut", "EditMenu", App::kEditCut, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_X)},
      {"EditCopy", "EditMenu", App::kEditCopy, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_C)},
      {"EditPaste", "EditMenu", App::kEditPaste, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_V)},
      {"EditClear", "EditMenu", App::kEditClear, nullptr, {}},
      {"UntitledMenu0", "EditMenu", Dash, nullptr, {}},
      {"EditSelectAll", "EditMenu", App::kEditSelectAll, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_A)},
      {"EditPreferences", "EditMenu", App::kPreferencesMenuitemText, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_Comma)},
      {"WindowMenu", nullptr, App::kWindowMenuText, nullptr, {}},
      {"WindowMinimize", "WindowMenu", App::kWindowMinimize, nullptr,
       QKeySequence(Qt::CTRL | Qt::Key_M)},
      {"WindowZoom", "WindowMenu", App::kWindowZoom, nullptr, {}},
      {"UntitledSeparator", "WindowMenu", Dash, nullptr, {}},
      {"WindowBringAllToFront",
       "WindowMenu",
       App::kWindowBringAllToFront,
       nullptr,
       {}},
      {"UntitledSeparator0", "WindowMenu", Dash, nullptr, {}},
      {"HelpMenu", nullptr, nullptr, "Help", {}},
      {"HelpQuillmereHelp", "HelpMenu", App::kQuillmereHelpText, nullptr, {}},
      {"HelpAboutQuillmere", "HelpMenu", App::kAboutQuillmereText, nullptr, {}},
      {"HelpQuillmereWebsite",
       "HelpMenu",
       App::kHelpQuillmereWebsite,
       nullptr,
       {}},
  }};
  return items;
}

QPointer<QMenuBar>& TheBar() {
  static QPointer<QMenuBar> bar;
  return bar;
}

bool IsEditItem(const QString& name) {
  return name == "EditUndo" || name == "EditCut" || name == "EditCopy" ||
         name == "EditPaste" || name == "EditClear" || name == "EditSelectAll";
}

// A menu bar or menu that takes the keyboard (Alt+E, the arrow keys from
// one open menu to the next) holds the focus only while it is in use.
bool IsMenu(const QWidget* widget) {
  return qobject_cast<const QMenuBar*>(widget) != nullptr ||
         qobject_cast<const QMenu*>(widget) != nullptr;
}

// The focus as it was before a menu took it.
QPointer<QWidget>& FocusBeforeMenus() {
  static QPointer<QWidget> focus;
  return focus;
}

// What the focused field can do now, and doing it. The three kinds of text
// field of the windows are served alike.
struct EditTarget {
  QLineEdit* line = nullptr;
  QPlainTextEdit* plain = nullptr;
  QTextEdit* rich = nullptr;

  EditTarget() {
    QWidget* focus = QApplication::focusWidget();
    if (IsMenu(focus)) focus = FocusBeforeMenus();
    line = qobject_cast<QLineEdit*>(focus);
    plain = qobject_cast<QPlainTextEdit*>(focus);
    rich = qobject_cast<QTextEdit*>(focus);
  }

  bool Exists() const { return line || plain || rich; }
  bool ReadOnly() const {
    return line    ? line->isReadOnly()
           : plain ? plain->isReadOnly()
                   : rich->isReadOnly();
  }
  bool HasSelection() const {
    return line    ? line->hasSelectedText()
           : plain ? plain->textCursor().hasSelection()
                   : rich->textCursor().hasSelection();
  }
  bool HasText() const {
    return line    ? !line->text().isEmpty()
           : plain ? !plain->document()->isEmpty()
                   : !rich->document()->isEmpty();
  }
  bool CanUndo() const {
    return line    ? line->isUndoAvailable()
           : plain ? plain->document()->isUndoAvailable()
                   : rich->document()->isUndoAvailable();
  }

  bool Enabled(const QString& name) const {
    if (!Exists()) return false;
    if (name == "EditUndo") return !ReadOnly() && CanUndo();
    if (name == "EditCut" || name == "EditClear")
      return !ReadOnly() && HasSelection();
    if (name == "EditCopy") return HasSelection();
    if (name == "EditPaste") {
      return !ReadOnly() && !QApplication::clipboard()->text().isEmpty();
    }
    return HasText();  // EditSelectAll
  }

  void Do(const QString& name) const {
    if (!Enabled(name)) return;
    if (name == "EditClear") {
      if (line) {
        line->del();
      } else {
        QTextCursor cursor = plain ? plain->textCursor() : rich->textCursor();
        cursor.removeSelectedText();
        plain ? plain->setTextCursor(cursor) : rich->setTextCursor(cursor);
      }
      return;
    }
    const auto run = [&name](auto* field) {
      if (name == "EditUndo") {
        field->undo();
      } else if (name == "EditCut") {
        field->cut();
      } else if (name == "EditCopy") {
        field->copy();
      } else if (name == "EditPaste") {
        field->paste();
      } else {
        field->selectAll();
      }
    };
    if (line) {
      run(line);
    } else if (plain) {
      run(plain);
    } else {
      run(rich);
    }
  }
};

// The item's handler in the frontmost window, else in App, or an empty
// function.
std::function<bool()> Handler(const QString& name) {
  const std::array<QObject*, 2> targets{QApplication::activeWindow(),
                                        QCoreApplication::instance()};
  for (QObject* target : targets) {
    if (auto* handlers = dynamic_cast<MenuHandlers*>(target)) {
      if (std::function<bool()> handler = handlers->MenuHandler(name)) {
        return handler;
      }
    }
  }
  return {};
}

QMenuBar* Build() {
  auto* bar = new QMenuBar;
  bar->setObjectName("MenuBar1");
  bar->setNativeMenuBar(false);
  QMenu* menu = nullptr;
  for (const Item& item : Items()) {
    const QString name = QString::fromLatin1(item.name);
    const QString text = item.text ? QString::fromStdString(item.text())
                                   : QString::fromUtf8(item.literal);
    if (item.parent == nullptr) {
      menu = bar->addMenu(text);
      menu->setObjectName(name);
      menu->menuAction()->setObjectName(name);
      QObject::connect(menu, &QMenu::aboutToShow, [] { EnableMenuItems(); });
      if (name == "WindowMenu") {
        QObject::connect(menu, &QMenu::aboutToShow, menu,
                         [menu] { WindowMenuManager::EnableMenu(menu); });
      }
      continue;
    }
    QAction* action =
        text == "-" ? menu->addSeparator() : menu->addAction(text);
    action->setObjectName(name);
    action->setParent(menu);
    if (!item.shortcut.isEmpty()) action->setShortcut(item.shortcut);
    // The other windows have no menu bar of their own: Quit and Preferences
    // answer their keys in every window of the application.
    if (name == "FileQuit" || name == "EditPreferences") {
      action->setShortcutContext(Qt::ApplicationShortcut);
    }
    if (name == "FileQuit") {
      QObject::connect(action, &QAction::triggered, [] {
        QApplication::closeAllWindows();
        QCoreApplication::quit();
      });
    } else if (IsEditItem(name)) {
      QObject::connect(action, &QAction::triggered,
                       [name] { EditTarget().Do(name); });
    } else if (text != "-") {
      QObject::connect(action, &QAction::triggered,
                       [name] { DispatchMenuItem(name); });
    }
  }
  // Enabling follows the frontmost window also between menu openings, for
  // the shortcuts.
  // A menu taking the focus changes nothing: the field keeps its items.
  QObject::connect(qApp, &QApplication::focusChanged, bar,
                   [](QWidget*, QWidget* now) {
                     if (IsMenu(now)) return;
                     FocusBeforeMenus() = now;
                     EnableMenuItems();
                   });
  return bar;
}

}  // namespace

QMenuBar* MenuBar1() {
  QPointer<QMenuBar>& bar = TheBar();
  if (bar.isNull()) bar = Build();
  return bar;
}

QAction* MenuItem(const QString& name) {
  return MenuBar1()->findChild<QAction*>(name);
}

QMenu* Menu(const QString& name) { return MenuBar1()->findChild<QMenu*>(name); }

bool DispatchMenuItem(const QString& name) {
  const std::function<bool()> handler = Handler(name);
  if (!handler) return false;
  handler();
  return true;
}

void EnableMenuItems() {
  for (const Item& item : Items()) {
    const QString name = QString::fromLatin1(item.name);
    QAction* action = MenuItem(name);
    if (action == nullptr || item.parent == nullptr || action->isSeparator())
      continue;
    if (name == "FileQuit") {
      action->setEnabled(true);
    } else if (IsEditItem(name)) {
      action->setEnabled(EditTarget().Enabled(name));
    } else {
      action->setEnabled(static_cast<bool>(Handler(name)));
    }
  }
  if (auto* window =
          dynamic_cast<MenuHandlers*>(QApplication::activeWindow())) {
    window->Event_EnableMenuItems();
  }
}

}  // namespace quill
