// The menu bar: its items, which of them the front window enables and where
// their commands go, the Edit items on the focused field, the keys of Quit
// and Preferences in every window, and the Window menu's list of windows.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>

#include "WindowTestSupport.hpp"
#include "windows/AboutWindow.hpp"
#include "windows/Dialogs.hpp"
#include "windows/HelpWindow.hpp"
#include "windows/MenuBar1.hpp"
#include "windows/MenuHandlers.hpp"
#include "windows/PreferencesWindow.hpp"
#include "windows/WindowMenuManager.hpp"

using namespace quill;
using namespace quill::testing;

// A second window with one handler of its own.
class OtherWindow : public QWidget, public MenuHandlers {
 public:
  OtherWindow() { setAttribute(Qt::WA_DeleteOnClose); }
  std::function<bool()> MenuHandler(const QString& item) override {
    return FindMenuHandler(this, item,
                           {{"WindowBringAllToFront", &OtherWindow::BringAll}});
  }
  bool BringAll() { return ++handled > 0; }
  int handled = 0;
};

namespace {

void Activate(QWidget* window) {
  window->show();
  window->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(window));
}

// An item chosen from its menu, which sets the enabling as it opens.
void Choose(const QString& name) {
  EnableMenuItems();
  MenuItem(name)->trigger();
}

}  // namespace

class MenuTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    prefs_ = std::make_unique<PreferencesFolder>();
    window_ = StartMainWindow();
  }
  void cleanup() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window != window_) window->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    CloseMainWindow();
    prefs_.reset();
  }

  // Each menu's items in order, as "name text shortcut".
  void itemsStandInTheirOrder() {
    QStringList items;
    for (QAction* menu : MenuBar1()->actions()) {
      items << menu->text();
      for (QAction* item : menu->menu()->actions().mid(0, 9)) {
        if (item->isSeparator()) continue;
        items << item->objectName() + " " + item->text() + " " +
                     item->shortcut().toString();
      }
    }
    QCOMPARE(items, (QStringList{"&File",
                                 "FileCloseWindow Close &Window Ctrl+W",
                                 "FileQuit &Quit Ctrl+Q",
                                 "&Edit",
                                 "EditUndo &Undo Ctrl+Z",
                                 "EditCut Cu&t Ctrl+X",
                                 "EditCopy &Copy Ctrl+C",
                                 "EditPaste &Paste Ctrl+V",
                                 "EditClear &Delete ",
                                 "EditSelectAll Select &All Ctrl+A",
                                 "EditPreferences Preferences... Ctrl+,",
                                 "&Window",
                                 "WindowMinimize &Minimize Ctrl+M",
                                 "WindowZoom Zoom ",
                                 "WindowBringAllToFront Bring All to Front ",
                                 " Quillmere ",  // the main window's item
                                 "Help",
                                 "HelpQuillmereHelp Quillmere Help ",
                                 "HelpAboutQuillmere About Quillmere ",
                                 "HelpQuillmereWebsite Quillmere Website "}));
  }

  // An item is on when the front window or the application handles it;
  // then the window has its say.
  void frontWindowDecidesTheItems_data() {
    AddRows("frontWindowDecidesTheItems");
  }
  void frontWindowDecidesTheItems() {
    QFETCH(QString, front);
    QFETCH(QString, enabled);
    QWidget* window = window_;
    if (front == "help") ShowHelpWindow(), window = HelpWindow::Existing();
    if (front == "about") ShowAboutWindow(), window = AboutWindow::Existing();
    auto* other = front == "other" ? new OtherWindow : nullptr;
    if (other != nullptr) window = other;
    Activate(window);
    EnableMenuItems();
    QString on;
    for (const char* name :
         {"FileCloseWindow", "WindowMinimize", "WindowZoom",
          "WindowBringAllToFront", "EditPreferences", "HelpAboutQuillmere"}) {
      on += MenuItem(name)->isEnabled() ? '1' : '0';
    }
    QCOMPARE(on, enabled);
    if (other != nullptr) {
      QVERIFY(DispatchMenuItem("WindowBringAllToFront"));
      QCOMPARE(other->handled, 1);
      QVERIFY(!DispatchMenuItem("WindowMinimize"));
    } else if (window != window_) {
      // Close Window closes that window alone.
      QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
      QVERIFY(!window->isVisible());
      QVERIFY(window_->isVisible());
    }
  }

  void editItemsServeTheFocusedField() {
    Activate(window_);
    QPlainTextEdit* field = TextField(window_);
    field->setPlainText("中文 abc");
    field->setFocus();
    QApplication::clipboard()->clear();
    EnableMenuItems();
    QVERIFY(!MenuItem("EditCopy")->isEnabled());  // nothing selected
    Choose("EditSelectAll");
    Choose("EditCopy");
    QCOMPARE(QApplication::clipboard()->text(), QString("中文 abc"));
    Choose("EditClear");
    QCOMPARE(field->toPlainText(), QString());
    Choose("EditUndo");
    QCOMPARE(field->toPlainText(), QString("中文 abc"));
    Choose("EditPaste");
    QCOMPARE(field->toPlainText(), QString("中文 abc中文 abc"));

    ResultField(window_)->setPlainText("result");
    ResultField(window_)->setFocus();
    Choose("EditSelectAll");
    EnableMenuItems();
    QVERIFY(!MenuItem("EditCut")->isEnabled());  // read-only
    QVERIFY(MenuItem("EditCopy")->isEnabled());
    Choose("EditCut");
    QCOMPARE(Result(window_), QString("result"));
  }

  // Alt+E, and the arrow keys from one open menu to the next, open the Edit
  // menu with its items as the focused field allows them.
  void editMenuFromTheKeyboardServesTheField() {
    Activate(window_);
    QPlainTextEdit* field = TextField(window_);
    field->setPlainText("中文");
    field->setFocus();
    field->selectAll();
    QMenu* edit = Menu("EditMenu");
    QTest::keyClick(field, Qt::Key_E, Qt::AltModifier);
    QTRY_VERIFY(edit->isVisible());
    QVERIFY(MenuItem("EditCopy")->isEnabled());
    QVERIFY(MenuItem("EditCut")->isEnabled());
    QTest::keyClick(edit, Qt::Key_Right);
    QTRY_VERIFY(Menu("WindowMenu")->isVisible());
    QTest::keyClick(Menu("WindowMenu"), Qt::Key_Left);
    QTRY_VERIFY(edit->isVisible());
    QVERIFY(MenuItem("EditCopy")->isEnabled());
    QVERIFY(MenuItem("EditCut")->isEnabled());
    QTest::keyClick(edit, Qt::Key_Escape);
    QTest::keyClick(MenuBar1(), Qt::Key_Escape);
    QTRY_VERIFY(!edit->isVisible());
  }

  // Help and About have no menu bar, and still take the keys of Quit and
  // Preferences.
  void quitAndPreferencesFromEveryWindow() {
    ShowHelpWindow();
    QVERIFY(QTest::qWaitForWindowActive(HelpWindow::Existing()));
    QTest::keyClick(HelpWindow::Existing(), Qt::Key_Comma, Qt::ControlModifier);
    QVERIFY(PreferencesWindow::Existing() != nullptr);
    PreferencesWindow::Existing()->close();
    ShowAboutWindow();
    QVERIFY(QTest::qWaitForWindowActive(AboutWindow::Existing()));
    QTest::keyClick(AboutWindow::Existing(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!window_->isVisible());
    QVERIFY(HelpWindow::Existing() == nullptr);
    QVERIFY(AboutWindow::Existing() == nullptr);
  }

  // An item per listed window, with the check at the active one; a closed
  // window's item goes when the menu opens again. The about box is not
  // listed.
  void windowMenuFollowsTheWindows() {
    QMenu* menu = Menu("WindowMenu");
    const auto titles = [menu] {
      emit menu->aboutToShow();
      QStringList titles;
      for (QAction* item : menu->actions().mid(5)) {
        titles << (item->isChecked() ? "*" : "") + item->text();
      }
      return titles;
    };
    QCOMPARE(titles(), QStringList{"*Quillmere"});
    ShowAboutWindow();
    QCOMPARE(titles(), QStringList{"*Quillmere"});
    ShowHelpWindow();
    QCOMPARE(titles(), (QStringList{"Quillmere", "*Quillmere Help"}));
    window_->Event_Activate();
    QCOMPARE(titles(), (QStringList{"*Quillmere", "Quillmere Help"}));
    HelpWindow::Existing()->setWindowTitle("Renamed");
    QCOMPARE(titles(), (QStringList{"*Quillmere", "Renamed"}));
    HelpWindow::Existing()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(titles(), QStringList{"*Quillmere"});
  }

  // The Help menu, the window's own item in the Window menu and Bring All
  // to Front each bring a minimised help window back.
  void minimisedHelpComesBack() {
    ShowHelpWindow();
    HelpWindow* help = HelpWindow::Existing();
    QAction* item = Menu("WindowMenu")->actions().last();
    const std::function<void()> ways[] = {
        [] { DispatchMenuItem("HelpQuillmereHelp"); },
        [item] { item->trigger(); },
        [] { WindowMenuManager::BringAllToFront(); }};
    for (const auto& bringBack : ways) {
      help->showMinimized();
      QVERIFY(help->isMinimized());
      bringBack();
      QVERIFY(!help->isMinimized());
      QVERIFY(help->isVisible());
      QCOMPARE(HelpWindow::Existing(), help);
    }
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  MainWindow* window_ = nullptr;
};

QUILLMERE_TEST_MAIN(MenuTest)
#include "MenuTest.moc"
