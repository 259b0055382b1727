#include "windows/MainWindow.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "export/Export.hpp"
#include "settings/Preferences.hpp"
#include "settings/Settings.hpp"
#include "text/TextOps.hpp"
#include "windows/App.hpp"
#include "windows/Canvas.hpp"
#include "windows/ExportWindow.hpp"
#include "windows/MenuBar1.hpp"
#include "windows/ModeSwitch.hpp"
#include "windows/MsgBox.hpp"
#include "windows/Pictures.hpp"
#include "windows/WindowMenuManager.hpp"

namespace quill {

namespace {

using L = LockedLayout;

// The window as created; the least size of converter mode at start-up.
constexpr int kCreatedWidth = 300;
constexpr int kCreatedHeight = 453;

// The splitter: its least top, the room kept below it, and the gaps.
constexpr int kWidgetTopLimit = 114;
constexpr int kSpaceBelowWidget = 150;
constexpr int kWidgetGap = 10;
constexpr int kSpaceBelowResult = 22;
constexpr int kLeastMinHeight = 453;

QPointer<MainWindow>& TheInstance() {
  static QPointer<MainWindow> instance;
  return instance;
}

// Whether Chinese is drawn with Traditional glyph forms: under Taiwan's
// reading standard or in a Traditional-Chinese locale.
bool TraditionalGlyphs() {
  const QLocale locale;
  if (locale.language() == QLocale::Chinese &&
      (locale.script() == QLocale::TraditionalHanScript ||
       locale.territory() == QLocale::Taiwan ||
       locale.territory() == QLocale::HongKong ||
       locale.territory() == QLocale::Macao)) {
    return true;
  }
  try {
    return Settings::ReadingStandard() == ReadingStandard::kTaiwan;
  } catch (const PreferencesError&) {
    return false;  // the look-up tells of the file
  }
}

// Fonts that have the Chinese characters, at the layout's pixel sizes, with
// the glyph forms of `traditional` first.
QFont FieldFont(int pixels, bool traditional) {
  QFont font;
  if (traditional) {
    font.setFamilies({"Noto Sans CJK TC", "Noto Sans CJK SC",
                      "Noto Sans CJK JP", "Noto Sans", "DejaVu Sans"});
  } else {
    font.setFamilies({"Noto Sans CJK SC", "Noto Sans CJK TC",
                      "Noto Sans CJK JP", "Noto Sans", "DejaVu Sans"});
  }
  font.setPixelSize(pixels);
  return font;
}

QString ToQ(const std::string& s) { return QString::fromStdString(s); }

// A switch as the tone settings hold it.
std::string OnOff(bool on) { return on ? "1" : "0"; }

// `window` fitted into the available area of the screen it is on, or of
// the primary screen when it is on none.
QRect FittedOnScreen(const QRect& window) {
  const QScreen* screen = QGuiApplication::screenAt(window.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return window;
  const QRect area = screen->availableGeometry();
  QRect fitted(window.topLeft(), window.size().boundedTo(area.size()));
  fitted.moveLeft(std::clamp(fitted.left(), area.left(),
                             area.right() + 1 - fitted.width()));
  fitted.moveTop(std::clamp(fitted.top(), area.top(),
                            area.bottom() + 1 - fitted.height()));
  return fitted;
}

// The wait cursor over the whole application for as long as it lives: a
// look-up or an export holds the event loop, and the window shows nothing
// else meanwhile.
class BusyCursor {
 public:
  BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyCursor() { QApplication::restoreOverrideCursor(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;
};

// Content widget that reports its size changes to the window.
class Content : public QWidget {
 public:
  Content(QWidget* parent, std::function<void(QSize)> resized)
      : QWidget(parent), resized_(std::move(resized)) {}

 protected:
  void resizeEvent(QResizeEvent* event) override { resized_(event->size()); }

 private:
  std::function<void(QSize)> resized_;
};

}  // namespace

MainWindow* MainWindow::Instance() {
  QPointer<MainWindow>& instance = TheInstance();
  if (instance.isNull()) instance = new MainWindow;
  return instance;
}

MainWindow* MainWindow::Existing() { return TheInstance(); }

MainWindow::MainWindow(QWidget* parent)
    : QWidget(parent), layout_(QSize(kCreatedWidth, kCreatedHeight)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(ToQ(App::kAppName()));
  auto* box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(0);
  // The content's least and greatest sizes are the window's limits.
  box->setSizeConstraint(QLayout::SetMinAndMaxSize);
  box->setMenuBar(MenuBar1());
  content_ = new Content(this, [this](QSize size) { ContentResized(size); });
  content_->setMinimumSize(kCreatedWidth, kCreatedHeight);
  content_->setMaximumSize(kMaxSize, kMaxSize);
  box->addWidget(content_);
  CreateControls();
  resize(kCreatedWidth, kCreatedHeight + MenuBarHeight());
}

MainWindow::~MainWindow() {
  // The menu bar outlives the window, for the next one.
  if (QMenuBar* bar = MenuBar1(); bar->parent() == this) {
    layout()->setMenuBar(nullptr);
    bar->setParent(nullptr);
  }
}

void MainWindow::CreateControls() {
  CharacterField = new QLineEdit(content_);
  CharacterField->setObjectName("CharacterField");
  layout_.Add(CharacterField, {20, 38, 160, 22},
              L::kLeft | L::kTop | L::kRight);

  ResultField = new QPlainTextEdit(content_);
  ResultField->setObjectName("ResultField");
  ResultField->setReadOnly(true);
  ResultField->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                       Qt::TextSelectableByKeyboard);
  ResultField->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  layout_.Add(ResultField, {-1, 124, 302, 315},
              L::kLeft | L::kTop | L::kRight | L::kBottom);

  StaticText1 =
      new QLabel(ToQ(MainWindowText::kInputChineseCharactersText()), content_);
  StaticText1->setObjectName("StaticText1");
  layout_.Add(StaticText1, {20, 14, 252, 20}, L::kNone);

  modeSwitch_ = std::make_unique<ModeSwitch>(*this);

  TextField = new QPlainTextEdit(content_);
  TextField->setObjectName("TextField");
  TextField->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  TextField->setVisible(false);
  layout_.Add(TextField, {20, 38, 225, 66}, L::kLeft | L::kTop | L::kRight);
  UpdateFieldFonts();

  Widget = new Canvas(content_);
  Widget->setObjectName("Widget");
  layout_.Add(Widget, {-1, kWidgetTopLimit, 302, 10},
              L::kLeft | L::kTop | L::kRight);
  Widget->MouseEnter = [this] { Widget->setCursor(HorizontalResizeCursor()); };
  Widget->MouseExit = [this] { unsetCursor(); };
  Widget->MouseDown = [this](int, int y) { return Widget_MouseDown(y); };
  Widget->MouseDrag = [this](int, int y) { Widget_MouseDrag(y); };
  Widget->MouseUp = [this](int, int) { Widget_MouseUp(); };

  // A child of the splitter: its place is counted from the splitter's.
  DimpleIcon = new Canvas(Widget);
  DimpleIcon->setObjectName("DimpleIcon");
  DimpleIcon->setAttribute(Qt::WA_TransparentForMouseEvents);
  DimpleIcon->SetBackdrop(dimple());
  layout_.Add(DimpleIcon, {144 + 1, 116 - kWidgetTopLimit, 5, 5},
              L::kLeft | L::kTop | L::kRight);

  DictModeButton = new Canvas(content_);
  DictModeButton->setObjectName("DictModeButton");
  DictModeButton->SetBackdrop(dictmode());
  DictModeButton->MouseDown = [](int, int) { return true; };
  DictModeButton->MouseUp = [this](int, int) { DictModeButton_MouseUp(); };
  layout_.Add(DictModeButton, {59, 437, 18, 18}, L::kLeft | L::kBottom);

  ConverterModeButton = new Canvas(content_);
  ConverterModeButton->setObjectName("ConverterModeButton");
  ConverterModeButton->SetBackdrop(convertermode());
  ConverterModeButton->MouseDown = [](int, int) { return true; };
  ConverterModeButton->MouseUp = [this](int, int) {
    ConverterModeButton_MouseUp();
  };
  layout_.Add(ConverterModeButton, {77, 437, 19, 18}, L::kLeft | L::kBottom);
  // Mode switching is built but not offered: both buttons stay hidden.
  for (Canvas* button : {DictModeButton, ConverterModeButton}) {
    button->setVisible(false);
    button->setEnabled(false);
  }

  LookUpCanvas = new Canvas(content_);
  LookUpCanvas->setObjectName("LookUpCanvas");
  layout_.Add(LookUpCanvas, {257, 36, 30, 30}, L::kTop | L::kRight);
  LookUpCanvas->MouseDown = [this](int, int) {
    ShowLookUpButton(true);
    return true;
  };
  LookUpCanvas->MouseDrag = [this](int x, int y) {
    LookUpCanvas_MouseDrag(x, y);
  };
  LookUpCanvas->MouseUp = [this](int, int) {
    LookUp();  // wherever the mouse is: dragging off doesn't cancel
    ShowLookUpButton(false);
  };

  for (QWidget* field :
       {static_cast<QWidget*>(CharacterField), static_cast<QWidget*>(TextField),
        static_cast<QWidget*>(ResultField)}) {
    field->installEventFilter(this);
  }
}

// The controls' Open events, before the window's own.
void MainWindow::OpenControls() {
  CurrentField = "CharacterField";  // CharacterField_Open, TextField_Open
  Widget_Open();
  ShowLookUpButton(false);  // LookUpCanvas_Open
}

void MainWindow::Widget_Open() {
  const int position =
      std::max(Settings::MainWindowWidgetHeight(), kWidgetTopLimit);
  layout_.SetTop(Widget, position);
  layout_.SetHeight(TextField,
                    position - layout_.Rect(TextField).top() - kWidgetGap);
  layout_.SetTop(ResultField, position + kWidgetGap);
  layout_.SetHeight(ResultField, Height() - layout_.Rect(ResultField).top() -
                                     kSpaceBelowResult);
}

void MainWindow::Event_Open() {
  OpenControls();
  modeSwitch_->zoomCounter = 0;
  const int width = Settings::MainWindowWidth();
  const int height = Settings::MainWindowHeight();
  if (width > 300 && height > 448) {
    SetSize(width, height);
    mainWindowWidth = width;
    mainWindowHeight = height;
  } else {
    SetSize(300, 449);  // below the least height: the window takes that
  }
  const int left = Settings::MainWindowLeft();
  const int top = Settings::MainWindowTop();
  const bool placed = left > 0 && top > 10;
  if (placed) move(left, top);
  // A window saved maximised, or on a larger screen, or on one that has
  // gone, comes back whole within the screen.
  const QRect fitted = FittedOnScreen(QRect(pos(), size()));
  if (fitted.size() != size()) {
    SetSize(fitted.width(), fitted.height() - MenuBarHeight());
    if (mainWindowWidth != 0) {
      mainWindowWidth = Width();
      mainWindowHeight = Height();
    }
  }
  if (placed && fitted.topLeft() != pos()) move(fitted.topLeft());
  knownPosition_ = pos();
  // Sizes set so far are no user's resizing: the mode is not yet converter.
  knownSize_ = QSize(Width(), Height());
  layout_.SetLeft(DimpleIcon, Width() / 2 - 3 - layout_.Rect(Widget).left());
  SetPreferenceMirrors(MirrorTime::kOpen);
  mode = Mode::kConverter;
  CharacterField->setVisible(false);
  TextField->setVisible(true);
  TextField->setFocus();
  ConverterModeButton->SetBackdrop(convertermode_on());
  WindowMenuManager::Add(this);
}

void MainWindow::SetPreferenceMirrors(MirrorTime time) {
  if (time == MirrorTime::kRun) {
    ShowMultipleReadingsPrefValue = OnOff(Settings::ShowMultipleReadings());
    return;
  }
  indicateTonesPrefValue = OnOff(Settings::IndicateTones());
  PinyinSystemsPrefValue = Settings::PinyinSystems().value_or(SystemSet());
  if (time == MirrorTime::kPreferencesSaved) {
    UseToneNumbersPrefValue = OnOff(Settings::UseToneNumbers());
  }
}

void MainWindow::PreferencesSaved() {
  SetPreferenceMirrors(MirrorTime::kPreferencesSaved);
  UpdateFieldFonts();
  LookUp();
}

int MainWindow::MenuBarHeight() const {
  const QWidget* bar = layout() ? layout()->menuBar() : nullptr;
  return bar ? bar->sizeHint().height() : 0;
}

int MainWindow::Width() const { return width(); }

int MainWindow::Height() const { return height() - MenuBarHeight(); }

void MainWindow::SetSize(int width, int height) {
  const QSize least = content_->minimumSize();
  const QSize most = content_->maximumSize();
  resize(std::clamp(width, least.width(), most.width()),
         std::clamp(height, least.height(), most.height()) + MenuBarHeight());
}

int MainWindow::MinHeight() const { return content_->minimumHeight(); }
int MainWindow::MinWidth() const { return content_->minimumWidth(); }
int MainWindow::MaxWidth() const { return content_->maximumWidth(); }
int MainWindow::MaxHeight() const { return content_->maximumHeight(); }

// In force at once: a window outside the new limits is brought inside now.
void MainWindow::SetLimits(QSize least, QSize most) {
  content_->setMinimumSize(least);
  content_->setMaximumSize(most);
  layout()->activate();
}

void MainWindow::ContentResized(QSize size) {
  layout_.Resize(size);
  if (size == knownSize_) return;
  knownSize_ = size;
  Event_Resized();
}

void MainWindow::Event_Resized() {
  layout_.SetLeft(DimpleIcon, Width() / 2 - 3 - layout_.Rect(Widget).left());
  if (mode == Mode::kConverter) {
    Settings::SetMainWindowWidth(Width());
    Settings::SetMainWindowHeight(Height());
    mainWindowWidth = Width();
    mainWindowHeight = Height();
  }
}

void MainWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  if (!activated_ || pos() == knownPosition_) return;
  knownPosition_ = pos();
  Event_Moved();
}

void MainWindow::Event_Moved() {
  Settings::SetMainWindowLeft(Left());
  Settings::SetMainWindowTop(Top());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  Event_Close();
  event->accept();
}

void MainWindow::Event_Close() {
  Settings::SetMainWindowWidgetHeight(layout_.Rect(Widget).top());
  QCoreApplication::quit();
}

bool MainWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    activated_ = true;
    Event_Activate();
  }
  return QWidget::event(event);
}

