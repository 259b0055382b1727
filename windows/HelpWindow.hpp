// The help window: the one help text, to read, select and copy. It is
// listed in the Window menu while it is open.
#pragma once

#include <QWidget>

#include "windows/LockedLayout.hpp"
#include "windows/MenuHandlers.hpp"

class QPlainTextEdit;

namespace quill {

class HelpWindow : public QWidget, public MenuHandlers {
  Q_OBJECT

 public:
  // The implicit instance: made at first use, gone once the window closes.
  static HelpWindow* Instance();
  // The instance if there is one, without making it.
  static HelpWindow* Existing();

  ~HelpWindow() override;

  // What the menus ask of the window while it is in front.
  void Event_EnableMenuItems() override;
  std::function<bool()> MenuHandler(const QString& item) override;
  bool _FileCloseWindow_Action();
  bool _WindowBringAllToFront_Action();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  HelpWindow();

  void Event_Open();

  QPlainTextEdit* EditField1;

  LockedLayout layout_;
};

}  // namespace quill
