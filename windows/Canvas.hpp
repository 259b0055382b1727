// A control that shows a picture and reports the mouse to its window: the
// look-up button, the splitter, its grip and the mode buttons.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <functional>

namespace quill {

class Canvas : public QWidget {
  Q_OBJECT

 public:
  explicit Canvas(QWidget* parent);

  // Drawn at (0, 0) at its natural size, over the erased background.
  void SetBackdrop(const QPixmap& picture);
  const QPixmap& Backdrop() const { return backdrop_; }

  // Positions are relative to the control. MouseDown returning true asks
  // for the drag and the release.
  std::function<bool(int x, int y)> MouseDown;
  std::function<void(int x, int y)> MouseDrag;
  std::function<void(int x, int y)> MouseUp;
  std::function<void()> MouseEnter;
  std::function<void()> MouseExit;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  QPixmap backdrop_;
  bool tracking_ = false;  // a press was taken: drags and release follow
};

}  // namespace quill