void MainWindow::Event_Activate() {
  const std::string title = windowTitle().toStdString();
  for (QAction* item : Menu("WindowMenu")->actions()) {
    item->setChecked(Equals(item->text().toStdString(), title));
  }
}

void MainWindow::Event_EnableMenuItems() {
  MenuItem("FileCloseWindow")->setEnabled(true);
  MenuItem("WindowMinimize")->setEnabled(true);
  MenuItem("WindowZoom")->setEnabled(false);
  MenuItem("WindowBringAllToFront")->setEnabled(true);
}

std::function<bool()> MainWindow::MenuHandler(const QString& item) {
  return FindMenuHandler(
      this, item,
      {{"FileCloseWindow", &MainWindow::_FileCloseWindow_Action},
       {"WindowMinimize", &MainWindow::_WindowMinimize_Action},
       {"WindowBringAllToFront", &MainWindow::_WindowBringAllToFront_Action},
       {"WindowZoom", &MainWindow::_WindowZoom_Action}});
}

bool MainWindow::_FileCloseWindow_Action() {
  QCoreApplication::quit();
  return true;
}

bool MainWindow::_WindowMinimize_Action() {
  WindowMenuManager::Minimize(this);
  return true;
}

bool MainWindow::_WindowBringAllToFront_Action() {
  WindowMenuManager::BringAllToFront();
  return true;
}

