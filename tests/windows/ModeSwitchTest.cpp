// The switch between converter and dictionary mode behind the two mode
// buttons, once a test has shown them: the field the user types in, each
// mode's result and size, and the mode at the next start. Most tests step
// Timer1's event by hand; nothing else turns the event loop in between.
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

#include "WindowTestSupport.hpp"

using namespace quill;
using namespace quill::testing;

class ModeSwitchTest : public QObject {
  Q_OBJECT

 private:
  MainWindow* Start(bool offered = true) {
    window_ = StartMainWindow();
    window_->SetDataFiles(SmallTable(tableFolder_));
    for (const char* name : {"DictModeButton", "ConverterModeButton"}) {
      Control(window_, name)->setVisible(offered);
      Control(window_, name)->setEnabled(offered);
    }
    return window_;
  }
  void Press(const char* button, int ticks = 6) {
    QTest::mouseClick(Control(window_, button), Qt::LeftButton, {},
                      QPoint(8, 8));
    for (int i = 0; i < ticks; ++i) window_->Timer1_Action();
  }
  QLineEdit* CharacterField() const {
    return Control<QLineEdit>(window_, "CharacterField");
  }
  bool InDictionaryMode() const {
    return CharacterField()->isVisible() && !TextField(window_)->isVisible();
  }
  QSize Size() const { return {window_->Width(), window_->Height()}; }

 private slots:
  void init() { prefs_ = std::make_unique<PreferencesFolder>(); }
  void cleanup() {
    CloseMainWindow();
    prefs_.reset();
  }

  // As built, the buttons are hidden and disabled: nothing switches.
  void hiddenButtonsSwitchNothing() {
    Start(false);
    Press("DictModeButton");
    QVERIFY(!InDictionaryMode());
    QCOMPARE(prefs_->Read("DefaultMode"), QString());
  }

  // Each mode has its field, its size and its result back.
  void eachModeGetsItsFieldSizeAndResultBack() {
    prefs_->WriteAll({"MainWindowWidth=700", "MainWindowHeight=650"});
    Start();
    TextField(window_)->setPlainText("中");
    QTest::keyClick(TextField(window_), Qt::Key_Return);
    const QString converterResult = Result(window_);
    Press("DictModeButton");
    QVERIFY(InDictionaryMode());
    QCOMPARE(window_->focusWidget(), CharacterField());
    QCOMPARE(Size(), QSize(300, 453));
    QCOMPARE(window_->MaxHeight(), 453);  // not resizable
    QCOMPARE(Result(window_), QString());
    QCOMPARE(prefs_->Read("DefaultMode"), QString("0"));

    CharacterField()->setText("文");
    QTest::keyClick(CharacterField(), Qt::Key_Return);  // only the button
    QCOMPARE(Result(window_), QString());
    QTest::mouseClick(Control(window_, "LookUpCanvas"), Qt::LeftButton);
    const QString dictionaryResult = Result(window_);
    QVERIFY(dictionaryResult.startsWith("文\n\n"));

    Press("ConverterModeButton");
    QVERIFY(!InDictionaryMode());
    QCOMPARE(window_->focusWidget(), TextField(window_));
    QCOMPARE(Size(), QSize(700, 650));
    QCOMPARE(Result(window_), converterResult);
    QCOMPARE(TextField(window_)->toPlainText(), QString("中"));
    QCOMPARE(prefs_->Read("DefaultMode"), QString("1"));

    Press("DictModeButton");
    QCOMPARE(Result(window_), dictionaryResult);
    QCOMPARE(CharacterField()->text(), QString("文"));
  }

  // The mode is stored at each switch, and the next start is in converter
  // mode all the same.
  void nextStartIsInConverterMode() {
    Start();
    Press("DictModeButton");
    QVERIFY(InDictionaryMode());
    CloseMainWindow();
    Start();
    QVERIFY(!InDictionaryMode());
    QCOMPARE(prefs_->Read("DefaultMode"), QString("0"));
  }

  // Pressed again half-way, the switch ends in the mode last pressed, and
  // the result left behind is the emptied one.
  void secondPressDuringTheSwitch() {
    prefs_->WriteAll({"MainWindowWidth=700", "MainWindowHeight=650"});
    Start();
    TextField(window_)->setPlainText("中");
    QTest::keyClick(TextField(window_), Qt::Key_Return);
    Press("DictModeButton", 2);
    Press("ConverterModeButton", 0);
    Press("DictModeButton", 4);
    QVERIFY(InDictionaryMode());
    QCOMPARE(Size(), QSize(300, 453));
    Press("ConverterModeButton");
    QCOMPARE(Result(window_), QString());
    QCOMPARE(Size(), QSize(560, 600));
  }

  // Left to its timer, the switch runs and stops by itself; with no size
  // saved, converter mode comes back at its least size.
  void timerRunsTheSwitch() {
    Start();
    auto* timer = window_->findChild<QTimer*>("Timer1");
    Press("DictModeButton", 0);
    QTRY_VERIFY(InDictionaryMode() && !timer->isActive());
    Press("ConverterModeButton", 0);
    QTRY_VERIFY(!InDictionaryMode() && !timer->isActive());
    QCOMPARE(Size(), QSize(560, 600));
    QCOMPARE(QSize(window_->MinWidth(), window_->MinHeight()), QSize(560, 600));
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  QTemporaryDir tableFolder_;
  MainWindow* window_ = nullptr;
};

QUILLMERE_TEST_MAIN(ModeSwitchTest)
#include "ModeSwitchTest.moc"
