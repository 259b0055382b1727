#include "windows/LockedLayout.hpp"

#include <algorithm>

namespace quill {

void LockedLayout::Add(QWidget* control, QRect rect, int locks) {
  entries_.push_back({control, rect, locks});
  Apply(entries_.back());
}

LockedLayout::Entry* LockedLayout::Find(const QWidget* control) {
  for (Entry& entry : entries_) {
    if (entry.control == control) return &entry;
  }
  return nullptr;
}

const LockedLayout::Entry* LockedLayout::Find(const QWidget* control) const {
  return const_cast<LockedLayout*>(this)->Find(control);
}

QRect LockedLayout::Rect(const QWidget* control) const {
  const Entry* entry = Find(control);
  return entry ? entry->rect : QRect();
}

void LockedLayout::SetRect(QWidget* control, QRect rect) {
  if (Entry* entry = Find(control)) {
    entry->rect = rect;
    Apply(*entry);
  }
}

void LockedLayout::SetLeft(QWidget* control, int left) {
  QRect rect = Rect(control);
  rect.moveLeft(left);
  SetRect(control, rect);
}

void LockedLayout::SetTop(QWidget* control, int top) {
  QRect rect = Rect(control);
  rect.moveTop(top);
  SetRect(control, rect);
}

void LockedLayout::SetHeight(QWidget* control, int height) {
  QRect rect = Rect(control);
  rect.setHeight(height);
  SetRect(control, rect);
}

void LockedLayout::Resize(QSize size) {
  const int dx = size.width() - size_.width();
  const int dy = size.height() - size_.height();
  size_ = size;
  if (dx == 0 && dy == 0) return;
  for (Entry& entry : entries_) {
    QRect& r = entry.rect;
    if (entry.locks & kRight) {
      if (entry.locks & kLeft) {
        r.setWidth(r.width() + dx);
      } else {
        r.translate(dx, 0);
      }
    }
    if (entry.locks & kBottom) {
      if (entry.locks & kTop) {
        r.setHeight(r.height() + dy);
      } else {
        r.translate(0, dy);
      }
    }
    Apply(entry);
  }
}

void LockedLayout::Apply(const Entry& entry) {
  const QRect& r = entry.rect;
  entry.control->setGeometry(r.left(), r.top(), std::max(0, r.width()),
                             std::max(0, r.height()));
}

}  // namespace quill
