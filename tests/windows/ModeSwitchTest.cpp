// The switch between converter and dictionary mode behind the two mode
// buttons: what each mode gets back, the window's size and limits, the
// fields' travel, and a press in the middle of the animation.
//
// The buttons are clicked with real mouse events once a test has shown
// them. Most tests then step Timer1's event by hand, so that each step can
// be looked at; nothing else turns the event loop in between.
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

#include "WindowTestSupport.hpp"
#include "windows/Canvas.hpp"
#include "windows/ModeSwitch.hpp"
#include "windows/Pictures.hpp"

using namespace quill;
using namespace quill::testing;

namespace {

bool Shows(const Canvas* canvas, const QPixmap& picture) {
  return canvas->Backdrop().cacheKey() == picture.cacheKey();
}

void Press(Canvas* button) {
  QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, 8));
}

void Tick(MainWindow* window, int ticks) {
  for (int i = 0; i < ticks; ++i) window->Timer1_Action();
}

// The whole switch: four moving steps, the settling one, the stopping one.
constexpr int kTicks = 6;

}  // namespace

class ModeSwitchTest : public QObject {
  Q_OBJECT

 private:
  MainWindow* Start() {
    window_ = StartMainWindow();
    window_->SetDataFiles(SmallTable(tableFolder_));
    for (Canvas* button :
         {window_->DictModeButton, window_->ConverterModeButton}) {
      button->setVisible(true);
      button->setEnabled(true);
    }
    return window_;
  }

  QSize Size() const { return {window_->Width(), window_->Height()}; }
  QSize Least() const { return {window_->MinWidth(), window_->MinHeight()}; }
  QSize Most() const { return {window_->MaxWidth(), window_->MaxHeight()}; }
  QString Result() const { return window_->ResultField->toPlainText(); }
  QRect Rect(const QWidget* control) const {
    return window_->ControlRect(control);
  }
  QString Stored(const char* key) const {
    return QString::fromStdString(prefs_->Read(key));
  }

 private slots:
  void init() { prefs_ = std::make_unique<PreferencesFolder>(); }
  void cleanup() {
    CloseMainWindow();
    prefs_.reset();
  }

  // As built, the buttons are hidden and disabled: the program stays in
  // converter mode whatever reaches them.
  void hiddenButtonsSwitchNothing() {
    MainWindow* window = StartMainWindow();
    Press(window->DictModeButton);
    QCOMPARE(window->mode, Mode::kConverter);
    QVERIFY(!window->Switch().Timer1->isActive());
    QVERIFY(Shows(window->DictModeButton, dictmode()));
    QCOMPARE(Stored("DefaultMode"), QString());
  }

  // The pictures follow the press even when the mode already agrees.
  void pressInTheModeItShowsOnlyChangesPictures() {
    MainWindow* window = Start();
    QVERIFY(Shows(window->ConverterModeButton, convertermode_on()));
    Press(window->ConverterModeButton);
    QVERIFY(Shows(window->DictModeButton, dictmode()));
    QVERIFY(Shows(window->ConverterModeButton, convertermode_on()));
    QVERIFY(!window->Switch().Timer1->isActive());
    QCOMPARE(window->mode, Mode::kConverter);
  }

