// What the window tests share: a fresh preferences folder for each test
// function, the start-up as the program does it, a small reading table,
// the controls by name, and clicks where controls react to them.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QStyleOptionViewItem>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <list>
#include <memory>
#include <string>

#include "lookup/LookUp.hpp"
#include "settings/Preferences.hpp"
#include "windows/App.hpp"
#include "windows/Canvas.hpp"
#include "windows/MainWindow.hpp"
#include "windows/MsgBox.hpp"

namespace quill::testing {

// XDG_CONFIG_HOME points into a folder of the test's own, so that the
// user's real preferences are never touched.
class PreferencesFolder {
 public:
  PreferencesFolder() { qputenv("XDG_CONFIG_HOME", dir_.path().toLocal8Bit()); }
  std::string Path() const { return dir_.path().toStdString(); }
  std::string FilePath() const { return Preferences(Path()).FilePath(); }
  QString Read(const char* key) const {
    return QString::fromStdString(Preferences(Path()).ReadPreferences(key));
  }
  void Write(const QString& key, const QString& value) const {
    Preferences(Path()).WritePreferences(key.toStdString(),
                                         value.toStdString());
  }
  // Each "key=value" of `pairs`.
  void WriteAll(const QStringList& pairs) const {
    for (const QString& pair : pairs) {
      Write(pair.section('=', 0, 0), pair.section('=', 1));
    }
  }
  QByteArray Bytes() const {
    QFile file(QString::fromStdString(FilePath()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

 private:
  QTemporaryDir dir_;
};

// The rows of the test function `test`'s table in tests/data/windows/
// cases.txt, each column a QString.
inline void AddRows(const QString& test) {
  QFile file(QUILLMERE_WINDOW_CASES);
  QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
  bool inSection = false;
  bool header = false;
  for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
    if (line.startsWith('[')) {
      inSection = header = line == '[' + test + ']';
    } else if (inSection && !line.trimmed().isEmpty() && line[0] != '#') {
      QStringList cells = line.split('|');
      for (QString& cell : cells) cell = cell.trimmed().replace("\\n", "\n");
      if (header) {
        // Qt Test keeps the name's pointer: the names live to the end.
        static std::list<QByteArray> names;
        for (const QString& name : cells.mid(1)) {
          QTest::addColumn<QString>(names.emplace_back(name.toUtf8()).data());
        }
      } else {
        QTestData& row = QTest::newRow(qPrintable(cells[0]));
        for (const QString& cell : cells.mid(1)) row << cell;
      }
      header = false;
    }
  }
}

// The values of a cell of several.
inline QStringList Values(const QString& cell) {
  return cell.split(',', Qt::SkipEmptyParts);
}

// A control of a window by its name.
template <typename T = QWidget>
T* Control(const QWidget* window, const QString& name) {
  return window->findChild<T*>(name);
}

// The main window's controls.
inline QPlainTextEdit* TextField(const QWidget* w) {
  return Control<QPlainTextEdit>(w, "TextField");
}
inline QPlainTextEdit* ResultField(const QWidget* w) {
  return Control<QPlainTextEdit>(w, "ResultField");
}
inline QString Result(const QWidget* w) {
  return ResultField(w)->toPlainText();
}

// Deletes the window as closing does, without waiting for an event loop.
inline void CloseMainWindow() {
  if (MainWindow* window = MainWindow::Existing()) {
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

// The start of the program, up to the event loop; the window is shown and
// its first events have been handled.
inline MainWindow* StartMainWindow() {
  StartUp();
  QCoreApplication::processEvents();
  return MainWindow::Existing();
}

// A reading table in `folder`: 中 and 文, and 银行 and 垃圾 with a phrase
// reading and Taiwan's readings.
inline DataFiles SmallTable(const QTemporaryDir& folder) {
  const auto write = [&folder](const char* name, const char* text) {
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::WriteOnly)) file.write(text);
    return folder.filePath(name).toStdString();
  };
  DataFiles files;
  files.zhuyintable = write("zhuyintable",
                            "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n文   ㄨㄣˊ\n"
                            "垃   ㄌㄚ  ㄌㄜˋ\n圾   ㄐㄧ\n"
                            "行   ㄒㄧㄥˊ  ㄏㄤˊ\n银   ㄧㄣˊ\n");
  files.phrasereadings = write("phrasereadings", "银行\tㄧㄣˊ ㄏㄤˊ\t500\n");
  files.taiwanreadings = write("taiwanreadings", "圾\tㄙㄜˋ\n垃\tㄌㄜˋ\n");
  files.sttable = folder.filePath("STTABLE").toStdString();
  files.tokenizer = folder.filePath("Tokenizer").toStdString();
  return files;
}

// Data files whose reading table is missing.
inline DataFiles NoTable(const QTemporaryDir& folder) {
  DataFiles files;
  files.zhuyintable = folder.filePath("missing").toStdString();
  return files;
}

// A drag of the mouse with the left button held.
inline void DragTo(QWidget* widget, QPoint point) {
  QMouseEvent move(QEvent::MouseMove, point, widget->mapToGlobal(point),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(widget, &move);
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

// The base of the window test classes. Each test function gets a
// preferences folder of its own and the program started on the small table
// (Begin), the messages it shows kept, " (busy)" after one shown under the
// wait cursor; at the end (End first) every window is closed.
class WindowTest : public QObject {
  Q_OBJECT

 protected:
  MainWindow* Start() {
    main_ = StartMainWindow();
    main_->SetDataFiles(SmallTable(tableFolder_));
    return main_;
  }
  virtual void Begin() { Start(); }
  virtual void End() {}

  std::unique_ptr<PreferencesFolder> prefs_;
  QTemporaryDir tableFolder_;
  MainWindow* main_ = nullptr;
  QStringList messages_;

 private slots:
  void init() {
    prefs_ = std::make_unique<PreferencesFolder>();
    messages_.clear();
    SetMsgBoxHandler([this](const QString& text) {
      messages_ << text + (QApplication::overrideCursor() ? " (busy)" : "");
    });
    Begin();
  }
  void cleanup() {
    End();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window != main_) window->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    CloseMainWindow();
    main_ = nullptr;
    SetMsgBoxHandler({});
    prefs_.reset();
  }
};

}  // namespace quill::testing

// A Qt Test main with the program's own application object.
#define QUILLMERE_TEST_MAIN(TestClass)                    \
  int main(int argc, char** argv) {                       \
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) { \
      qputenv("QT_QPA_PLATFORM", "offscreen");            \
    }                                                     \
    quill::testing::PreferencesFolder startFolder;        \
    quill::QuillmereApp app(argc, argv);                  \
    TestClass test;                                       \
    return QTest::qExec(&test, argc, argv);               \
  }
