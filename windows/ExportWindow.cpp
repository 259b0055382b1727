#include "windows/ExportWindow.hpp"

#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "windows/MainWindow.hpp"
#include "windows/OneInstance.hpp"

namespace quill {

namespace {

OneInstance<ExportWindow> instance;

std::function<QString(const QString&)>& SaveHandler() {
  static std::function<QString(const QString&)> handler;
  return handler;
}

}  // namespace

ExportWindow* ExportWindow::Instance() {
  return instance.Get([] { return new ExportWindow(); });
}

ExportWindow* ExportWindow::Existing() { return instance.Existing(); }

// A movable modal dialog: a title bar, no close box; Cancel or Continue
// are the ways out.
ExportWindow::ExportWindow()
    : QDialog(nullptr,
              Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::ApplicationModal);
  setWindowTitle(QStringLiteral("Export"));
  setFixedSize(272, 125);
  // A closed dialog is gone for the accessor at once, even though Qt frees
  // it only on the next turn of the event loop. Hiding is not closing.
  connect(this, &QDialog::finished, this, [this] { instance.Forget(this); });

  // The captions belong to this layout; they are not translated texts.
  StaticText1 = new QLabel(QStringLiteral("Format:"), this);
  StaticText1->setObjectName("StaticText1");
  StaticText1->setGeometry(20, 14, 232, 20);

  PopupMenu1 = new QComboBox(this);
  PopupMenu1->setObjectName("PopupMenu1");
  PopupMenu1->setGeometry(20, 37, 232, 20);
  PopupMenu1->addItem(QStringLiteral("Plain text"));
  PopupMenu1->addItem(QStringLiteral("HTML with phonetic guides"));
  PopupMenu1->setCurrentIndex(0);

  PushButton2 = new QPushButton(QStringLiteral("Cancel"), this);
  PushButton2->setObjectName("PushButton2");
  PushButton2->setGeometry(80, 85, 80, 20);
  PushButton2->setAutoDefault(false);

  PushButton1 = new QPushButton(QStringLiteral("Continue"), this);
  PushButton1->setObjectName("PushButton1");
  PushButton1->setGeometry(172, 85, 80, 20);
  PushButton1->setDefault(true);

  connect(PushButton1, &QPushButton::clicked, this,
          &ExportWindow::PushButton1_Action);
  connect(PushButton2, &QPushButton::clicked, this,
          &ExportWindow::PushButton2_Action);
}

ExportWindow::~ExportWindow() { instance.Forget(this); }

void ExportWindow::closeEvent(QCloseEvent* event) {
  QDialog::closeEvent(event);
  // Also when closed while hidden, which ends no dialog and so says nothing.
  if (event->isAccepted()) instance.Forget(this);
}

// Escape is the cancel button's key: it hides, as the button does, where
// the dialog's own handling would close.
void ExportWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
    PushButton2->click();
    return;
  }
  QDialog::keyPressEvent(event);
}

// Export reads the pop-up menu, so the dialog closes only after it.
void ExportWindow::PushButton1_Action() {
  MainWindow::Instance()->Export();
  close();
}

// Hidden, not closed: the next opening finds the choice as it was left.
void ExportWindow::PushButton2_Action() { hide(); }

QString GetSaveFolderItem(QWidget* parent, const QString& defaultName) {
  if (SaveHandler()) return SaveHandler()(defaultName);
  return QFileDialog::getSaveFileName(parent, QString(), defaultName);
}

void SetSaveFolderItemHandler(
    std::function<QString(const QString& defaultName)> handler) {
  SaveHandler() = std::move(handler);
}

}  // namespace quill
