#include "windows/App.hpp"

#include <QDesktopServices>
#include <QMessageBox>
#include <QUrl>
#include <cstdio>
#include <cstdlib>

#include "platform/Platform.hpp"
#include "settings/Preferences.hpp"
#include "settings/Settings.hpp"
#include "windows/Dialogs.hpp"
#include "windows/MainWindow.hpp"
#include "windows/MenuBar1.hpp"

namespace quill {

QuillmereApp::QuillmereApp(int& argc, char** argv) : QApplication(argc, argv) {
  setApplicationName(QString::fromStdString(App::kAppName()));
  setQuitOnLastWindowClosed(false);  // only the main window ends the program
}

QuillmereApp* QuillmereApp::Instance() {
  return qobject_cast<QuillmereApp*>(QCoreApplication::instance());
}

void QuillmereApp::Event_Open() {
  // A stored value is never corrected, whatever it holds.
  if (!Settings::PinyinSystems()) Settings::SetPinyinSystems(SystemSet());
}

std::function<bool()> QuillmereApp::MenuHandler(const QString& item) {
  return FindMenuHandler(
      this, item,
      {{"EditPreferences", &QuillmereApp::_EditPreferences_Action},
       {"HelpAboutQuillmere", &QuillmereApp::_HelpAboutQuillmere_Action},
       {"HelpQuillmereHelp", &QuillmereApp::_HelpQuillmereHelp_Action},
       {"HelpQuillmereWebsite", &QuillmereApp::_HelpQuillmereWebsite_Action}});
}

bool QuillmereApp::_EditPreferences_Action() {
  ShowPreferencesWindow();
  return true;
}

bool QuillmereApp::_HelpAboutQuillmere_Action() {
  ShowAboutWindow();
  return true;
}

bool QuillmereApp::_HelpQuillmereHelp_Action() {
  ShowHelpWindow();
  return true;
}

bool QuillmereApp::_HelpQuillmereWebsite_Action() {
  QDesktopServices::openUrl(QUrl(WebsiteAddress()));
  return true;
}

QString QuillmereApp::WebsiteAddress() {
  return QStringLiteral("https://quillmere.example.org/");
}

void QuillmereApp::Fatal(const PreferencesError& error) {
  static bool ending = false;
  if (!ending) {
    ending = true;
    const QString text =
        QStringLiteral(
            "The preferences file can't be used, so %1 has to quit.\n\n"
            "File: %2\nProblem: %3\n\n"
            "The file was left as it is. Move it away or mend it, "
            "then start %1 again.")
            .arg(QString::fromStdString(App::kAppName()),
                 QString::fromStdString(error.path()),
                 QString::fromStdString(error.problem()));
    std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
    std::fflush(stderr);
    const QString platform = QGuiApplication::platformName();
    if (QCoreApplication::instance() != nullptr && platform != "offscreen" &&
        platform != "minimal") {
      QMessageBox::critical(nullptr, QString::fromStdString(App::kAppName()),
                            text);
    }
  }
  // No cleanup: it could run more handlers that read the file again.
  std::_Exit(1);
}

bool QuillmereApp::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const PreferencesError& error) {
    Fatal(error);
  }
}

void StartUp() {
  QuillmereApp* app = App::Instance();
  MenuBar1();  // built here, before any window uses it
  MainWindow* window = MainWindow::Instance();
  // App's Open comes first: the window's Open reads PinyinSystems.
  app->Event_Open();
  window->Event_Open();
  window->show();
}

int _Main(int argc, char** argv) {
  QuillmereApp app(argc, argv);
  try {
    StartUp();
    return app.exec();
  } catch (const PreferencesError& error) {
    QuillmereApp::Fatal(error);
  }
}

}  // namespace quill