bool MainWindow::_WindowZoom_Action() { return true; }  // the item is disabled

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      if (watched == TextField) {
        return TextField_KeyDown(static_cast<const QKeyEvent&>(*event));
      }
      break;
    case QEvent::FocusIn:
      // Both input fields go by one name: input or result is all it tells.
      CurrentField = watched == ResultField ? "ResultField" : "CharacterField";
      break;
    case QEvent::FocusOut:
      CurrentField.clear();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

bool MainWindow::TextField_KeyDown(const QKeyEvent& event) {
  // Read at every key, so that a change in the preferences holds at once.
  const ReturnKey pressReturnTo = Settings::PressReturnTo();
  const bool enter = event.key() == Qt::Key_Enter;  // on the keypad
  const bool ret = event.key() == Qt::Key_Return;
  const bool shift = event.modifiers() & Qt::ShiftModifier;
  if (pressReturnTo == ReturnKey::kAddsNewLine) {
    if (!enter) return false;
  } else {
    if (shift && ret) return false;
    if (!enter && !ret) return false;
  }
  LookUpSequence();
  return true;
}

void MainWindow::LookUpSequence() {
  ResultField->clear();
  ShowLookUpButton(true);
  LookUp();
  ShowLookUpButton(false);
}

void MainWindow::ShowLookUpButton(bool pressed) {
  LookUpCanvas->SetBackdrop(pressed ? lookupbutton_on() : lookupbutton());
  // Painted now: the look-up that follows holds the event loop.
  if (LookUpCanvas->isVisible()) LookUpCanvas->repaint();
}

