// Absolute geometry with locks: each control keeps its rectangle in its
// parent's coordinates, and when the window's size changes the control
// follows the edges it is locked to. A control locked left and right
// stretches; locked right only, it moves. Top and bottom alike.
//
// Rectangles may hold a negative size (a splitter dragged far down does
// that); the control is then shown with no size, and the stored rectangle
// keeps counting.
#pragma once

#include <QRect>
#include <QSize>
#include <QWidget>
#include <vector>

namespace quill {

class LockedLayout {
 public:
  enum Lock { kNone = 0, kLeft = 1, kTop = 2, kRight = 4, kBottom = 8 };

  explicit LockedLayout(QSize size) : size_(size) {}

  void Add(QWidget* control, QRect rect, int locks);

  QRect Rect(const QWidget* control) const;
  void SetRect(QWidget* control, QRect rect);
  void SetLeft(QWidget* control, int left);
  void SetTop(QWidget* control, int top);
  void SetHeight(QWidget* control, int height);

  // The window's content now has `size`: moves and stretches by the change.
  void Resize(QSize size);
  QSize Size() const { return size_; }

 private:
  struct Entry {
    QWidget* control;
    QRect rect;
    int locks;
  };
  Entry* Find(const QWidget* control);
  const Entry* Find(const QWidget* control) const;
  static void Apply(const Entry& entry);

  QSize size_;
  std::vector<Entry> entries_;
};

}  // namespace quill
