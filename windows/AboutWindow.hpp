// The about box: icon, name, version, notice and a link to the product's
// web page. It has no title and never appears in the Window menu.
#pragma once

#include <QWidget>

#include "windows/MenuHandlers.hpp"

class QLabel;

namespace quill {

class AboutWindow : public QWidget, public MenuHandlers {
  Q_OBJECT

 public:
  // The implicit instance: made at first use, gone once the window closes.
  static AboutWindow* Instance();
  // The instance if there is one, without making it.
  static AboutWindow* Existing();

  ~AboutWindow() override;

  // What the menus ask of the window while it is in front.
  void Event_EnableMenuItems() override;
  std::function<bool()> MenuHandler(const QString& item) override;
  bool _FileCloseWindow_Action();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  AboutWindow();

  void StaticText4_MouseEnter();
  void StaticText4_MouseExit();
  void StaticText4_MouseDown();
  void Canvas1_Open();

  QLabel* StaticText1;
  QLabel* StaticText2;
  QLabel* StaticText3;
  QLabel* StaticText4;
  QLabel* Canvas1;
};

}  // namespace quill
