// The windows that exist once: About, Help, Preferences and Export; the
// about box's texts and link, and the help text.
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QPointer>
#include <QTextBlock>
#include <QUrl>

#include "WindowTestSupport.hpp"
#include "windows/AboutWindow.hpp"
#include "windows/Dialogs.hpp"
#include "windows/ExportWindow.hpp"
#include "windows/HelpWindow.hpp"
#include "windows/PreferencesWindow.hpp"

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

}  // namespace

class AboutHelpTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() {
    for (QWidget* window : QApplication::topLevelWidgets()) window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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
      if (widget->isVisible()) ++shown;
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
    const QString help = QString::fromStdString(App::kHelpContent());
    QCOMPARE(field->toPlainText(), QString(help).replace('\r', '\n'));
    field->setFocus();
    QTest::keyClicks(field, "xyz");
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(field->toPlainText(), QString(help).replace('\r', '\n'));
    QApplication::clipboard()->clear();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), field->toPlainText());
  }
};

QUILLMERE_TEST_MAIN(AboutHelpTest)
#include "AboutHelpTest.moc"
