// The preferences dialog: phonetic systems, tones, readings, segmentation,
// the Return key, readings in context and the reading standard. It reads the
// store when it opens and writes only on OK.
#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace quill {

class PreferencesWindow : public QDialog {
  Q_OBJECT

 public:
  // The implicit instance: made at first use, gone once the dialog closes.
  static PreferencesWindow* Instance();
  // The instance if there is one, without making it.
  static PreferencesWindow* Existing();

  ~PreferencesWindow() override;

 private:
  PreferencesWindow();

  void ListBox1_Open();
  void UseToneNumbersCheckbox_Open();
  void IndicateTonesBox_Open();
  void IndicateTonesBox_Action();
  void ShowMultipleReadingsBox_Open();
  void ShowSegmentationBox_Open();
  void ShowSegmentationBox_Action();
  void Event_Open();
  void ContextReadingsBox_Open();
  void ReadingStandardPopup_Open();
  void OKButton_Action();
  void CancelButton_Action();

  QTreeWidget* ListBox1;
  QPushButton* OKButton;
  QPushButton* CancelButton;
  QCheckBox* UseToneNumbersCheckbox;
  QCheckBox* IndicateTonesBox;
  QCheckBox* ShowMultipleReadingsBox;
  QLabel* StaticText1;
  QCheckBox* ShowSegmentationBox;
  QLabel* StaticText2;
  QLabel* PressReturnToText;
  QRadioButton* StartLookingUpRadioButton;
  QRadioButton* AddANewLineRadioButton;
  QCheckBox* ContextReadingsBox;
  QLabel* ReadingsText;
  QComboBox* ReadingStandardPopup;  // mainland, Taiwan
};

}  // namespace quill
