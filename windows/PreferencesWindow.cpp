#include "windows/PreferencesWindow.hpp"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QProxyStyle>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <iterator>
#include <optional>
#include <string>

#include "settings/Settings.hpp"
#include "windows/App.hpp"
#include "windows/MainWindow.hpp"
#include "windows/MsgBox.hpp"
#include "windows/OneInstance.hpp"
#include "windows/TextConstants.hpp"

namespace quill {

namespace {

OneInstance<PreferencesWindow> instance;

// Sizes are given in pixels, as the layout was drawn at 72 dpi: a point
// size would grow the notes out of their boxes on a 96 dpi screen.
QFont SizedFont(const QWidget* widget, int pixels) {
  QFont font = widget->font();
  font.setPixelSize(pixels);
  return font;
}

QString Q(const std::string& text) { return QString::fromStdString(text); }

// The system's version for the segmentation check. Linux has no version
// number to compare, so the question fails and the check never refuses.
bool GestaltSystemVersion(long& version) {
  version = 0;
  return false;
}

constexpr long kLeopardVersion = 4176;  // 0x1050, for 10.5.0

// Check boxes in the middle of their cells, where the list's first column
// wants them; the style places them at the left. Drawing and clicking both
// ask for this rectangle.
class CentredCheckStyle : public QProxyStyle {
 public:
  QRect subElementRect(SubElement element, const QStyleOption* option,
                       const QWidget* widget) const override {
    QRect rect = QProxyStyle::subElementRect(element, option, widget);
    if (element == SE_ItemViewItemCheckIndicator) {
      rect.moveLeft(option->rect.left() +
                    (option->rect.width() - rect.width()) / 2);
    }
    return rect;
  }
};

}  // namespace

PreferencesWindow* PreferencesWindow::Instance() {
  return instance.Get([] { return new PreferencesWindow(); });
}

PreferencesWindow* PreferencesWindow::Existing() { return instance.Existing(); }

PreferencesWindow::PreferencesWindow()
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint |
                           Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::ApplicationModal);
  setWindowTitle(Q(App::kQuillmerePreferencesText()));
  setFixedSize(300, 455);
  // A closed dialog is gone for the accessor at once, even though Qt frees
  // it only on the next turn of the event loop.
  connect(this, &QDialog::finished, this, [this] { instance.Forget(this); });

  ListBox1 = new QTreeWidget(this);
  ListBox1->setObjectName("ListBox1");
  ListBox1->setGeometry(20, 14, 260, 134);
  ListBox1->setFont(SizedFont(this, 12));

  OKButton = new QPushButton(Q(App::kOKText()), this);
  OKButton->setObjectName("OKButton");
  OKButton->setGeometry(200, 415, 80, 20);
  OKButton->setDefault(true);

  CancelButton = new QPushButton(Q(App::kCancelText()), this);
  CancelButton->setObjectName("CancelButton");
  CancelButton->setGeometry(110, 415, 80, 20);
  CancelButton->setAutoDefault(false);

  UseToneNumbersCheckbox = new QCheckBox(Q(App::kUseNumbersText()), this);
  UseToneNumbersCheckbox->setObjectName("UseToneNumbersCheckbox");
  UseToneNumbersCheckbox->setGeometry(40, 183, 260, 20);

  IndicateTonesBox = new QCheckBox(Q(App::kIndicateTonesText()), this);
  IndicateTonesBox->setObjectName("IndicateTonesBox");
  IndicateTonesBox->setGeometry(20, 160, 260, 20);
  IndicateTonesBox->setChecked(true);

  ShowMultipleReadingsBox =
      new QCheckBox(Q(App::kShowMultipleReadingsText()), this);
  ShowMultipleReadingsBox->setObjectName("ShowMultipleReadingsBox");
  ShowMultipleReadingsBox->setGeometry(20, 207, 260, 20);
  ShowMultipleReadingsBox->setChecked(true);

  StaticText1 = new QLabel(Q(App::kShowMultipleReadingsNoteText()), this);
  StaticText1->setObjectName("StaticText1");
  StaticText1->setGeometry(41, 228, 239, 38);
  StaticText1->setFont(SizedFont(this, 10));
  StaticText1->setWordWrap(true);
  StaticText1->setAlignment(Qt::AlignLeft | Qt::AlignTop);

  ShowSegmentationBox = new QCheckBox(Q(App::kSegmentIntoWords()), this);
  ShowSegmentationBox->setObjectName("ShowSegmentationBox");
  ShowSegmentationBox->setGeometry(20, 271, 260, 20);
  ShowSegmentationBox->setChecked(true);

  StaticText2 = new QLabel(Q(App::kLeopardIsRequired()), this);
  StaticText2->setObjectName("StaticText2");
  StaticText2->setGeometry(40, 288, 243, 20);
  StaticText2->setFont(SizedFont(this, 10));

  PressReturnToText = new QLabel(Q(App::kPressReturnToText()), this);
  PressReturnToText->setObjectName("PressReturnToText");
  PressReturnToText->setGeometry(20, 311, 168, 20);

  StartLookingUpRadioButton = new QRadioButton(Q(App::kStartLookingUp()), this);
  StartLookingUpRadioButton->setObjectName("StartLookingUpRadioButton");
  StartLookingUpRadioButton->setGeometry(125, 311, 128, 20);
  StartLookingUpRadioButton->setChecked(true);

  AddANewLineRadioButton = new QRadioButton(Q(App::kAddANewLine()), this);
  AddANewLineRadioButton->setObjectName("AddANewLineRadioButton");
  AddANewLineRadioButton->setGeometry(125, 332, 120, 20);

  ContextReadingsBox =
      new QCheckBox(Q(App::kChooseReadingsFromContext()), this);
  ContextReadingsBox->setObjectName("ContextReadingsBox");
  ContextReadingsBox->setGeometry(20, 355, 260, 20);

  ReadingsText = new QLabel(Q(App::kReadingsText()), this);
  ReadingsText->setObjectName("ReadingsText");
  ReadingsText->setGeometry(20, 379, 100, 20);

  ReadingStandardPopup = new QComboBox(this);
  ReadingStandardPopup->setObjectName("ReadingStandardPopup");
  ReadingStandardPopup->setGeometry(125, 378, 155, 22);
  ReadingStandardPopup->addItem(Q(App::kMainlandStandard()));
  ReadingStandardPopup->addItem(Q(App::kTaiwanStandard()));
  ReadingsText->setBuddy(ReadingStandardPopup);

  // Tab goes down the dialog as it is seen, then to OK and Cancel.
  QWidget* const tabOrder[] = {ListBox1,
                               IndicateTonesBox,
                               UseToneNumbersCheckbox,
                               ShowMultipleReadingsBox,
                               ShowSegmentationBox,
                               StartLookingUpRadioButton,
                               AddANewLineRadioButton,
                               ContextReadingsBox,
                               ReadingStandardPopup,
                               OKButton,
                               CancelButton};
  for (std::size_t i = 1; i < std::size(tabOrder); ++i) {
    setTabOrder(tabOrder[i - 1], tabOrder[i]);
  }

  connect(IndicateTonesBox, &QCheckBox::clicked, this,
          &PreferencesWindow::IndicateTonesBox_Action);
  connect(ShowSegmentationBox, &QCheckBox::clicked, this,
          &PreferencesWindow::ShowSegmentationBox_Action);
  connect(OKButton, &QPushButton::clicked, this,
          &PreferencesWindow::OKButton_Action);
  connect(CancelButton, &QPushButton::clicked, this,
          &PreferencesWindow::CancelButton_Action);

  // The controls open in the order they were made, the window after them.
  ListBox1_Open();
  UseToneNumbersCheckbox_Open();
  IndicateTonesBox_Open();
  ShowMultipleReadingsBox_Open();
  ShowSegmentationBox_Open();
  Event_Open();
  ContextReadingsBox_Open();
  ReadingStandardPopup_Open();
}

