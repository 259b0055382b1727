// The menu bar: its items, which of them the front window enables and where
// their commands go, the Edit items on the focused field, the keys of Quit
// and Preferences in every window, and the Window menu's list of windows.
// The windows that exist once, the about box's texts and link, and the
// help text.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QTextBlock>
#include <QUrl>

#include "WindowTestSupport.hpp"
#include "windows/AboutWindow.hpp"
#include "windows/Dialogs.hpp"
#include "windows/ExportWindow.hpp"
#include "windows/HelpWindow.hpp"
#include "windows/MenuBar1.hpp"
#include "windows/MenuHandlers.hpp"
#include "windows/PreferencesWindow.hpp"
#include "windows/WindowMenuManager.hpp"

using namespace quill;
using namespace quill::testing;

// Stands in for the browser: keeps the addresses it was asked to open.
class UrlCatcher : public QObject {
  Q_OBJECT

 public:
  QList<QUrl> opened;

 public slots:
  void Open(const QUrl& url) { opened << url; }
};

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

// Each window's instance and its Show, by the window's name.
QWidget* Existing(const QString& name) {
  if (name == "About") return AboutWindow::Existing();
  if (name == "Help") return HelpWindow::Existing();
  if (name == "Preferences") return PreferencesWindow::Existing();
  return ExportWindow::Existing();
}

QWidget* Show(const QString& name) {
  if (name == "About") ShowAboutWindow();
  if (name == "Help") ShowHelpWindow();
  if (name == "Preferences") ShowPreferencesWindow();
  if (name == "Export") ShowExportWindow();
  return Existing(name);
}

AboutWindow* OpenAbout() {
  ShowAboutWindow();
  (void)QTest::qWaitForWindowActive(AboutWindow::Existing());
  return AboutWindow::Existing();
}

QLabel* Label(QWidget* window, const char* name) {
  return Control<QLabel>(window, name);
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

class MenuTest : public WindowTest {
  Q_OBJECT

 private slots:
  // The menus in order, and each item in its place.
  void menuItems_data() { AddRows("menuItems"); }
  void menuItems() {
    QStringList titles;
    for (QAction* menu : MenuBar1()->actions()) titles << menu->text();
    QCOMPARE(titles, (QStringList{"&File", "&Edit", "&Window", "Help"}));
    QFETCH(QString, menu);
    QFETCH(QString, place);
    QAction* item = Menu(menu)->actions().value(place.toInt());
    QCOMPARE(item->objectName(), QString(QTest::currentDataTag()));
    QTEST(item->text(), "text");
    QTEST(item->shortcut().toString(), "shortcut");
  }

  // An item is on when the front window or the application handles it;
  // then the window has its say.
  void frontWindowDecidesTheItems_data() {
    AddRows("frontWindowDecidesTheItems");
  }
  void frontWindowDecidesTheItems() {
    QFETCH(QString, front);
    QFETCH(QString, enabled);
    QWidget* window = main_;
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
    } else if (window != main_) {
      // Close Window closes that window alone.
      QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
      QVERIFY(!window->isVisible());
      QVERIFY(main_->isVisible());
    }
  }

  void editItemsServeTheFocusedField() {
    Activate(main_);
    QPlainTextEdit* field = TextField(main_);
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

    ResultField(main_)->setPlainText("result");
    ResultField(main_)->setFocus();
    Choose("EditSelectAll");
    EnableMenuItems();
    QVERIFY(!MenuItem("EditCut")->isEnabled());  // read-only
    QVERIFY(MenuItem("EditCopy")->isEnabled());
    Choose("EditCut");
    QCOMPARE(Result(main_), QString("result"));
  }

  // Alt+E, and the arrow keys from one open menu to the next, open the Edit
  // menu with its items as the focused field allows them.
  void editMenuFromTheKeyboardServesTheField() {
    Activate(main_);
    QPlainTextEdit* field = TextField(main_);
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
    QVERIFY(!main_->isVisible());
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
    main_->Event_Activate();
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

  // Showing a window again brings the one there is; once closed, a new
  // one comes. Escape closes the window, or hides the export dialog.
  void windows_data() { AddRows("windows"); }
  void windows() {
    QFETCH(QString, name);
    QFETCH(QString, escapeCloses);
    QPointer<QWidget> first = Show(name);
    QVERIFY(QTest::qWaitForWindowActive(first));
    QCOMPARE(Show(name), first.data());
    int shown = 0;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      shown += widget->isVisible() && widget != main_;
    }
    QCOMPARE(shown, 1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(first.isNull() || !first->isVisible());
    QTEST(QString::number(Existing(name) == nullptr), "escapeCloses");
    if (escapeCloses == "0") first->close();
    QVERIFY(Existing(name) == nullptr);
    QVERIFY(Show(name)->isVisible());
  }

  // No text in the title bar: where a title is empty, Qt shows the
  // application's name instead, so it is a blank.
  void aboutShowsNameVersionAndIcon() {
    AboutWindow* window = OpenAbout();
    QVERIFY(!window->windowTitle().isEmpty());
    QVERIFY(window->windowTitle().trimmed().isEmpty());
    QCOMPARE(Label(window, "StaticText1")->text(), QString("Quillmere"));
    QVERIFY(Label(window, "StaticText1")->font().bold());
    QCOMPARE(Label(window, "StaticText3")->text(), QString("2.1.1"));
    QCOMPARE(Label(window, "StaticText4")->text(),
             QuillmereApp::WebsiteAddress());
    QCOMPARE(Label(window, "Canvas1")->pixmap().deviceIndependentSize(),
             QSizeF(100, 100));
  }

  // The link underlines under the mouse and opens the product's page at a
  // press; a click elsewhere opens nothing.
  void aboutLink() {
    UrlCatcher browser;
    QDesktopServices::setUrlHandler("https", &browser, "Open");
    AboutWindow* window = OpenAbout();
    QLabel* link = Label(window, "StaticText4");
    QVERIFY(!link->font().underline());
    QTest::mouseMove(link, link->rect().center());
    QTRY_VERIFY(link->font().underline());
    QCOMPARE(link->cursor().shape(), Qt::PointingHandCursor);
    QLabel* name = Label(window, "StaticText1");
    QTest::mouseMove(name, name->rect().center());
    QTRY_VERIFY(!link->font().underline());
    QTest::mousePress(link, Qt::LeftButton);
    QTest::mouseRelease(link, Qt::LeftButton);
    QTest::mouseClick(Label(window, "StaticText3"), Qt::LeftButton);
    QCOMPARE(browser.opened, QList<QUrl>{QUrl(QuillmereApp::WebsiteAddress())});
    QDesktopServices::unsetUrlHandler("https");
  }

  // The help text line by line, to select and copy but not to change.
  void helpTextCanBeCopiedButNotChanged() {
    ShowHelpWindow();
    HelpWindow* window = HelpWindow::Existing();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QCOMPARE(window->windowTitle(), QString("Quillmere Help"));
    auto* field = Control<QPlainTextEdit>(window, "EditField1");
    QCOMPARE(field->document()->blockCount(), 10);
    QCOMPARE(field->document()->findBlockByNumber(1).text(),
             QString("1. Hanyu Pinyin"));
    const QString help = field->toPlainText();
    field->setFocus();
    QTest::keyClicks(field, "xyz");
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(field->toPlainText(), help);
    QApplication::clipboard()->clear();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), help);
  }
};

QUILLMERE_TEST_MAIN(MenuTest)
#include "MenuTest.moc"
