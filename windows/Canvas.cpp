#include "windows/Canvas.hpp"

#include <QMouseEvent>
#include <QPainter>

namespace quill {

Canvas::Canvas(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::NoFocus);
  setAutoFillBackground(true);
}

void Canvas::SetBackdrop(const QPixmap& picture) {
  backdrop_ = picture;
  update();
}

void Canvas::paintEvent(QPaintEvent*) {
  if (backdrop_.isNull()) return;
  QPainter painter(this);
  painter.drawPixmap(0, 0, backdrop_);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
  const QPoint p = event->position().toPoint();
  tracking_ = MouseDown && MouseDown(p.x(), p.y());
  event->setAccepted(tracking_);
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
  if (!tracking_ || !(event->buttons() & Qt::LeftButton)) return;
  const QPoint p = event->position().toPoint();
  if (MouseDrag) MouseDrag(p.x(), p.y());
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
  if (!tracking_) return;
  tracking_ = false;
  const QPoint p = event->position().toPoint();
  if (MouseUp) MouseUp(p.x(), p.y());
}

void Canvas::enterEvent(QEnterEvent*) {
  if (MouseEnter) MouseEnter();
}

void Canvas::leaveEvent(QEvent*) {
  if (MouseExit) MouseExit();
}

}  // namespace quill
