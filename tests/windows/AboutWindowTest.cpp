// The about box: one at a time, a label that behaves as a link, and Close
// Window that closes the box alone.
#include <QAction>
#include <QDesktopServices>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QUrl>

#include "WindowTestSupport.hpp"
#include "windows/AboutWindow.hpp"
#include "windows/Dialogs.hpp"
#include "windows/HelpWindow.hpp"
#include "windows/MenuBar1.hpp"
#include "windows/WindowMenuManager.hpp"

using quill::AboutWindow;
using quill::HelpWindow;
namespace WindowMenuManager = quill::WindowMenuManager;

// Stands in for the browser: keeps the addresses it was asked to open.
class UrlCatcher : public QObject {
  Q_OBJECT

 public:
  QList<QUrl> opened;

 public slots:
  void Open(const QUrl& url) { opened << url; }
};

class AboutWindowTest : public QObject {
  Q_OBJECT

 private:
  static AboutWindow* Open() {
    quill::ShowAboutWindow();
    AboutWindow* window = AboutWindow::Existing();
    if (window != nullptr) (void)QTest::qWaitForWindowExposed(window);
    return window;
  }

  static QLabel* Link(AboutWindow* window) {
    return window->findChild<QLabel*>(QStringLiteral("StaticText4"));
  }

 private slots:
  void cleanup() {
    if (AboutWindow* window = AboutWindow::Existing()) window->close();
    if (HelpWindow* window = HelpWindow::Existing()) window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void showsNameVersionAndIcon() {
    AboutWindow* window = Open();
    QVERIFY(window != nullptr);
    // No text in the title bar. Where a window's title is empty, Qt shows
    // the application's name instead.
    const QString title = window->windowTitle().isEmpty()
                              ? QCoreApplication::applicationName()
                              : window->windowTitle();
    QVERIFY2(title.trimmed().isEmpty(), qPrintable(title));
    QCOMPARE(window->size(), QSize(290, 246));
    auto* name = window->findChild<QLabel*>(QStringLiteral("StaticText1"));
    QCOMPARE(name->text(), QStringLiteral("Quillmere"));
    QVERIFY(name->font().bold());
    QCOMPARE(window->findChild<QLabel*>(QStringLiteral("StaticText3"))->text(),
             QStringLiteral("2.1.1"));
    QCOMPARE(Link(window)->text(), quill::QuillmereApp::WebsiteAddress());
    const QPixmap icon =
        window->findChild<QLabel*>(QStringLiteral("Canvas1"))->pixmap();
    QCOMPARE(icon.deviceIndependentSize(), QSizeF(100, 100));
  }

  void oneInstanceAtATime() {
    AboutWindow* first = Open();
    AboutWindow* second = Open();
    QCOMPARE(second, first);
    int windows = 0;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (qobject_cast<AboutWindow*>(widget) != nullptr &&
          widget->isVisible()) {
        ++windows;
      }
    }
    QCOMPARE(windows, 1);

    QPointer<AboutWindow> closed = first;
    first->close();
    QVERIFY(AboutWindow::Existing() == nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(closed.isNull());
    QVERIFY(Open() != nullptr);
  }

  void linkUnderlinesUnderTheMouse() {
    AboutWindow* window = Open();
    QLabel* link = Link(window);
    QVERIFY(!link->font().underline());

    QTest::mouseMove(link, link->rect().center());
    QTRY_VERIFY(link->font().underline());
    QCOMPARE(link->cursor().shape(), Qt::PointingHandCursor);

    auto* name = window->findChild<QLabel*>(QStringLiteral("StaticText1"));
    QTest::mouseMove(name, name->rect().center());
    QTRY_VERIFY(!link->font().underline());
    // The hand stays set on the link; it only shows over it.
    QCOMPARE(link->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(name->cursor().shape() != Qt::PointingHandCursor);
  }

  void linkOpensTheProductPage() {
    UrlCatcher browser;
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &browser, "Open");
    AboutWindow* window = Open();
    QTest::mousePress(Link(window), Qt::LeftButton);
    QCOMPARE(browser.opened,
             QList<QUrl>{QUrl(quill::QuillmereApp::WebsiteAddress())});
    QTest::mouseRelease(Link(window), Qt::LeftButton);
    QCOMPARE(browser.opened.size(), 1);
    // A click anywhere else opens nothing.
    QTest::mouseClick(window->findChild<QLabel*>(QStringLiteral("StaticText3")),
                      Qt::LeftButton);
    QCOMPARE(browser.opened.size(), 1);
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
  }

  void notInTheWindowMenu() {
    const int before = WindowMenuManager::Count();
    const int items =
        quill::Menu(QStringLiteral("WindowMenu"))->actions().size();
    AboutWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QCOMPARE(WindowMenuManager::Count(), before);
    QCOMPARE(quill::Menu(QStringLiteral("WindowMenu"))->actions().size(),
             items);
    // Close Window from the menu closes the box by its own handler.
    quill::EnableMenuItems();
    QVERIFY(quill::MenuItem(QStringLiteral("FileCloseWindow"))->isEnabled());
    QVERIFY(quill::DispatchMenuItem(QStringLiteral("FileCloseWindow")));
    QVERIFY(AboutWindow::Existing() == nullptr);
  }

  void escapeClosesTheBox() {
    AboutWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(window, Qt::Key_Escape);
    QVERIFY(AboutWindow::Existing() == nullptr);
    QVERIFY(!window->isVisible());
  }

  void closeWindowClosesOnlyTheBox() {
    quill::ShowHelpWindow();
    AboutWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
    QVERIFY(AboutWindow::Existing() == nullptr);
    QVERIFY(!window->isVisible());
    QVERIFY(HelpWindow::Existing() != nullptr);
    QVERIFY(HelpWindow::Existing()->isVisible());
  }
};

QUILLMERE_TEST_MAIN(AboutWindowTest)
#include "AboutWindowTest.moc"
