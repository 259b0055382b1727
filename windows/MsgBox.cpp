#include "windows/MsgBox.hpp"

#include <QMessageBox>

#include "windows/TextConstants.hpp"

namespace quill {

namespace {
std::function<void(const QString&)>& Handler() {
  static std::function<void(const QString&)> handler;
  return handler;
}
}  // namespace

void MsgBox(QWidget* parent, const QString& text) {
  if (Handler()) {
    Handler()(text);
    return;
  }
  QMessageBox::information(parent, QString::fromStdString(App::kAppName()),
                           text);
}

void SetMsgBoxHandler(std::function<void(const QString&)> handler) {
  Handler() = std::move(handler);
}

}  // namespace quill
