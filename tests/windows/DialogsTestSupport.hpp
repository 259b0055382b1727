// What the dialog tests share besides WindowTestSupport.hpp: clicks on the
// parts of controls that react to them, and the preferences file's bytes.
#pragma once

#include <QAbstractButton>
#include <QFile>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTreeWidget>
#include <string>

namespace quill::testing {

inline QByteArray FileBytes(const std::string& path) {
  QFile file(QString::fromStdString(path));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A click where a check box or radio button reacts: on its indicator.
inline void ClickIndicator(QAbstractButton* button) {
  QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier,
                    QPoint(6, button->height() / 2));
}

// A click on the check box in the first column of a list row.
inline void ClickRowCheck(QTreeWidget* list, int row) {
  QStyleOptionViewItem option;
  option.initFrom(list->viewport());
  option.rect = list->visualRect(list->model()->index(row, 0));
  option.features |= QStyleOptionViewItem::HasCheckIndicator;
  const QRect check = list->style()->subElementRect(
      QStyle::SE_ItemViewItemCheckIndicator, &option, list);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                    check.center());
}

}  // namespace quill::testing
