// The help window: one at a time, the help text line by line, readable and
// copyable but not editable, and Close Window that closes it alone.
#include <QAction>
#include <QClipboard>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextBlock>
#include <functional>

#include "WindowTestSupport.hpp"
#include "windows/AboutWindow.hpp"
#include "windows/Dialogs.hpp"
#include "windows/HelpWindow.hpp"
#include "windows/MenuBar1.hpp"
#include "windows/TextConstants.hpp"
#include "windows/WindowMenuManager.hpp"

using namespace quill;

class HelpWindowTest : public QObject {
  Q_OBJECT

 private:
  static HelpWindow* Open() {
    ShowHelpWindow();
    HelpWindow* window = HelpWindow::Existing();
    if (window != nullptr) (void)QTest::qWaitForWindowExposed(window);
    return window;
  }

  static QPlainTextEdit* Field(HelpWindow* window) {
    return window->findChild<QPlainTextEdit*>(QStringLiteral("EditField1"));
  }

 private slots:
  void cleanup() {
    if (HelpWindow* window = HelpWindow::Existing()) window->close();
    if (AboutWindow* window = AboutWindow::Existing()) window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void showsTheHelpTextLineByLine() {
    HelpWindow* window = Open();
    QVERIFY(window != nullptr);
    QCOMPARE(window->windowTitle(), QStringLiteral("Quillmere Help"));
    QPlainTextEdit* field = Field(window);
    QCOMPARE(field->geometry(), QRect(-1, -1, 420, 339));
    // Ten lines joined by carriage returns: each is a line of its own.
    QCOMPARE(field->document()->blockCount(), 10);
    QCOMPARE(field->document()->findBlockByNumber(1).text(),
             QStringLiteral("1. Hanyu Pinyin"));
    QCOMPARE(field->document()->findBlockByNumber(6).text(), QString());
    QVERIFY(!field->toPlainText().contains(QLatin1Char('\r')));
    const QString help = QString::fromStdString(quill::App::kHelpContent());
    QCOMPARE(field->toPlainText(), QString(help).replace('\r', '\n'));
  }

  void textCanBeCopiedButNotChanged() {
    HelpWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QPlainTextEdit* field = Field(window);
    const QString before = field->toPlainText();
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("xyz"));
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(field->toPlainText(), before);

    QApplication::clipboard()->clear();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), before);
  }

  void oneInstanceAtATime() {
    HelpWindow* first = Open();
    QCOMPARE(Open(), first);
    int windows = 0;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (qobject_cast<HelpWindow*>(widget) != nullptr && widget->isVisible()) {
        ++windows;
      }
    }
    QCOMPARE(windows, 1);

    QPointer<HelpWindow> closed = first;
    first->close();
    QVERIFY(HelpWindow::Existing() == nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(closed.isNull());
    QVERIFY(Open() != nullptr);
  }

  // Each opening adds an item with the window's title and the check mark.
  void listedInTheWindowMenu() {
    const int before = WindowMenuManager::Count();
    HelpWindow* window = Open();
    QCOMPARE(WindowMenuManager::Count(), before + 1);
    QList<QAction*> checked;
    QAction* item = nullptr;
    for (QAction* action : Menu(QStringLiteral("WindowMenu"))->actions()) {
      if (action->isChecked()) checked << action;
      if (auto* windowItem = qobject_cast<WindowMenuItem*>(action)) {
        if (windowItem->ownerWindow == window) item = action;
      }
    }
    QVERIFY(item != nullptr);
    QCOMPARE(item->text(), QStringLiteral("Quillmere Help"));
    QCOMPARE(checked, QList<QAction*>{item});
  }

  // The Help menu, the window's own item in the Window menu and Bring All
  // to Front each bring a minimised help window back.
  void minimisedWindowComesBack() {
    HelpWindow* window = Open();
    WindowMenuItem* item = nullptr;
    for (QAction* action : Menu(QStringLiteral("WindowMenu"))->actions()) {
      auto* windowItem = qobject_cast<WindowMenuItem*>(action);
      if (windowItem != nullptr && windowItem->ownerWindow == window) {
        item = windowItem;
      }
    }
    QVERIFY(item != nullptr);
    const std::function<void()> ways[] = {
        [] { DispatchMenuItem(QStringLiteral("HelpQuillmereHelp")); },
        [item] { item->trigger(); },
        [] { WindowMenuManager::BringAllToFront(); }};
    for (const auto& bringBack : ways) {
      window->showMinimized();
      QVERIFY(window->isMinimized());
      bringBack();
      QVERIFY(!window->isMinimized());
      QVERIFY(window->isVisible());
      QCOMPARE(HelpWindow::Existing(), window);
    }
  }

  void menuItemsWhileInFront() {
    HelpWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    EnableMenuItems();
    QVERIFY(MenuItem(QStringLiteral("FileCloseWindow"))->isEnabled());
    QVERIFY(MenuItem(QStringLiteral("WindowBringAllToFront"))->isEnabled());
    QVERIFY(!MenuItem(QStringLiteral("WindowMinimize"))->isEnabled());
    QVERIFY(!MenuItem(QStringLiteral("WindowZoom"))->isEnabled());
    // Close Window from the menu goes to this window's own handler.
    QVERIFY(DispatchMenuItem(QStringLiteral("FileCloseWindow")));
    QVERIFY(HelpWindow::Existing() == nullptr);
  }

  void escapeClosesHelp() {
    HelpWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(Field(window), Qt::Key_Escape);
    QVERIFY(HelpWindow::Existing() == nullptr);
    QVERIFY(!window->isVisible());
  }

  void closeWindowClosesOnlyHelp() {
    ShowAboutWindow();
    HelpWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(Field(window), Qt::Key_W, Qt::ControlModifier);
    QVERIFY(HelpWindow::Existing() == nullptr);
    QVERIFY(!window->isVisible());
    QVERIFY(AboutWindow::Existing() != nullptr);
    QVERIFY(AboutWindow::Existing()->isVisible());
  }
};

QUILLMERE_TEST_MAIN(HelpWindowTest)
#include "HelpWindowTest.moc"
