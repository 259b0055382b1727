// The window's size, place and splitter across starts, and what a first
// start writes to the preferences.
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <pugixml.hpp>

#include "WindowTestSupport.hpp"

using namespace quill;
using namespace quill::testing;

class GeometryTest : public QObject {
  Q_OBJECT

 private:
  MainWindow* Restart() {
    CloseMainWindow();
    return StartMainWindow();
  }
  static int Top(MainWindow* window, const char* control) {
    return window->ControlRect(Control(window, control)).top();
  }

 private slots:
  void init() { prefs_ = std::make_unique<PreferencesFolder>(); }
  void cleanup() {
    CloseMainWindow();
    prefs_.reset();
  }

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
  // not offered.
  void startsInConverterMode() {
    MainWindow* window = StartMainWindow();
    QVERIFY(TextField(window)->isVisible());
    QVERIFY(!Control(window, "CharacterField")->isVisible());
    QVERIFY(!Control(window, "DictModeButton")->isVisible());
    QVERIFY(!Control(window, "ConverterModeButton")->isVisible());
  }

  void savedSize_data() { AddRows("savedSize"); }
  void savedSize() {
    QFETCH(QString, stored);
    const QStringList size = Values(stored);
    if (!size.isEmpty()) {
      prefs_->WriteAll(
          {"MainWindowWidth=" + size[0], "MainWindowHeight=" + size[1]});
    }
    MainWindow* window = StartMainWindow();
    QTEST(QString("%1x%2").arg(window->Width()).arg(window->Height()), "size");
    QCOMPARE(prefs_->Read("MainWindowWidth"), size.value(0));  // none saved
  }

  void savedPosition_data() { AddRows("savedPosition"); }
  void savedPosition() {
    QFETCH(QString, stored);
    const QStringList place = Values(stored);
    prefs_->WriteAll(
        {"MainWindowLeft=" + place[0], "MainWindowTop=" + place[1]});
    MainWindow* window = StartMainWindow();
    const QPoint saved(place[0].toInt(), place[1].toInt());
    QTEST(QString::number(window->pos() == saved), "used");
  }

  // A size and place saved on a larger screen come back within this one.
  void savedGeometryStaysOnTheScreen_data() {
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("top");
    QTest::newRow("far right and down") << "6000"
                                        << "5000";
    QTest::newRow("too large for its place") << "100"
                                             << "50";
  }
  void savedGeometryStaysOnTheScreen() {
    QFETCH(QString, left);
    QFETCH(QString, top);
    prefs_->WriteAll({"MainWindowWidth=5000", "MainWindowHeight=4000",
                      "MainWindowLeft=" + left, "MainWindowTop=" + top});
    MainWindow* window = StartMainWindow();
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(area.contains(QRect(window->pos(), window->size())));
    QCOMPARE(window->width(), area.width());
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

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
};

QUILLMERE_TEST_MAIN(GeometryTest)
#include "GeometryTest.moc"
