// What the dialog tests share: a main that keeps the real preferences out of
// reach, a catcher for message boxes, and clicks on the parts of controls
// that react to them.
#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QMessageBox>
#include <QStyleOptionViewItem>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "app/App.hpp"
#include "platform/Platform.hpp"

namespace quill::test {

// The preferences file the program works with during the test.
inline QString PreferencesFile() {
  return QString::fromStdString(PreferencesFolder()) +
         QStringLiteral("/Quillmere Preferences");
}

inline QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Answers the next message box that comes up, keeping its text. A modal box
// runs its own event loop, so the answer has to come from inside that loop.
class MessageCatcher : public QObject {
 public:
  void Arm() {
    armed_ = true;
    QTimer::singleShot(0, this, &MessageCatcher::Poll);
  }
  void Disarm() { armed_ = false; }
  const QStringList& texts() const { return texts_; }

 private:
  void Poll() {
    if (!armed_) return;
    if (auto* box =
            qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      texts_ << box->text();
      armed_ = false;
      box->accept();
      return;
    }
    QTimer::singleShot(0, this, &MessageCatcher::Poll);
  }

  bool armed_ = false;
  QStringList texts_;
};

// A click where a check box reacts, on its indicator.
inline void ClickCheckBox(QAbstractButton* box) {
  QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier,
                    QPoint(6, box->height() / 2));
}

// A click on the check indicator of a row's first column.
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

}  // namespace quill::test

// Runs a test class inside the application object, with the preferences
// folder in a temporary place so that a user's own settings are never read
// or changed.
#define QUILL_DIALOG_TEST_MAIN(TestClass)                    \
  int main(int argc, char** argv) {                          \
    qputenv("QT_QPA_PLATFORM", "offscreen");                 \
    QTemporaryDir config;                                    \
    if (!config.isValid()) return 2;                         \
    qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit()); \
    quill::App app(argc, argv);                              \
    TestClass test;                                          \
    return QTest::qExec(&test, argc, argv);                  \
  }
