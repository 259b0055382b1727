// The menu bar's items, where their commands go, and the Window menu's
// list of windows.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>

#include "WindowTestSupport.hpp"
#include "windows/AboutWindow.hpp"
#include "windows/Dialogs.hpp"
#include "windows/HelpWindow.hpp"
#include "windows/MenuBar1.hpp"
#include "windows/PreferencesWindow.hpp"
#include "windows/WindowMenuManager.hpp"

using namespace quill;
using namespace quill::testing;

// A second window with one handler of its own, as the help window has.
class OtherWindow : public QWidget {
  Q_OBJECT

 public:
  OtherWindow() {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle("Quillmere Help");
  }
  Q_INVOKABLE bool _WindowBringAllToFront_Action() {
    ++handled;
    return true;
  }
  int handled = 0;
};

namespace {

QStringList Names(QMenu* menu) {
  QStringList names;
  for (QAction* action : menu->actions()) names << action->objectName();
  return names;
}

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
    CloseMainWindow();
    prefs_.reset();
  }

  void itemsStandInTheirOrder() {
    QCOMPARE(Names(Menu("FileMenu")),
             (QStringList{"FileCloseWindow", "UntitledItem1", "FileQuit"}));
    QCOMPARE(Names(Menu("EditMenu")),
             (QStringList{"EditUndo", "UntitledMenu1", "EditCut", "EditCopy",
                          "EditPaste", "EditClear", "UntitledMenu0",
                          "EditSelectAll", "EditPreferences"}));
    QCOMPARE(Names(Menu("WindowMenu")).mid(0, 5),
             (QStringList{"WindowMinimize", "WindowZoom", "UntitledSeparator",
                          "WindowBringAllToFront", "UntitledSeparator0"}));
    QCOMPARE(Names(Menu("HelpMenu")),
             (QStringList{"HelpQuillmereHelp", "HelpAboutQuillmere",
                          "HelpQuillmereWebsite"}));
    QStringList titles;
    for (QAction* action : MenuBar1()->actions()) titles << action->text();
    QCOMPARE(titles, (QStringList{"&File", "&Edit", "&Window", "Help"}));
  }

  void itemsHaveTheirTextsAndShortcuts_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QKeySequence>("shortcut");
    QTest::newRow("close") << "FileCloseWindow"
                           << "Close &Window" << QKeySequence("Ctrl+W");
    QTest::newRow("quit") << "FileQuit"
                          << "&Quit" << QKeySequence("Ctrl+Q");
    QTest::newRow("undo") << "EditUndo"
                          << "&Undo" << QKeySequence("Ctrl+Z");
    QTest::newRow("cut") << "EditCut"
                         << "Cu&t" << QKeySequence("Ctrl+X");
    QTest::newRow("clear") << "EditClear"
                           << "&Delete" << QKeySequence();
    QTest::newRow("all") << "EditSelectAll"
                         << "Select &All" << QKeySequence("Ctrl+A");
    QTest::newRow("prefs") << "EditPreferences"
                           << "Preferences..." << QKeySequence("Ctrl+,");
    QTest::newRow("minimize") << "WindowMinimize"
                              << "&Minimize" << QKeySequence("Ctrl+M");
    QTest::newRow("zoom") << "WindowZoom"
                          << "Zoom" << QKeySequence();
    QTest::newRow("about") << "HelpAboutQuillmere"
                           << "About Quillmere" << QKeySequence();
    QTest::newRow("site") << "HelpQuillmereWebsite"
                          << "Quillmere Website" << QKeySequence();
  }
  void itemsHaveTheirTextsAndShortcuts() {
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QKeySequence, shortcut);
    QAction* item = MenuItem(name);
    QVERIFY(item != nullptr);
    QCOMPARE(item->text(), text);
    QCOMPARE(item->shortcut(), shortcut);
  }

  void mainWindowEnablesItsItems() {
    Activate(window_);
    EnableMenuItems();
    QVERIFY(MenuItem("FileCloseWindow")->isEnabled());
    QVERIFY(MenuItem("WindowMinimize")->isEnabled());
    QVERIFY(!MenuItem("WindowZoom")->isEnabled());
    QVERIFY(MenuItem("WindowBringAllToFront")->isEnabled());
    QVERIFY(MenuItem("HelpAboutQuillmere")->isEnabled());  // App handles it
  }

  void commandsGoToTheFrontWindowElseNowhere() {
    auto* other = new OtherWindow;
    Activate(other);
    QVERIFY(DispatchMenuItem("WindowBringAllToFront"));
    QCOMPARE(other->handled, 1);
    QVERIFY(!DispatchMenuItem("WindowMinimize"));  // neither it nor App
    EnableMenuItems();
    QVERIFY(!MenuItem("WindowMinimize")->isEnabled());
    QVERIFY(MenuItem("EditPreferences")->isEnabled());
    other->close();
  }

  void windowMenuFollowsTheWindows() {
    QMenu* menu = Menu("WindowMenu");
    emit menu->aboutToShow();  // items of the windows of earlier tests go
    QCOMPARE(menu->actions().size(), 6);
    QAction* mainItem = menu->actions().last();
    QCOMPARE(mainItem->text(), QString("Quillmere"));
    QVERIFY(mainItem->isChecked());

    QPointer<OtherWindow> other = new OtherWindow;
    WindowMenuManager::Add(other);
    QCOMPARE(menu->actions().size(), 7);
    QAction* otherItem = menu->actions().last();
    QVERIFY(otherItem->isChecked());
    QVERIFY(!mainItem->isChecked());

    window_->Event_Activate();
    QVERIFY(mainItem->isChecked());
    QVERIFY(!otherItem->isChecked());

    other->setWindowTitle("Renamed");
    emit menu->aboutToShow();
    QCOMPARE(otherItem->text(), QString("Renamed"));

    other->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(other.isNull());
    QCOMPARE(menu->actions().size(), 7);  // until the menu opens again
    emit menu->aboutToShow();
    QCOMPARE(menu->actions().size(), 6);
    QCOMPARE(menu->actions().last()->text(), QString("Quillmere"));
  }

  void editItemsServeTheFocusedField() {
    Activate(window_);
    QPlainTextEdit* field = window_->TextField;
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

    window_->ResultField->setPlainText("result");
    window_->ResultField->setFocus();
    Choose("EditSelectAll");
    EnableMenuItems();
    QVERIFY(!MenuItem("EditCut")->isEnabled());  // read-only
    QVERIFY(MenuItem("EditCopy")->isEnabled());
    Choose("EditCut");
    QCOMPARE(window_->ResultField->toPlainText(), QString("result"));
  }

  // Alt+E, and the arrow keys from one open menu to the next, open the Edit
  // menu with its items as the focused field allows them.
  void editMenuFromTheKeyboardServesTheField() {
    Activate(window_);
    QPlainTextEdit* field = window_->TextField;
    field->setPlainText("中文");
    field->setFocus();
    field->selectAll();
    QMenu* edit = Menu("EditMenu");
    QTest::keyClick(field, Qt::Key_E, Qt::AltModifier);
    QTRY_VERIFY(edit->isVisible());
    QVERIFY(MenuItem("EditCopy")->isEnabled());
    QVERIFY(MenuItem("EditCut")->isEnabled());
    QVERIFY(MenuItem("EditSelectAll")->isEnabled());

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

  void bringAllToFrontWithOneWindow() {
    Activate(window_);
    window_->_WindowBringAllToFront_Action();
    QVERIFY(window_->isVisible());
    QCOMPARE(QApplication::activeWindow(), window_);
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  MainWindow* window_ = nullptr;
};

QUILLMERE_TEST_MAIN(MenuTest)
#include "MenuTest.moc"