void MainWindow::LookUpCanvas_MouseDrag(int x, int y) {
  // The edge row and column at 0 count as outside.
  const bool outside = LookUpCanvas->width() <= x ||
                       LookUpCanvas->height() <= y || x < 1 || y < 1;
  LookUpCanvas->SetBackdrop(outside ? lookupbutton() : lookupbutton_on());
}

void MainWindow::SetDataFiles(const DataFiles& files) {
  engine_ = std::make_unique<LookUpEngine>(files);
}

void MainWindow::UpdateFieldFonts() {
  const bool traditional = TraditionalGlyphs();
  CharacterField->setFont(FieldFont(12, traditional));
  ResultField->setFont(FieldFont(16, traditional));
  StaticText1->setFont(FieldFont(11, traditional));
  TextField->setFont(FieldFont(12, traditional));
}

LookUpSettings MainWindow::CurrentSettings() const {
  LookUpSettings settings;
  settings.mode = mode;
  settings.PinyinSystemsPrefValue = PinyinSystemsPrefValue;
  settings.tones = {indicateTonesPrefValue, UseToneNumbersPrefValue,
                    ShowMultipleReadingsPrefValue};
  settings.headers = App::SystemNames();
  settings.contextReadings = Settings::ContextReadings();
  settings.standard = Settings::ReadingStandard();
  return settings;
}

