// The application object: start-up and the application-wide menu commands.
//
// The text constants live in namespace App (windows/TextConstants.hpp), so
// the class is QuillmereApp and App::Instance() is its accessor:
//   App::Instance()->Event_Open();
//   App::kAppName();
#pragma once

#include <QApplication>
#include <string>

#include "windows/MenuHandlers.hpp"
#include "windows/TextConstants.hpp"

namespace quill {

class PreferencesError;

class QuillmereApp : public QApplication, public MenuHandlers {
  Q_OBJECT

 public:
  QuillmereApp(int& argc, char** argv);
  // The one application object.
  static QuillmereApp* Instance();

  // Writes the default of PinyinSystems when there is none.
  void Event_Open();

  // The application's menu handlers, for any window in front.
  std::function<bool()> MenuHandler(const QString& item) override;
  bool _EditPreferences_Action();
  bool _HelpAboutQuillmere_Action();
  bool _HelpQuillmereHelp_Action();
  bool _HelpQuillmereWebsite_Action();

  // The product's page, opened by the Help menu and the about box.
  static QString WebsiteAddress();

  // Ends the program over a preferences file that can't be used: says what
  // and where on standard error and, with a display, in a message box, and
  // exits with status 1. The file is not touched again.
  [[noreturn]] static void Fatal(const PreferencesError& error);

  // Every event passes here, so that a PreferencesError out of any handler
  // ends the program instead of unwinding through Qt.
  bool notify(QObject* receiver, QEvent* event) override;
};

namespace App {
inline QuillmereApp* Instance() { return QuillmereApp::Instance(); }
}  // namespace App

// The start-up sequence: the menu bar, the main window, App's Open and the
// window's Open, in this order. The caller runs the event loop.
void StartUp();

// The whole program: the application object, StartUp and the event loop.
int _Main(int argc, char** argv);

}  // namespace quill