PreferencesWindow::~PreferencesWindow() { instance.Forget(this); }

void PreferencesWindow::ListBox1_Open() {
  const QString heading =
      Q(App::kOnText() + "\t" + App::kPinyinSystemText() + "\t");
  QStringList labels = heading.split('\t');
  labels.removeLast();  // the heading ends in a tab
  ListBox1->setColumnCount(2);
  ListBox1->setHeaderLabels(labels);
  ListBox1->setRootIsDecorated(false);
  ListBox1->setUniformRowHeights(true);
  ListBox1->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  ListBox1->header()->setStretchLastSection(false);
  ListBox1->header()->setSectionsMovable(false);
  // The check boxes take 15% of the list and the names the rest of its
  // visible width: wider, a click on a name would scroll the list sideways
  // and the check boxes out of sight.
  ListBox1->header()->setStretchLastSection(true);
  ListBox1->setColumnWidth(0, 260 * 15 / 100);
  ListBox1->headerItem()->setTextAlignment(0, Qt::AlignCenter);
  // The focus frame goes round the whole row: round the check box's cell
  // alone it looks like a second, empty box.
  ListBox1->setAllColumnsShowFocus(true);
  auto* checkStyle = new CentredCheckStyle;
  checkStyle->setParent(ListBox1);
  ListBox1->setStyle(checkStyle);

  const int rowHeight = ListBox1->font().pixelSize() + 6;
  const BlockHeaders names = App::SystemNames();
  for (const SystemRow& system : kSystemTable) {
    auto* row = new QTreeWidgetItem(ListBox1);
    row->setText(1, Q(names[system.system]));
    row->setCheckState(0, Qt::Unchecked);
    row->setTextAlignment(0, Qt::AlignCenter);
    row->setSizeHint(0, QSize(0, rowHeight));
  }
  ListBox1->topLevelItem(ListBox1->topLevelItemCount() - 1)
      ->setCheckState(0, Qt::Checked);

  const std::optional<SystemSet> systems = Settings::PinyinSystems();
  // Only reachable before start-up has written its default: the last row
  // alone stays on.
  if (!systems) return;
  for (const SystemRow& system : kSystemTable) {
    ListBox1->topLevelItem(system.position - 1)
        ->setCheckState(
            0, systems->Has(system.system) ? Qt::Checked : Qt::Unchecked);
  }
}

