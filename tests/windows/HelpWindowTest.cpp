// The help window: one at a time, the help text line by line, readable and
// copyable but not editable, and Close Window that closes it alone.
#include <QClipboard>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextBlock>

#include "WindowTestSupport.hpp"
#include "app/TextConstants.hpp"
#include "windows/AboutWindow.hpp"
#include "windows/Dialogs.hpp"
#include "windows/HelpWindow.hpp"

using quill::AboutWindow;
using quill::HelpWindow;

class HelpWindowTest : public QObject {
  Q_OBJECT

 private:
  static HelpWindow* Open() {
    quill::ShowHelpWindow();
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

  void closeWindowClosesOnlyHelp() {
    quill::ShowAboutWindow();
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
