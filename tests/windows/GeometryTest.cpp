// The main window's size, place and splitter across starts, what a first
// start writes to the preferences, and the switch between converter and
// dictionary mode behind the two mode buttons, once a test has shown them:
// the field the user types in, each mode's result and size. The switch's
// tests step Timer1's event by hand, but for one.
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <pugixml.hpp>

#include "WindowTestSupport.hpp"

using namespace quill;
using namespace quill::testing;

class GeometryTest : public WindowTest {
  Q_OBJECT

 private:
  MainWindow* Restart() {
    CloseMainWindow();
    return StartMainWindow();
  }
  static int Top(MainWindow* window, const char* control) {
    return window->ControlRect(Control(window, control)).top();
  }
  // Each test starts the program itself.
  void Begin() override {}
  MainWindow* Start(bool offered = true) {
    WindowTest::Start();
    for (const char* name : {"DictModeButton", "ConverterModeButton"}) {
      Control(main_, name)->setVisible(offered);
      Control(main_, name)->setEnabled(offered);
    }
    return main_;
  }
  void Press(const char* button, int ticks = 6) {
    QTest::mouseClick(Control(main_, button), Qt::LeftButton, {}, QPoint(8, 8));
    for (int i = 0; i < ticks; ++i) main_->Timer1_Action();
  }
  QLineEdit* CharacterField() const {
    return Control<QLineEdit>(main_, "CharacterField");
  }
  bool InDictionaryMode() const {
    return CharacterField()->isVisible() && !TextField(main_)->isVisible();
  }
  QSize Size() const { return {main_->Width(), main_->Height()}; }

 private slots:

  // The systems' default alone, besides the font size; a stored value
  // stays as it is.
  void startWritesOnlyTheDefaultSystems() {
    StartMainWindow();
    pugi::xml_document document;
    document.load_file(prefs_->FilePath().c_str());
    QStringList children;
    for (const auto child : document.document_element().children()) {
      children << QString("%1=%2").arg(child.name(), child.child_value());
    }
    QCOMPARE(children,
             (QStringList{"MainFontSize=11111", "PinyinSystems=11111"}));
    prefs_->Write("PinyinSystems", "00000");
    Restart();
    QCOMPARE(prefs_->Read("PinyinSystems"), QString("00000"));
  }

  // Converter mode, whose field is the text field; the mode buttons are
  // hidden and disabled, and nothing switches.
  void startsInConverterMode() {
    Start(false);
    QVERIFY(!InDictionaryMode() && TextField(main_)->isVisible());
    QVERIFY(!Control(main_, "DictModeButton")->isVisible());
    QVERIFY(!Control(main_, "ConverterModeButton")->isVisible());
    Press("DictModeButton");
    QVERIFY(!InDictionaryMode());
    QCOMPARE(prefs_->Read("DefaultMode"), QString());
  }

  // The content's size and the window's place at a start, from the saved
  // width, height, left and top; a value saved stays as it is.
  void savedGeometry_data() { AddRows("savedGeometry"); }
  void savedGeometry() {
    QFETCH(QString, stored);
    const QStringList keys = {"Width", "Height", "Left", "Top"};
    const QStringList values = stored.split(',');
    for (int i = 0; i < 4; ++i) {
      if (values[i] != "-") prefs_->Write("MainWindow" + keys[i], values[i]);
    }
    MainWindow* window = StartMainWindow();
    QTEST(QString("%1x%2").arg(window->Width()).arg(window->Height()), "size");
    QTEST(QString("%1,%2").arg(window->x()).arg(window->y()), "place");
    for (int i = 0; i < 4; ++i) {
      QCOMPARE(prefs_->Read(qPrintable("MainWindow" + keys[i])),
               values[i] == "-" ? QString() : values[i]);
    }
  }

  // Resized and moved by the user, the window comes back so.
  void sizeAndPlaceSurviveARestart() {
    MainWindow* window = StartMainWindow();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    window->SetSize(520, 610);
    window->move(140, 150);
    QTRY_COMPARE(prefs_->Read("MainWindowTop"), QString("150"));
    // The grip stays in the middle of the splitter.
    QCOMPARE(Control(window, "DimpleIcon")->mapTo(window, QPoint()).x(),
             520 / 2 - 3);
    window = Restart();
    QCOMPARE(QSize(window->Width(), window->Height()), QSize(520, 610));
    QCOMPARE(window->pos(), QPoint(140, 150));
  }