void PreferencesWindow::UseToneNumbersCheckbox_Open() {
  if (Settings::UseToneNumbers()) UseToneNumbersCheckbox->setChecked(true);
}

void PreferencesWindow::IndicateTonesBox_Open() {
  IndicateTonesBox->setChecked(Settings::IndicateTones());
  UseToneNumbersCheckbox->setEnabled(IndicateTonesBox->isChecked());
}

// Tone numbers only mean something while tones are shown. The greyed box
// keeps its value, and OK saves it all the same.
void PreferencesWindow::IndicateTonesBox_Action() {
  UseToneNumbersCheckbox->setEnabled(IndicateTonesBox->isChecked());
}

void PreferencesWindow::ShowMultipleReadingsBox_Open() {
  ShowMultipleReadingsBox->setChecked(Settings::ShowMultipleReadings());
}

void PreferencesWindow::ShowSegmentationBox_Open() {
  if (!Settings::ShowSegmentation()) {
    ShowSegmentationBox->setChecked(false);
    return;
  }
  // On a system too old for segmentation the box still opens checked; the
  // look-up refuses the segmentation itself.
  long version = 0;
  if (ShowSegmentationBox->isChecked() && GestaltSystemVersion(version) &&
      version >= kLeopardVersion) {
    ShowSegmentationBox->setChecked(true);
  }
}

void PreferencesWindow::ShowSegmentationBox_Action() {
  long version = 0;
  if (ShowSegmentationBox->isChecked() && GestaltSystemVersion(version) &&
      version < kLeopardVersion) {
    MsgBox(this,
           QStringLiteral("This feature requires Mac OS X 10.5 Leopard."));
    ShowSegmentationBox->setChecked(false);
  }
}

void PreferencesWindow::Event_Open() {
  const bool newLine = Settings::PressReturnTo() == ReturnKey::kAddsNewLine;
  StartLookingUpRadioButton->setChecked(!newLine);
  AddANewLineRadioButton->setChecked(newLine);
}

void PreferencesWindow::ContextReadingsBox_Open() {
  ContextReadingsBox->setChecked(Settings::ContextReadings());
}

void PreferencesWindow::ReadingStandardPopup_Open() {
  ReadingStandardPopup->setCurrentIndex(
      Settings::ReadingStandard() == ReadingStandard::kTaiwan ? 1 : 0);
}

void PreferencesWindow::OKButton_Action() {
  SystemSet systems;
  for (const SystemRow& system : kSystemTable) {
    const QTreeWidgetItem* row = ListBox1->topLevelItem(system.position - 1);
    systems.Set(system.system, row->checkState(0) == Qt::Checked);
  }
  if (systems.None()) {
    MsgBox(this, Q(App::kPleaseSelectOnePinyinText()));
    return;
  }

  Settings::SetPinyinSystems(systems);
  Settings::SetUseToneNumbers(UseToneNumbersCheckbox->isChecked());
  Settings::SetIndicateTones(IndicateTonesBox->isChecked());
  Settings::SetShowMultipleReadings(ShowMultipleReadingsBox->isChecked());
  Settings::SetShowSegmentation(ShowSegmentationBox->isChecked());

  Settings::SetPressReturnTo(AddANewLineRadioButton->isChecked()
                                 ? ReturnKey::kAddsNewLine
                                 : ReturnKey::kStartsLookUp);

  Settings::SetContextReadings(ContextReadingsBox->isChecked());
  Settings::SetReadingStandard(ReadingStandardPopup->currentIndex() == 1
                                   ? ReadingStandard::kTaiwan
                                   : ReadingStandard::kMainland);

  // The result field shows the new settings at once.
  MainWindow::Instance()->PreferencesSaved();
  close();
}

void PreferencesWindow::CancelButton_Action() { close(); }

}  // namespace quill
