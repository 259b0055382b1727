// The one working window: input field, result field, splitter, look-up
// button, and the state the look-up and the export work with.
//
// Controls sit at fixed positions in the window's content (below the menu
// bar) and follow its edges by their locks. Width(), Height(), Left() and
// Top() are those of the content, as the preferences store them.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <string>

#include "lookup/LookUp.hpp"
#include "windows/LockedLayout.hpp"
#include "windows/MenuHandlers.hpp"

class QKeyEvent;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTimer;

namespace quill {

class Canvas;
class ModeSwitch;

class MainWindow : public QWidget, public MenuHandlers {
  Q_OBJECT

 public:
  // The implicit instance: made at first use, gone once the window closes.
  static MainWindow* Instance();
  // The instance if there is one, without making it.
  static MainWindow* Existing();

  // Reads the input field and shows the result in ResultField.
  void LookUp();
  // After the preferences window has saved: the window takes the saved
  // preferences, its fonts follow the reading standard, and the result
  // field shows the input looked up again with them.
  void PreferencesSaved();
  // The mode switch, animated by its Timer1; the mode buttons that start it
  // stay hidden, and showing them is all it takes to offer it.
  void StartModeSwitching();
  // One step of the switch's animation: Timer1's event.
  void Timer1_Action();

  // The greatest size of the content in either direction.
  static constexpr int kMaxSize = 32000;
  // Writes the last look-up's input to a file the user picks, as plain text
  // or as a page with phonetic guides, after the choice in ExportWindow.
  void Export();

  // The window's events. Event_Open runs the controls' Open events first.
  void Event_Open();
  void Event_Resized();
  void Event_Moved();
  void Event_Close();
  void Event_Activate();
  void Event_EnableMenuItems() override;

  // The window's menu handlers.
  std::function<bool()> MenuHandler(const QString& item) override;
  bool _FileCloseWindow_Action();
  bool _WindowMinimize_Action();
  bool _WindowBringAllToFront_Action();
  bool _WindowZoom_Action();

  // Key handling of TextField: true when the key was taken.
  bool TextField_KeyDown(const QKeyEvent& event);

  // The content's geometry, below the menu bar.
  int Width() const;
  int Height() const;
  int Left() const { return x(); }
  int Top() const { return y(); }
  void SetSize(int width, int height);
  // The geometry of a control as the layout keeps it, in its parent's
  // coordinates; it may have a negative height.
  QRect ControlRect(const QWidget* control) const {
    return layout_.Rect(control);
  }
  int MinHeight() const;
  int MinWidth() const;
  int MaxWidth() const;
  int MaxHeight() const;

  // Where the look-up finds its files; beside the executable unless a
  // test says otherwise. A new engine reads the table again.
  void SetDataFiles(const DataFiles& files);

 protected:
  explicit MainWindow(QWidget* parent = nullptr);
  ~MainWindow() override;

  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  friend class ModeSwitch;

  // The problems of the user's phrase file, once per version of the file.
  void ShowPhraseProblems();
  void CreateControls();
  void OpenControls();
  void ContentResized(QSize size);
  int MenuBarHeight() const;
  void LookUpSequence();
  void ShowLookUpButton(bool pressed);
  void Widget_Open();
  bool Widget_MouseDown(int y);
  void Widget_MouseDrag(int y);
  void Widget_MouseUp();
  void LookUpCanvas_MouseDrag(int x, int y);
  void DictModeButton_MouseUp();
  void ConverterModeButton_MouseUp();
  void SetLimits(QSize least, QSize most);
  void MoveFields(int travel);
  // The fonts of the fields, with Traditional glyph forms first under
  // Taiwan's reading standard or in a Traditional-Chinese locale.
  void UpdateFieldFonts();
  // The mirrors of the preferences that LookUp and Export work with, all
  // set here from the stored values: the systems and the tone marks at
  // Open, the tone numbers too once the preferences window has saved
  // (until then they stay off), and the multiple readings at each run.
  enum class MirrorTime { kOpen, kPreferencesSaved, kRun };
  void SetPreferenceMirrors(MirrorTime time);
  // The settings of LookUp and Export, as the window holds them, without
  // segmentation.
  LookUpSettings CurrentSettings() const;
  // The engine of LookUp and Export, made at first use.
  LookUpEngine& Engine();
  // ResultField's text with the layout's CR line ends, and back.
  std::string ResultFieldText() const;
  void SetResultFieldText(const std::string& text);

  // The record of the window's state. Strings start empty, numbers at 0.
  std::string CurrentField;
  SystemSet PinyinSystemsPrefValue;
  std::string UseToneNumbersPrefValue;
  std::string indicateTonesPrefValue;
  Mode mode = Mode::kDictionary;  // until Open settles in converter mode
  int mainWindowWidth = 0;
  int mainWindowHeight = 0;
  std::string ShowMultipleReadingsPrefValue;
  std::string TextFieldTemp;
  std::string CharacterFieldTemp;
  int WidgetClick = 0;
  int WidgetTop = 0;
  int TextFieldHeight = 0;
  int ResultFieldHeight = 0;
  int YField = 0;

  // The controls, in the order of their creation; each has its name as
  // its objectName.
  QLineEdit* CharacterField = nullptr;
  QPlainTextEdit* ResultField = nullptr;
  QLabel* StaticText1 = nullptr;
  QPlainTextEdit* TextField = nullptr;
  Canvas* Widget = nullptr;
  Canvas* DimpleIcon = nullptr;
  Canvas* DictModeButton = nullptr;
  Canvas* ConverterModeButton = nullptr;
  Canvas* LookUpCanvas = nullptr;

  QWidget* content_ = nullptr;
  LockedLayout layout_;
  std::unique_ptr<ModeSwitch> modeSwitch_;  // made with the controls
  std::unique_ptr<LookUpEngine> engine_;
  QSize knownSize_;         // the size Event_Resized last saw or Open set
  QPoint knownPosition_;    // the position Event_Moved last saw or Open set
  bool activated_ = false;  // placement by the system before that is no move
};

}  // namespace quill
