#include "windows/HelpWindow.hpp"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <utility>

#include "windows/MenuBar1.hpp"
#include "windows/OneInstance.hpp"
#include "windows/TextConstants.hpp"
#include "windows/WindowMenuManager.hpp"

namespace quill {

namespace {

OneInstance<HelpWindow> instance;

}  // namespace

HelpWindow* HelpWindow::Instance() {
  return instance.Get([] { return new HelpWindow(); });
}

HelpWindow* HelpWindow::Existing() { return instance.Existing(); }

HelpWindow::HelpWindow()
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint |
                           Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                           Qt::WindowMinimizeButtonHint),
      layout_(QSize(418, 339)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(QString::fromStdString(App::kQuillmereHelpText()));
  setFixedSize(418, 339);
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    move(screen->availableGeometry().center() - rect().center());
  }

  // The field overhangs the window by a pixel on three sides so that its
  // border shows only at the bottom.
  EditField1 = new QPlainTextEdit(this);
  EditField1->setObjectName("EditField1");
  layout_.Add(EditField1, QRect(-1, -1, 420, 339),
              LockedLayout::kLeft | LockedLayout::kTop | LockedLayout::kRight |
                  LockedLayout::kBottom);
  EditField1->setReadOnly(true);
  EditField1->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                      Qt::TextSelectableByKeyboard);
  EditField1->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  EditField1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // The help text separates its lines with carriage returns.
  QString text = QString::fromStdString(App::kHelpContent());
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  EditField1->setPlainText(text);

  auto* closeShortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this);
  connect(closeShortcut, &QShortcut::activated, this,
          &HelpWindow::_FileCloseWindow_Action);
  // Esc closes it as well, as it closes a dialog.
  auto* escapeShortcut = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(escapeShortcut, &QShortcut::activated, this,
          &HelpWindow::_FileCloseWindow_Action);

  Event_Open();
}

HelpWindow::~HelpWindow() { instance.Forget(this); }

void HelpWindow::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  // Gone for the accessor at once; Qt frees it on the next turn of the loop.
  if (event->isAccepted()) instance.Forget(this);
}

void HelpWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layout_.Resize(size());
}

void HelpWindow::Event_Open() { WindowMenuManager::Add(this); }

// The window's own minimise button stays; only the menu item is off.
void HelpWindow::Event_EnableMenuItems() {
  const std::pair<const char*, bool> items[] = {{"FileCloseWindow", true},
                                                {"WindowBringAllToFront", true},
                                                {"WindowMinimize", false},
                                                {"WindowZoom", false}};
  for (const auto& [name, enabled] : items) {
    if (QAction* item = MenuItem(QString::fromLatin1(name))) {
      item->setEnabled(enabled);
    }
  }
}

std::function<bool()> HelpWindow::MenuHandler(const QString& item) {
  return FindMenuHandler(
      this, item,
      {{"FileCloseWindow", &HelpWindow::_FileCloseWindow_Action},
       {"WindowBringAllToFront", &HelpWindow::_WindowBringAllToFront_Action}});
}

bool HelpWindow::_FileCloseWindow_Action() {
  close();
  return true;
}

bool HelpWindow::_WindowBringAllToFront_Action() {
  WindowMenuManager::BringAllToFront();
  return true;
}

}  // namespace quill