  void splitterOpensAtItsSavedPlace_data() {
    AddRows("splitterOpensAtItsSavedPlace");
  }
  void splitterOpensAtItsSavedPlace() {
    QFETCH(QString, saved);
    QFETCH(QString, top);
    if (!saved.isEmpty()) prefs_->Write("MainWindowWidgetHeight", saved);
    MainWindow* window = StartMainWindow();
    QCOMPARE(Top(window, "Widget"), top.toInt());
    QCOMPARE(window->ControlRect(TextField(window)).bottom() + 1,
             top.toInt() - 10);
    QCOMPARE(Top(window, "ResultField"), top.toInt() + 10);
  }

  // Dragged within its limits, the splitter raises the window's least
  // height, and stays where it was left at the next start.
  void splitterDragSurvivesARestart() {
    prefs_->WriteAll({"MainWindowWidth=400", "MainWindowHeight=600"});
    MainWindow* window = StartMainWindow();
    auto* bar = Control<Canvas>(window, "Widget");
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(20, 4));
    DragTo(bar, QPoint(20, 4 - 300));
    QCOMPARE(Top(window, "Widget"), 114);
    DragTo(bar, QPoint(20, 4 + 900));
    QCOMPARE(Top(window, "Widget"), 600 - 150);
    DragTo(bar, QPoint(20, 4 - 50));
    QCOMPARE(Top(window, "Widget"), 400);
    QCOMPARE(Top(window, "ResultField"), 410);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(20, 4));
    QCOMPARE(window->MinHeight(), 550);
    window = Restart();
    QCOMPARE(Top(window, "Widget"), 400);
  }

  // Each mode has its field, its size and its result back.
  void eachModeGetsItsFieldSizeAndResultBack() {
    prefs_->WriteAll({"MainWindowWidth=700", "MainWindowHeight=650"});
    Start();
    TextField(main_)->setPlainText("中");
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    const QString converterResult = Result(main_);
    Press("DictModeButton");
    QVERIFY(InDictionaryMode());
    QCOMPARE(main_->focusWidget(), CharacterField());
    QCOMPARE(Size(), QSize(300, 453));
    QCOMPARE(main_->MaxHeight(), 453);  // not resizable
    QCOMPARE(Result(main_), QString());
    QCOMPARE(prefs_->Read("DefaultMode"), QString("0"));

    CharacterField()->setText("文");
    QTest::keyClick(CharacterField(), Qt::Key_Return);  // only the button
    QCOMPARE(Result(main_), QString());
    QTest::mouseClick(Control(main_, "LookUpCanvas"), Qt::LeftButton);
    const QString dictionaryResult = Result(main_);
    QVERIFY(dictionaryResult.startsWith("文\n\n"));

    Press("ConverterModeButton");
    QVERIFY(!InDictionaryMode());
    QCOMPARE(main_->focusWidget(), TextField(main_));
    QCOMPARE(Size(), QSize(700, 650));
    QCOMPARE(Result(main_), converterResult);
    QCOMPARE(TextField(main_)->toPlainText(), QString("中"));
    QCOMPARE(prefs_->Read("DefaultMode"), QString("1"));

    Press("DictModeButton");
    QCOMPARE(Result(main_), dictionaryResult);
    QCOMPARE(CharacterField()->text(), QString("文"));
    // The mode is stored, and the next start is in converter mode anyway.
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
    TextField(main_)->setPlainText("中");
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    Press("DictModeButton", 2);
    Press("ConverterModeButton", 0);
    Press("DictModeButton", 4);
    QVERIFY(InDictionaryMode());
    QCOMPARE(Size(), QSize(300, 453));
    Press("ConverterModeButton");
    QCOMPARE(Result(main_), QString());
    QCOMPARE(Size(), QSize(560, 600));
  }

  // Left to its timer, the switch runs and stops by itself; with no size
  // saved, converter mode comes back at its least size.
  void timerRunsTheSwitch() {
    Start();
    auto* timer = main_->findChild<QTimer*>("Timer1");
    Press("DictModeButton", 0);
    QTRY_VERIFY(InDictionaryMode() && !timer->isActive());
    Press("ConverterModeButton", 0);
    QTRY_VERIFY(!InDictionaryMode() && !timer->isActive());
    QCOMPARE(Size(), QSize(560, 600));
    QCOMPARE(QSize(main_->MinWidth(), main_->MinHeight()), QSize(560, 600));
  }
};

QUILLMERE_TEST_MAIN(GeometryTest)
#include "GeometryTest.moc"