LookUpEngine& MainWindow::Engine() {
  if (!engine_) {
    engine_ = std::make_unique<LookUpEngine>(DataFiles::BesideExecutable());
  }
  return *engine_;
}

void MainWindow::LookUp() {
  const bool segmentation = Settings::ShowSegmentation();
  SetPreferenceMirrors(MirrorTime::kRun);
  LookUpSettings settings = CurrentSettings();
  settings.segmentation = segmentation;

  const bool dictionary = mode == Mode::kDictionary;
  const std::string input = dictionary ? CharacterField->text().toStdString()
                                       : TextField->toPlainText().toStdString();
  (dictionary ? CharacterFieldTemp : TextFieldTemp) = Trim(input);

  std::optional<BusyCursor> busy(std::in_place);  // gone before a message
  const LookUpEngine::Result result = Engine().LookUp(input, settings);
  switch (result.outcome) {
    case LookUpEngine::Outcome::kNothing:
      return;
    case LookUpEngine::Outcome::kTableMissing:
      busy.reset();
      MsgBox(this, kTableMissingMessage);
      return;
    case LookUpEngine::Outcome::kShown:
      break;
  }
  // The layout ends its lines in CR; the field shows them as line ends.
  QString text = QString::fromStdString(result.text);
  text.replace(QChar('\r'), QChar('\n'));
  ResultField->setPlainText(text);
  ResultField->verticalScrollBar()->setValue(0);
  busy.reset();
  ShowPhraseProblems();
}

void MainWindow::ShowPhraseProblems() {
  UserPhrases& phrases = Engine().userPhrases();
  if (!phrases.HasUnreportedProblems()) return;
  phrases.MarkProblemsReported();
  // A few dozen lines say enough; the rest are counted.
  constexpr std::size_t kShown = 30;
  std::string text = App::kPhraseFileProblems() + "\n\n" + phrases.Path();
  const auto& problems = phrases.Problems();
  for (std::size_t i = 0; i < problems.size() && i < kShown; ++i) {
    text += "\n" + Str(static_cast<long>(problems[i].line)) + ": " +
            problems[i].what;
  }
  if (problems.size() > kShown) {
    text += "\n... (" + Str(static_cast<long>(problems.size() - kShown)) + ")";
  }
  MsgBox(this, ToQ(text));
}

bool MainWindow::Widget_MouseDown(int y) {
  Widget->setCursor(HorizontalResizeCursor());
  WidgetClick = y;
  WidgetTop = layout_.Rect(Widget).top();
  TextFieldHeight = layout_.Rect(TextField).height() - y;
  ResultFieldHeight = layout_.Rect(ResultField).height();
  YField = layout_.Rect(ResultField).top();
  return true;
}

