// What the window tests share: a fresh preferences folder for each test
// function, the start-up as the program does it, and a small reading table.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>
#include <string>

#include "lookup/LookUp.hpp"
#include "settings/Preferences.hpp"
#include "windows/App.hpp"
#include "windows/MainWindow.hpp"

namespace quill::testing {

// XDG_CONFIG_HOME points into a folder of the test's own, so that the
// user's real preferences are never touched.
class PreferencesFolder {
 public:
  PreferencesFolder() { qputenv("XDG_CONFIG_HOME", dir_.path().toLocal8Bit()); }
  std::string Path() const { return dir_.path().toStdString(); }
  std::string FilePath() const { return Preferences(Path()).FilePath(); }
  std::string Read(const std::string& key) const {
    return Preferences(Path()).ReadPreferences(key);
  }
  void Write(const std::string& key, const std::string& value) const {
    Preferences(Path()).WritePreferences(key, value);
  }
  bool FileExists() const {
    return QFile::exists(QString::fromStdString(FilePath()));
  }

 private:
  QTemporaryDir dir_;
};

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
  MainWindow* window = MainWindow::Existing();
  QCoreApplication::processEvents();
  return window;
}

// A reading table of two characters, 中 and 文, in `folder`.
inline DataFiles SmallTable(const QTemporaryDir& folder) {
  const QString path = folder.filePath("zhuyintable");
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) {
    file.write("中   ㄓㄨㄥ  ㄓㄨㄥˋ\n文   ㄨㄣˊ\n");
  }
  DataFiles files;
  files.zhuyintable = path.toStdString();
  files.sttable = folder.filePath("STTABLE").toStdString();
  files.tokenizer = folder.filePath("Tokenizer").toStdString();
  return files;
}

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