  void eachModeGetsItsResultAndLimitsBack() {
    prefs_->Write("MainWindowWidth", "700");
    prefs_->Write("MainWindowHeight", "650");
    MainWindow* window = Start();
    window->TextField->setPlainText("中");
    QTest::keyClick(window->TextField, Qt::Key_Return);
    const QString converterResult = Result();
    QVERIFY(converterResult.startsWith("Hanyu Pinyin\n"));

    Press(window->DictModeButton);
    QVERIFY(Shows(window->DictModeButton, dictmode_on()));
    QVERIFY(Shows(window->ConverterModeButton, convertermode()));
    QVERIFY(window->Switch().Timer1->isActive());
    QCOMPARE(window->Switch().Timer1->interval(), 1);
    QCOMPARE(Result(), QString());  // empty while the fields travel
    QCOMPARE(Stored("DefaultMode"), QString("0"));
    QVERIFY(window->CharacterField->isVisible());
    QVERIFY(!window->TextField->isVisible());
    Tick(window, kTicks - 2);
    QCOMPARE(window->mode,
             Mode::kConverter);  // changes only at the settling step
    QCOMPARE(Result(), QString());
    Tick(window, 1);
    QCOMPARE(window->mode, Mode::kDictionary);
    QVERIFY(window->Switch().Timer1->isActive());
    Tick(window, 1);
    QVERIFY(!window->Switch().Timer1->isActive());
    QCOMPARE(window->Switch().zoomCounter, 0);

    QCOMPARE(Size(), QSize(300, 453));
    QCOMPARE(Least(), QSize(300, 453));
    QCOMPARE(Most(), QSize(300, 453));
    QCOMPARE(Result(), QString());  // dictionary mode had no result yet
    QCOMPARE(window->focusWidget(), window->CharacterField);
    // The converter size is kept; the stored one is what the shrinking
    // steps wrote.
    QCOMPARE(window->mainWindowWidth, 700);
    QCOMPARE(window->mainWindowHeight, 650);
    QCOMPARE(Stored("MainWindowWidth"), QString("300"));
    QCOMPARE(Stored("MainWindowHeight"), QString("453"));

    window->CharacterField->setText("文");
    QTest::mouseClick(window->LookUpCanvas, Qt::LeftButton, {}, QPoint(15, 15));
    const QString dictionaryResult = Result();
    QVERIFY(dictionaryResult.startsWith("文\n\n"));

    Press(window->ConverterModeButton);
    QVERIFY(Shows(window->DictModeButton, dictmode()));
    QVERIFY(Shows(window->ConverterModeButton, convertermode_on()));
    QCOMPARE(Stored("DefaultMode"), QString("1"));
    QCOMPARE(Result(), QString());
    Tick(window, kTicks);
    QVERIFY(!window->Switch().Timer1->isActive());
    QCOMPARE(window->mode, Mode::kConverter);
    QCOMPARE(Size(), QSize(700, 650));
    QCOMPARE(Least(), QSize(560, 600));
    QCOMPARE(Most(), QSize(32000, 32000));
    QCOMPARE(Result(), converterResult);
    QVERIFY(window->TextField->isVisible());
    QVERIFY(!window->CharacterField->isVisible());
    QCOMPARE(window->focusWidget(), window->TextField);
    QCOMPARE(window->TextField->toPlainText(), QString("中"));
    // Growing happens in dictionary mode, which saves no size.
    QCOMPARE(Stored("MainWindowWidth"), QString("300"));

    Press(window->DictModeButton);
    Tick(window, kTicks);
    QCOMPARE(Result(), dictionaryResult);
    QCOMPARE(window->CharacterField->text(), QString("文"));
    QCOMPARE(Stored("DefaultMode"), QString("0"));
  }

  // Linear steps from the original size to 300 by 453.
  void shrinkingStepsAreEven() {
    prefs_->Write("MainWindowWidth", "700");
    prefs_->Write("MainWindowHeight", "650");
    MainWindow* window = Start();
    const int below = window->Height() - Rect(window->ResultField).bottom();
    Press(window->DictModeButton);
    for (int step = 1; step <= 4; ++step) {
      Tick(window, 1);
      QCOMPARE(window->Width(), 700 - 100 * step);
      QCOMPARE(window->Height() - Rect(window->ResultField).bottom(), below);
      const double height = 650 - 49.25 * step;
      QVERIFY2(qAbs(window->Height() - height) <= 1.0,
               qPrintable(QString::number(window->Height())));
    }
    Tick(window, 1);
    QCOMPARE(Size(), QSize(300, 453));
  }

  void windowOf300By453KeepsItsSizeWhileTheFieldsTravel() {
    MainWindow* window = Start();
    QCOMPARE(Size(), QSize(300, 453));
    const QRect result = Rect(window->ResultField);
    const QRect input = Rect(window->TextField);
    Press(window->DictModeButton);
    QCOMPARE(Rect(window->CharacterField).size(), input.size());
    for (int step = 1; step <= kTicks; ++step) {
      Tick(window, 1);
      QCOMPARE(Size(), QSize(300, 453));
      const int travel = 35 * qMin(step, 4);
      QCOMPARE(Rect(window->ResultField).top(), result.top() - travel);
      QCOMPARE(Rect(window->ResultField).height(), result.height() + travel);
      QCOMPARE(Rect(window->CharacterField).height(), input.height() - travel);
    }
    QCOMPARE(window->mode, Mode::kDictionary);
    const QRect splitter = Rect(window->Widget);

    Press(window->ConverterModeButton);
    Tick(window, kTicks);
    QCOMPARE(Size(), QSize(560, 600));
    QCOMPARE(Rect(window->ResultField).top(), result.top());
    QCOMPARE(Rect(window->TextField).top(), input.top());
    QCOMPARE(Rect(window->TextField).height(), input.height());
    // The field's bottom went along with the window's.
    QCOMPARE(Rect(window->ResultField).bottom(), result.bottom() + 600 - 453);
    // The splitter is not part of the animation.
    QCOMPARE(Rect(window->Widget).top(), splitter.top());
  }