void MainWindow::Widget_MouseDrag(int y) {
  int top = layout_.Rect(Widget).top() + y - WidgetClick;
  const int lowest = Height() - kSpaceBelowWidget;
  const bool within = top >= kWidgetTopLimit && top <= lowest;
  if (!within) {
    if (top < kWidgetTopLimit) top = kWidgetTopLimit;
    if (lowest < top) top = lowest;
  }
  layout_.SetTop(Widget, top);
  layout_.SetHeight(TextField, TextFieldHeight + top - WidgetTop + WidgetClick);
  layout_.SetTop(ResultField,
                 within ? top + kWidgetGap : YField + top - WidgetTop);
  layout_.SetHeight(
      ResultField,
      ResultFieldHeight - (layout_.Rect(ResultField).top() - YField));
}

void MainWindow::Widget_MouseUp() {
  const int least =
      std::max(layout_.Rect(Widget).top() + kSpaceBelowWidget, kLeastMinHeight);
  content_->setMinimumHeight(least);
}

void MainWindow::DictModeButton_MouseUp() {
  DictModeButton->SetBackdrop(dictmode_on());
  ConverterModeButton->SetBackdrop(convertermode());
  if (mode == Mode::kConverter) StartModeSwitching();
}

void MainWindow::ConverterModeButton_MouseUp() {
  DictModeButton->SetBackdrop(dictmode());
  ConverterModeButton->SetBackdrop(convertermode_on());
  if (mode == Mode::kDictionary) StartModeSwitching();
}

void MainWindow::StartModeSwitching() { modeSwitch_->Start(); }

void MainWindow::Timer1_Action() { modeSwitch_->Step(); }

// The result field's top moves by `travel` and its bottom stays; the input
// field grows by as much. Taken after any size change of the step, which
// the locks have already passed on.
void MainWindow::MoveFields(int travel) {
  const QRect result = layout_.Rect(ResultField);
  layout_.SetTop(ResultField, result.top() + travel);
  layout_.SetHeight(ResultField, result.height() - travel);
  layout_.SetHeight(CharacterField,
                    layout_.Rect(CharacterField).height() + travel);
}

std::string MainWindow::ResultFieldText() const {
  QString text = ResultField->toPlainText();
  text.replace(QChar('\n'), QChar('\r'));
  return text.toStdString();
}

void MainWindow::SetResultFieldText(const std::string& text) {
  QString shown = QString::fromStdString(text);
  shown.replace(QChar('\r'), QChar('\n'));
  ResultField->setPlainText(shown);
}

void MainWindow::Export() {
  const std::string exportText =
      mode == Mode::kConverter ? TextFieldTemp : CharacterFieldTemp;
  SetPreferenceMirrors(MirrorTime::kRun);
  if (Trim(exportText).empty()) return;

  ExportWindow* dialog = ExportWindow::Instance();
  QWidget* front = dialog->isVisible() ? static_cast<QWidget*>(dialog) : this;
  if (dialog->PopupMenu1->currentIndex() == 0) {
    const QString path =
        GetSaveFolderItem(front, QStringLiteral("Untitled.txt"));
    if (path.isEmpty()) return;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
    const BusyCursor busy;
    // The fields as they are now, TextField also in dictionary mode.
    const std::string text = BuildPlainText(
        TextField->toPlainText().toStdString(), ResultFieldText());
    file.write(text.data(), static_cast<qint64>(text.size()));
    return;
  }

  const QString path =
      GetSaveFolderItem(front, QStringLiteral("Untitled.html"));
  if (path.isEmpty()) return;
  // Made before the table is looked at: without one, it stays empty.
  QFile file(path);
  const bool created = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
  std::optional<BusyCursor> busy(std::in_place);  // gone before a message
  const ExportPage page =
      BuildPhoneticPage(exportText, CurrentSettings(), Engine());
  if (page.status == ExportPage::Status::kTableMissing) {
    busy.reset();
    MsgBox(front, kTableMissingMessage);
    return;
  }
  if (page.status != ExportPage::Status::kDone) return;
  if (!created) {
    busy.reset();
    // Where the file can't be made, say so rather than fail at the write.
    MsgBox(front, QStringLiteral("The page can't be saved in \"%1\": %2.")
                      .arg(path, file.errorString()));
    return;
  }
  file.write(page.text.data(), static_cast<qint64>(page.text.size()));
}

}  // namespace quill
