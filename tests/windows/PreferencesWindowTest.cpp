// The preferences dialog against a real store in a temporary folder: what it
// shows when it opens, what OK writes and refreshes, and what it refuses.
#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTreeWidget>

#include "DialogsTestSupport.hpp"
#include "WindowTestSupport.hpp"
#include "windows/Dialogs.hpp"
#include "windows/MsgBox.hpp"
#include "windows/PreferencesWindow.hpp"

using namespace quill;
using namespace quill::testing;

class PreferencesWindowTest : public QObject {
  Q_OBJECT

 private:
  PreferencesWindow* Open() {
    quill::ShowPreferencesWindow();
    PreferencesWindow* window = PreferencesWindow::Existing();
    if (window != nullptr) (void)QTest::qWaitForWindowExposed(window);
    return window;
  }

  template <typename T>
  static T* Control(PreferencesWindow* window, const char* name) {
    return window->findChild<T*>(QString::fromLatin1(name));
  }

  // "10101" from the check boxes of the list, in row order.
  static QString ListChecks(PreferencesWindow* window) {
    auto* list = Control<QTreeWidget>(window, "ListBox1");
    QString checks;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
      checks +=
          list->topLevelItem(row)->checkState(0) == Qt::Checked ? '1' : '0';
    }
    return checks;
  }

  void Store(const char* key, const QString& value) {
    prefs_->Write(key, value.toStdString());
  }
  QString Stored(const char* key) {
    return QString::fromStdString(prefs_->Read(key));
  }
  QByteArray FileNow() { return FileBytes(prefs_->FilePath()); }

  // Sets the MainWindow mirrors to values no dialog writes, so that a test
  // sees which of them the dialog touched.
  static void MarkMainWindow() {
    MainWindow* main = MainWindow::Existing();
    main->PinyinSystemsPrefValue = "00000";  // never written: no system
    main->UseToneNumbersPrefValue = "mark";
    main->indicateTonesPrefValue = "mark";
  }

 private slots:
  // Each test starts the program anew on a preferences folder of its own,
  // then takes the file away for the test to fill.
  void init() {
    prefs_ = std::make_unique<PreferencesFolder>();
    messages_.clear();
    SetMsgBoxHandler([this](const QString& text) { messages_ << text; });
    main_ = StartMainWindow();
    main_->SetDataFiles(SmallTable(tableFolder_));
    QFile::remove(QString::fromStdString(prefs_->FilePath()));
  }

  void cleanup() {
    if (PreferencesWindow* window = PreferencesWindow::Existing())
      window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(PreferencesWindow::Existing() == nullptr);
    CloseMainWindow();
    SetMsgBoxHandler({});
    prefs_.reset();
  }

  void listsSystemsInKeyOrder() {
    Store("PinyinSystems", "11111");
    auto* list = Control<QTreeWidget>(Open(), "ListBox1");
    QVERIFY(list != nullptr);
    QCOMPARE(list->columnCount(), 2);
    QCOMPARE(list->headerItem()->text(0), QStringLiteral("On"));
    QCOMPARE(list->headerItem()->text(1), QStringLiteral("Pinyin System"));
    const QStringList names = {"Hanyu Pinyin", "Zhuyin 1 (Bopomofo)",
                               "Zhuyin 2", "Wade-Giles", "Tongyong Pinyin"};
    QCOMPARE(list->topLevelItemCount(), names.size());
    for (int row = 0; row < names.size(); ++row) {
      QCOMPARE(list->topLevelItem(row)->text(1), names[row]);
    }
  }

  // Each control opens from the store; "stored" is key=value pairs.
  void opensFromStore_data() {
    QTest::addColumn<QStringList>("stored");
    QTest::addColumn<QString>("systems");
    QTest::addColumn<bool>("indicateTones");
    QTest::addColumn<bool>("toneNumbers");
    QTest::addColumn<bool>("toneNumbersEnabled");
    QTest::addColumn<bool>("multipleReadings");
    QTest::addColumn<bool>("segmentation");
    QTest::addColumn<bool>("newLine");

    QTest::newRow("no file: only the last system")
        << QStringList() << "00001" << true << false << true << true << false
        << false;
    QTest::newRow("systems by position")
        << QStringList{"PinyinSystems=10101"} << "10101" << true << false
        << true << true << false << false;
    QTest::newRow("missing positions are on")
        << QStringList{"PinyinSystems=01"} << "01111" << true << false << true
        << true << false << false;
    QTest::newRow("only 0 is off")
        << QStringList{"PinyinSystems=0x0 1"} << "01011" << true << false
        << true << true << false << false;
    QTest::newRow("tones off grey the numbers")
        << QStringList{"PinyinSystems=11111", "IndicateTones=0",
                       "UseToneNumbers=1"}
        << "11111" << false << true << false << true << false << false;
    QTest::newRow("tone numbers need exactly 1")
        << QStringList{"PinyinSystems=11111", "UseToneNumbers=yes",
                       "IndicateTones=no"}
        << "11111" << true << false << true << true << false << false;
    QTest::newRow("switches as stored")
        << QStringList{"PinyinSystems=11111", "ShowMultipleReadings=0",
                       "ShowSegmentation=1", "PressReturnTo=1"}
        << "11111" << true << false << true << false << true << true;
    QTest::newRow("segmentation and Return need exactly 1")
        << QStringList{"PinyinSystems=11111", "ShowSegmentation=true",
                       "PressReturnTo=2", "ShowMultipleReadings=x"}
        << "11111" << true << false << true << true << false << false;
  }

  void opensFromStore() {
    QFETCH(QStringList, stored);
    for (const QString& pair : stored) {
      const QString key = pair.section('=', 0, 0);
      Store(key.toLatin1().constData(), pair.section('=', 1));
    }
    PreferencesWindow* window = Open();
    QVERIFY(window != nullptr);

    QTEST(ListChecks(window), "systems");
    QTEST(Control<QCheckBox>(window, "IndicateTonesBox")->isChecked(),
          "indicateTones");
    auto* toneNumbers = Control<QCheckBox>(window, "UseToneNumbersCheckbox");
    QTEST(toneNumbers->isChecked(), "toneNumbers");
    QTEST(toneNumbers->isEnabled(), "toneNumbersEnabled");
    QTEST(Control<QCheckBox>(window, "ShowMultipleReadingsBox")->isChecked(),
          "multipleReadings");
    QTEST(Control<QCheckBox>(window, "ShowSegmentationBox")->isChecked(),
          "segmentation");
    QFETCH(bool, newLine);
    QCOMPARE(
        Control<QRadioButton>(window, "AddANewLineRadioButton")->isChecked(),
        newLine);
    QCOMPARE(
        Control<QRadioButton>(window, "StartLookingUpRadioButton")->isChecked(),
        !newLine);
  }

  // A click on a name leaves the list where it is; a click in the middle of
  // the "On" column works its check box.
  void listKeepsItsCheckBoxesInSight() {
    Store("PinyinSystems", "11111");
    auto* list = Control<QTreeWidget>(Open(), "ListBox1");
    const QRect name = list->visualRect(list->model()->index(2, 1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, name.center());
    QCOMPARE(list->horizontalScrollBar()->value(), 0);
    const QRect on = list->visualRect(list->model()->index(2, 0));
    QVERIFY(list->viewport()->rect().contains(on));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, on.center());
    QCOMPARE(ListChecks(PreferencesWindow::Existing()),
             QStringLiteral("11011"));
  }

  void noSystemRefusesOk() {
    Store("PinyinSystems", "11111");
    MarkMainWindow();
    const QByteArray before = FileNow();
    PreferencesWindow* window = Open();
    auto* list = Control<QTreeWidget>(window, "ListBox1");
    for (int row = 0; row < 5; ++row) ClickRowCheck(list, row);
    QCOMPARE(ListChecks(window), QStringLiteral("00000"));

    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);

    QCOMPARE(messages_,
             QStringList{"Please select at least one pinyin system."});
    QCOMPARE(FileNow(), before);
    QCOMPARE(main_->PinyinSystemsPrefValue.PrefValue(), std::string("00000"));
    QCOMPARE(PreferencesWindow::Existing(), window);
    QVERIFY(window->isVisible());
    QCOMPARE(ListChecks(window), QStringLiteral("00000"));

    // Once a system is on again the same dialog takes the OK.
    ClickRowCheck(list, 3);
    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);
    QCOMPARE(Stored("PinyinSystems"), QStringLiteral("00010"));
  }

  void oneSystemWritesItsPosition_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Hanyu Pinyin") << 0 << "10000";
    QTest::newRow("Zhuyin 2") << 2 << "00100";
    QTest::newRow("Tongyong Pinyin") << 4 << "00001";
  }

  void oneSystemWritesItsPosition() {
    QFETCH(int, row);
    QFETCH(QString, expected);
    Store("PinyinSystems", "11111");
    MarkMainWindow();
    QPointer<PreferencesWindow> window = Open();
    auto* list = Control<QTreeWidget>(window, "ListBox1");
    for (int other = 0; other < 5; ++other) {
      if (other != row) ClickRowCheck(list, other);
    }
    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);

    QCOMPARE(Stored("PinyinSystems"), expected);
    QCOMPARE(QString::fromStdString(main_->PinyinSystemsPrefValue.PrefValue()),
             expected);
    QVERIFY(PreferencesWindow::Existing() == nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(window.isNull());
  }

  void greyedToneNumbersAreStillSaved() {
    Store("PinyinSystems", "11111");
    MarkMainWindow();
    PreferencesWindow* window = Open();
    auto* tones = Control<QCheckBox>(window, "IndicateTonesBox");
    auto* numbers = Control<QCheckBox>(window, "UseToneNumbersCheckbox");
    QVERIFY(numbers->isEnabled());
    ClickIndicator(numbers);
    QVERIFY(numbers->isChecked());
    ClickIndicator(tones);
    QVERIFY(!tones->isChecked());
    QVERIFY(!numbers->isEnabled());
    QVERIFY(numbers->isChecked());
    // A click on the greyed box does nothing.
    ClickIndicator(numbers);
    QVERIFY(numbers->isChecked());

    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);
    QCOMPARE(Stored("UseToneNumbers"), QStringLiteral("1"));
    QCOMPARE(Stored("IndicateTones"), QStringLiteral("0"));
    QCOMPARE(main_->UseToneNumbersPrefValue, std::string("1"));
    QCOMPARE(main_->indicateTonesPrefValue, std::string("0"));
  }

  void okWritesEveryKey() {
    Store("PinyinSystems", "10110");
    Store("ShowSegmentation", "yes");
    MarkMainWindow();
    PreferencesWindow* window = Open();
    ClickIndicator(Control<QCheckBox>(window, "ShowMultipleReadingsBox"));
    ClickIndicator(Control<QCheckBox>(window, "ShowSegmentationBox"));
    ClickIndicator(Control<QRadioButton>(window, "AddANewLineRadioButton"));
    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);

    QCOMPARE(Stored("PinyinSystems"), QStringLiteral("10110"));
    QCOMPARE(Stored("UseToneNumbers"), QStringLiteral("0"));
    QCOMPARE(Stored("IndicateTones"), QStringLiteral("1"));
    QCOMPARE(Stored("ShowMultipleReadings"), QStringLiteral("0"));
    QCOMPARE(Stored("ShowSegmentation"), QStringLiteral("1"));
    QCOMPARE(Stored("PressReturnTo"), QStringLiteral("1"));
    QCOMPARE(Stored("ContextReadings"), QStringLiteral("0"));
    QCOMPARE(Stored("ReadingStandard"), QStringLiteral("0"));
    MainWindow* main = main_;
    QCOMPARE(main->PinyinSystemsPrefValue.PrefValue(), std::string("10110"));
    QCOMPARE(main->UseToneNumbersPrefValue, std::string("0"));
    QCOMPARE(main->indicateTonesPrefValue, std::string("1"));
  }

  void returnKeyChoiceRoundTrips() {
    Store("PinyinSystems", "11111");
    Store("PressReturnTo", "1");
    PreferencesWindow* window = Open();
    ClickIndicator(Control<QRadioButton>(window, "StartLookingUpRadioButton"));
    QVERIFY(
        !Control<QRadioButton>(window, "AddANewLineRadioButton")->isChecked());
    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);
    QCOMPARE(Stored("PressReturnTo"), QStringLiteral("0"));
  }

  void cancelWritesNothing() {
    Store("PinyinSystems", "11111");
    MarkMainWindow();
    const QByteArray before = FileNow();
    PreferencesWindow* window = Open();
    ClickRowCheck(Control<QTreeWidget>(window, "ListBox1"), 1);
    ClickIndicator(Control<QCheckBox>(window, "IndicateTonesBox"));
    ClickIndicator(Control<QRadioButton>(window, "AddANewLineRadioButton"));
    QTest::mouseClick(Control<QPushButton>(window, "CancelButton"),
                      Qt::LeftButton);

    QVERIFY(PreferencesWindow::Existing() == nullptr);
    QCOMPARE(FileNow(), before);
    MainWindow* main = main_;
    QCOMPARE(main->PinyinSystemsPrefValue.PrefValue(), std::string("00000"));
    QCOMPARE(main->indicateTonesPrefValue, std::string("mark"));

    // The next opening reads the store again, not the abandoned choices.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window = Open();
    QCOMPARE(ListChecks(window), QStringLiteral("11111"));
    QVERIFY(Control<QCheckBox>(window, "IndicateTonesBox")->isChecked());
  }

  void escapeCancels() {
    Store("PinyinSystems", "11111");
    const QByteArray before = FileNow();
    PreferencesWindow* window = Open();
    ClickRowCheck(Control<QTreeWidget>(window, "ListBox1"), 0);
    QTest::keyClick(window, Qt::Key_Escape);
    QVERIFY(PreferencesWindow::Existing() == nullptr);
    QCOMPARE(FileNow(), before);
  }

  void tabGoesDownTheDialogThenToTheButtons() {
    Store("PinyinSystems", "11111");
    PreferencesWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    Control<QTreeWidget>(window, "ListBox1")->setFocus();
    QStringList visited;
    for (int key = 0; key < 10; ++key) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      visited << QApplication::focusWidget()->objectName();
    }
    // The two radio buttons are one stop, at the one that is on.
    QCOMPARE(visited,
             (QStringList{"IndicateTonesBox", "UseToneNumbersCheckbox",
                          "ShowMultipleReadingsBox", "ShowSegmentationBox",
                          "StartLookingUpRadioButton", "ContextReadingsBox",
                          "ReadingStandardPopup", "OKButton", "CancelButton",
                          "ListBox1"}));
  }

  void oneInstanceAtATime() {
    Store("PinyinSystems", "11111");
    PreferencesWindow* first = Open();
    ClickRowCheck(Control<QTreeWidget>(first, "ListBox1"), 0);
    // Showing it again brings the same dialog, with its unsaved state.
    PreferencesWindow* second = Open();
    QCOMPARE(second, first);
    QCOMPARE(ListChecks(second), QStringLiteral("01111"));
    int dialogs = 0;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (qobject_cast<PreferencesWindow*>(widget) != nullptr) ++dialogs;
    }
    QCOMPARE(dialogs, 1);
  }

  // OK looks up the input again with the new settings at once.
  void okRefreshesTheResult() {
    Store("PinyinSystems", "11111");
    main_->TextField->setPlainText(QStringLiteral("中"));
    main_->ResultField->setPlainText(QStringLiteral("stale"));
    PreferencesWindow* window = Open();
    auto* list = Control<QTreeWidget>(window, "ListBox1");
    for (int row : {0, 2, 3, 4}) ClickRowCheck(list, row);
    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);

    const QString result = main_->ResultField->toPlainText();
    QVERIFY2(result.contains(QStringLiteral("Zhuyin 1 (Bopomofo)")),
             qPrintable(result));
    QVERIFY(result.contains(QStringLiteral("ㄓㄨㄥ")));
    QVERIFY(!result.contains(QStringLiteral("Hanyu Pinyin")));
    QVERIFY(!result.contains(QStringLiteral("stale")));
    QVERIFY(messages_.isEmpty());
  }

  // The context check box and the standard pop-up change the readings of
  // the result at OK, over a table of two words and two characters.
  void readingControlsChangeTheResultAtOk_data() {
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("context check box") << "ContextReadingsBox"
                                       << "银行"
                                       << "ㄧㄣˊ ㄒㄧㄥˊ"
                                       << "ㄧㄣˊ ㄏㄤˊ";
    QTest::newRow("standard pop-up") << "ReadingStandardPopup"
                                     << "垃圾"
                                     << "ㄌㄚ ㄐㄧ"
                                     << "ㄌㄜˋ ㄙㄜˋ";
  }
  void readingControlsChangeTheResultAtOk() {
    QFETCH(QString, control);
    QFETCH(QString, input);
    QFETCH(QString, before);
    QFETCH(QString, after);
    DataFiles files = SmallTable(tableFolder_);  // then a table of its own
    auto write = [this](const char* name, const char* text) {
      QFile file(tableFolder_.filePath(name));
      QVERIFY(file.open(QIODevice::WriteOnly));
      file.write(text);
    };
    write("zhuyintable",
          "垃   ㄌㄚ  ㄌㄜˋ\n圾   ㄐㄧ\n行   ㄒㄧㄥˊ  ㄏㄤˊ\n银   ㄧㄣˊ\n");
    write("phrasereadings", "银行\tㄧㄣˊ ㄏㄤˊ\t500\n");
    write("taiwanreadings", "圾\tㄙㄜˋ\n垃\tㄌㄜˋ\n");
    files.phrasereadings =
        tableFolder_.filePath("phrasereadings").toStdString();
    files.taiwanreadings =
        tableFolder_.filePath("taiwanreadings").toStdString();
    main_->SetDataFiles(files);
    Store("PinyinSystems", "01000");
    Store("ShowMultipleReadings", "0");
    main_->PinyinSystemsPrefValue = "01000";
    main_->TextField->setPlainText(input);
    main_->LookUp();
    QVERIFY2(main_->ResultField->toPlainText().contains(before),
             qPrintable(main_->ResultField->toPlainText()));

    PreferencesWindow* window = Open();
    QWidget* widget = Control<QWidget>(window, qPrintable(control));
    QVERIFY(widget != nullptr);
    if (auto* box = qobject_cast<QCheckBox*>(widget)) {
      QVERIFY(!box->isChecked());
      ClickIndicator(box);
    } else {
      auto* popup = qobject_cast<QComboBox*>(widget);
      QVERIFY(popup != nullptr);
      QCOMPARE(popup->currentText(), QStringLiteral("Mainland standard"));
      QCOMPARE(popup->itemText(1), QStringLiteral("Taiwan standard"));
      popup->setFocus();
      QTest::keyClick(popup, Qt::Key_Down);
      QCOMPARE(popup->currentIndex(), 1);
    }
    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);
    const QString result = main_->ResultField->toPlainText();
    QVERIFY2(result.contains(after), qPrintable(result));
    QVERIFY(!result.contains(before));
    QVERIFY(messages_.isEmpty());
  }

  // Tone numbers saved in an earlier run take effect only through OK.
  void savedToneNumbersWaitForOk() {
    Store("PinyinSystems", "10000");
    Store("UseToneNumbers", "1");
    main_->PinyinSystemsPrefValue = "10000";
    main_->TextField->setPlainText(QStringLiteral("文"));
    main_->LookUp();
    QVERIFY2(main_->ResultField->toPlainText().contains(QStringLiteral("wén")),
             qPrintable(main_->ResultField->toPlainText()));

    PreferencesWindow* window = Open();
    QVERIFY(Control<QCheckBox>(window, "UseToneNumbersCheckbox")->isChecked());
    QTest::mouseClick(Control<QPushButton>(window, "OKButton"), Qt::LeftButton);
    const QString result = main_->ResultField->toPlainText();
    QVERIFY2(result.contains(QStringLiteral("wen2")), qPrintable(result));
    QVERIFY(!result.contains(QStringLiteral("wén")));
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  QTemporaryDir tableFolder_;
  QStringList messages_;
  MainWindow* main_ = nullptr;
};

QUILLMERE_TEST_MAIN(PreferencesWindowTest)
#include "PreferencesWindowTest.moc"
