// The export dialog: the user picks a format and continues, and the main
// window's Export reads the choice from the dialog's pop-up menu.
//
// Nothing in the program opens it yet; ShowExportWindow() is there for the
// command that will.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>

class QComboBox;
class QLabel;
class QPushButton;

namespace quill {

class ExportWindow : public QDialog {
  Q_OBJECT

 public:
  // The implicit instance: made at first use, gone once the dialog closes.
  // Cancel only hides it, so it keeps its choice until Continue.
  static ExportWindow* Instance();
  // The instance if there is one, without making it.
  static ExportWindow* Existing();

  ~ExportWindow() override;

  // The controls, in the order of their creation. Index 0 of PopupMenu1 is
  // plain text, any other the page with phonetic guides.
  QLabel* StaticText1;
  QComboBox* PopupMenu1;
  QPushButton* PushButton2;  // Cancel
  QPushButton* PushButton1;  // Continue

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  ExportWindow();

  void PushButton1_Action();
  void PushButton2_Action();
};

// The system's save dialog with no filter and `defaultName` filled in: the
// chosen path, or an empty string when the user cancels.
QString GetSaveFolderItem(QWidget* parent, const QString& defaultName);

// Replaces the save dialog for the rest of the run, so that tests never
// wait for a user; the handler gets the default name. An empty function
// puts the dialog back.
void SetSaveFolderItemHandler(
    std::function<QString(const QString& defaultName)> handler);

}  // namespace quill