  // No size was ever saved, so the converter size is 0 by 0 and the
  // targets are the least converter size.
  void leavingDictionaryWithNoSavedSizeTargets560By600() {
    MainWindow* window = Start();
    QCOMPARE(window->mainWindowWidth, 0);
    Press(window->DictModeButton);
    Tick(window, kTicks);
    QCOMPARE(window->mainWindowWidth, 0);
    QCOMPARE(window->mainWindowHeight, 0);

    Press(window->ConverterModeButton);
    Tick(window, 1);
    QCOMPARE(window->Width(), 300 + 65);
    QVERIFY(qAbs(window->Height() - (453 + 36.75)) <= 1.0);
    Tick(window, kTicks - 1);
    QCOMPARE(Size(), QSize(560, 600));
    QCOMPARE(Least(), QSize(560, 600));
    QCOMPARE(Stored("MainWindowWidth"), QString());
  }

  // Pressed again before the mode has changed: the button of the mode being
  // left changes the pictures only; that of the target mode starts over
  // from the present size and saves the emptied result over the kept one.
  void secondPressDuringTheAnimation() {
    prefs_->Write("MainWindowWidth", "700");
    prefs_->Write("MainWindowHeight", "650");
    MainWindow* window = Start();
    window->TextField->setPlainText("中");
    window->LookUp();
    // Kept as the look-up made it, with CR line ends.
    const std::string converterResult =
        Result().replace('\n', '\r').toStdString();
    QVERIFY(converterResult.find('\r') != std::string::npos);
    Press(window->DictModeButton);
    Tick(window, 2);
    QCOMPARE(window->Width(), 500);
    const int height = window->Height();

    Press(window->ConverterModeButton);
    QVERIFY(Shows(window->DictModeButton, dictmode()));
    QVERIFY(Shows(window->ConverterModeButton, convertermode_on()));
    QCOMPARE(window->Switch().TextFieldResultTemp, converterResult);
    QCOMPARE(window->Switch().originalWidth, 700);
    QCOMPARE(window->Switch().zoomCounter, 2);

    prefs_->Write("DefaultMode", "x");
    Press(window->DictModeButton);
    QCOMPARE(Stored("DefaultMode"), QString("0"));
    QCOMPARE(window->Switch().originalWidth, 500);
    QCOMPARE(window->Switch().originalHeight, height);
    QCOMPARE(window->Switch().TextFieldResultTemp, std::string());
    QCOMPARE(window->Switch().windowWidthTemp,
             500);                              // what the shrinking saved
    QCOMPARE(window->Switch().zoomCounter, 2);  // the count goes on

    Tick(window, kTicks - 2);
    QVERIFY(!window->Switch().Timer1->isActive());
    QCOMPARE(window->mode, Mode::kDictionary);
    QCOMPARE(Size(), QSize(300, 453));
    // Four moving steps in all, not six.
    QCOMPARE(Rect(window->ResultField).top(), 124 - 140);

    Press(window->ConverterModeButton);
    Tick(window, kTicks);
    QCOMPARE(Result(), QString());  // the converter result is lost
    QCOMPARE(Size(), QSize(560, 600));
  }

  // Left to the timer, the switch runs and stops by itself.
  void timerRunsTheSwitch() {
    MainWindow* window = Start();
    Press(window->DictModeButton);
    QTRY_COMPARE(window->mode, Mode::kDictionary);
    QTRY_VERIFY(!window->Switch().Timer1->isActive());
    QCOMPARE(window->Switch().zoomCounter, 0);
    Press(window->ConverterModeButton);
    QTRY_COMPARE(window->mode, Mode::kConverter);
    QTRY_VERIFY(!window->Switch().Timer1->isActive());
    QCOMPARE(Size(), QSize(560, 600));
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  QTemporaryDir tableFolder_;
  MainWindow* window_ = nullptr;
};

QUILLMERE_TEST_MAIN(ModeSwitchTest)
#include "ModeSwitchTest.moc"
