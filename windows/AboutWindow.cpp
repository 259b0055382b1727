#include "windows/AboutWindow.hpp"

#include <QAction>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QLabel>
#include <QPixmap>
#include <QScreen>
#include <QShortcut>
#include <QUrl>

#include "windows/App.hpp"
#include "windows/MenuBar1.hpp"
#include "windows/OneInstance.hpp"
#include "windows/Pictures.hpp"

namespace quill {

namespace {

OneInstance<AboutWindow> instance;

// Pixel sizes: the layout was drawn at 72 dpi.
QFont SizedFont(const QWidget* widget, int pixels, bool bold = false) {
  QFont font = widget->font();
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

QLabel* CentredLabel(QWidget* parent, const char* name, const QString& text,
                     const QRect& geometry, const QFont& font) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setGeometry(geometry);
  label->setFont(font);
  label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  return label;
}

}  // namespace

AboutWindow* AboutWindow::Instance() {
  return instance.Get([] { return new AboutWindow(); });
}

AboutWindow* AboutWindow::Existing() { return instance.Existing(); }

AboutWindow::AboutWindow()
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint |
                           Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
  setAttribute(Qt::WA_DeleteOnClose);
  // No title text. An empty title would not do: the window system is then
  // given the application's name in its place.
  setWindowTitle(QStringLiteral(" "));
  setFixedSize(290, 246);
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    move(screen->availableGeometry().center() - rect().center());
  }

  StaticText1 =
      CentredLabel(this, "StaticText1", QString::fromStdString(App::kAppName()),
                   QRect(55, 129, 175, 20), SizedFont(this, 13, true));
  StaticText2 = CentredLabel(
      this, "StaticText2",
      QStringLiteral("Copyright \u00A9 2026 The Quillmere developers.\n"
                     "Free software; see the licence."),
      QRect(17, 197, 250, 29), SizedFont(this, 11));
  StaticText2->setWordWrap(true);
  // The version is the program's own, not a translatable text.
  StaticText3 = CentredLabel(this, "StaticText3", QStringLiteral("2.1.1"),
                             QRect(82, 147, 120, 20), SizedFont(this, 12));
  StaticText4 =
      CentredLabel(this, "StaticText4", QuillmereApp::WebsiteAddress(),
                   QRect(7, 170, 276, 20), SizedFont(this, 11));
  StaticText4->setWordWrap(true);
  QPalette linkPalette = StaticText4->palette();
  linkPalette.setColor(QPalette::WindowText, QColor(0, 37, 182));
  StaticText4->setPalette(linkPalette);
  StaticText4->installEventFilter(this);

  Canvas1 = new QLabel(this);
  Canvas1->setObjectName("Canvas1");
  Canvas1->setGeometry(92, 17, 100, 100);
  Canvas1_Open();

  // Close Window closes this window only, not the program.
  auto* closeShortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this);
  connect(closeShortcut, &QShortcut::activated, this,
          &AboutWindow::_FileCloseWindow_Action);
  // Esc closes it as well, as it closes a dialog.
  auto* escapeShortcut = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(escapeShortcut, &QShortcut::activated, this,
          &AboutWindow::_FileCloseWindow_Action);
}

AboutWindow::~AboutWindow() { instance.Forget(this); }

void AboutWindow::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  // Gone for the accessor at once; Qt frees it on the next turn of the loop.
  if (event->isAccepted()) instance.Forget(this);
}

// The link is a plain label that acts as one.
bool AboutWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == StaticText4) {
    switch (event->type()) {
      case QEvent::Enter:
        StaticText4_MouseEnter();
        break;
      case QEvent::Leave:
        StaticText4_MouseExit();
        break;
      case QEvent::MouseButtonPress:
        StaticText4_MouseDown();
        break;
      default:
        break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void AboutWindow::StaticText4_MouseEnter() {
  QFont font = StaticText4->font();
  font.setUnderline(true);
  StaticText4->setFont(font);
  StaticText4->setCursor(Qt::PointingHandCursor);
}

// The pointing hand stays set on the label; it shows only over it anyway.
void AboutWindow::StaticText4_MouseExit() {
  QFont font = StaticText4->font();
  font.setUnderline(false);
  StaticText4->setFont(font);
}

void AboutWindow::StaticText4_MouseDown() {
  QDesktopServices::openUrl(QUrl(QuillmereApp::WebsiteAddress()));
}

// The icon's transparency is its mask.
void AboutWindow::Canvas1_Open() { Canvas1->setPixmap(icon100()); }

void AboutWindow::Event_EnableMenuItems() {
  if (QAction* item = MenuItem(QStringLiteral("FileCloseWindow"))) {
    item->setEnabled(true);
  }
}

std::function<bool()> AboutWindow::MenuHandler(const QString& item) {
  return FindMenuHandler(
      this, item, {{"FileCloseWindow", &AboutWindow::_FileCloseWindow_Action}});
}

bool AboutWindow::_FileCloseWindow_Action() {
  close();
  return true;
}

}  // namespace quill
