// The one working window: input field, result field, splitter, look-up
// button, and the state the look-up and the export work with.
#pragma once

#include <QWidget>
#include <string>

namespace quill {

class MainWindow : public QWidget {
  Q_OBJECT

 public:
  // The implicit instance: made at first use, gone once the window closes.
  static MainWindow* Instance();
  // The instance if there is one, without making it.
  static MainWindow* Existing();

  // Preference mirrors that other windows set (values "0"/"1"/...).
  std::string PinyinSystemsPrefValue;
  std::string UseToneNumbersPrefValue;
  std::string indicateTonesPrefValue;

  // Reads the input field and shows the result in ResultField.
  void LookUp();

 protected:
  explicit MainWindow(QWidget* parent = nullptr);
  ~MainWindow() override;
};

}  // namespace quill
