// The application object: preferences, script conversion and the
// application-wide menu commands.
#pragma once

#include <QApplication>
#include <string>

namespace quill {

class App : public QApplication {
  Q_OBJECT

 public:
  App(int& argc, char** argv);
  // The one application object.
  static App* Instance();

  std::string ReadPreferences(const std::string& key);
  void WritePreferences(const std::string& key, const std::string& value);

  bool _EditPreferences_Action();
  bool _HelpAboutQuillmere_Action();
  bool _HelpQuillmereHelp_Action();
  bool _HelpQuillmereWebsite_Action();
};

}  // namespace quill
