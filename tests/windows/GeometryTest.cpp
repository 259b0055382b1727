// The window's size and place across starts, the splitter, and what a
// start writes to the preferences.
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTest>
#include <pugixml.hpp>

#include "WindowTestSupport.hpp"
#include "windows/Canvas.hpp"

using namespace quill;
using namespace quill::testing;

namespace {

// The children of the preferences file's document element, name=value.
QStringList FileChildren(const PreferencesFolder& prefs) {
  pugi::xml_document document;
  document.load_file(prefs.FilePath().c_str());
  QStringList children;
  for (const auto child : document.document_element().children()) {
    children << QString::fromUtf8(child.name()) + "=" +
                    QString::fromUtf8(child.child_value());
  }
  return children;
}

// A drag of the mouse with the left button held, as the splitter gets it.
void DragTo(QWidget* widget, QPoint point) {
  QMouseEvent move(QEvent::MouseMove, point, widget->mapToGlobal(point),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(widget, &move);
}

}  // namespace

class GeometryTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { prefs_ = std::make_unique<PreferencesFolder>(); }
  void cleanup() {
    CloseMainWindow();
    prefs_.reset();
  }

  void firstStartWritesTheDefaultAlone() {
    QVERIFY(!prefs_->FileExists());
    StartMainWindow();
    QCoreApplication::processEvents();
    QCOMPARE(FileChildren(*prefs_),
             (QStringList{"MainFontSize=11111", "PinyinSystems=11111"}));
  }

  void storedSystemsStayAsTheyAre() {
    prefs_->Write("PinyinSystems", "00000");
    MainWindow* window = StartMainWindow();
    QCOMPARE(prefs_->Read("PinyinSystems"), std::string("00000"));
    QCOMPARE(window->PinyinSystemsPrefValue.PrefValue(), std::string("00000"));
  }

  void toneNumbersWaitForThePreferencesWindow() {
    prefs_->Write("UseToneNumbers", "1");
    prefs_->Write("IndicateTones", "0");
    MainWindow* window = StartMainWindow();
    QCOMPARE(window->UseToneNumbersPrefValue, std::string());
    QCOMPARE(window->indicateTonesPrefValue, std::string("0"));
    QCOMPARE(window->mode, Mode::kConverter);
    QVERIFY(window->TextField->isVisible());
    QVERIFY(!window->CharacterField->isVisible());
    QVERIFY(!window->DictModeButton->isVisible() &&
            !window->DictModeButton->isEnabled());
    QVERIFY(!window->ConverterModeButton->isVisible());
  }

  void savedSize_data() {
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<int>("expectedWidth");
    QTest::addColumn<int>("expectedHeight");
    QTest::addColumn<int>("remembered");  // mainWindowWidth afterwards
    QTest::newRow("none") << ""
                          << "" << 300 << 453 << 0;
    QTest::newRow("300 by 600: width not over 300") << "300"
                                                    << "600" << 300 << 453 << 0;
    QTest::newRow("301 by 449: used") << "301"
                                      << "449" << 301 << 453 << 301;
    QTest::newRow("640 by 448: height not over 448")
        << "640"
        << "448" << 300 << 453 << 0;
    QTest::newRow("640 by 700") << "640"
                                << "700" << 640 << 700 << 640;
    QTest::newRow("not numbers") << "wide"
                                 << "tall" << 300 << 453 << 0;
  }
  void savedSize() {
    QFETCH(QString, width);
    QFETCH(QString, height);
    QFETCH(int, expectedWidth);
    QFETCH(int, expectedHeight);
    QFETCH(int, remembered);
    if (!width.isEmpty()) prefs_->Write("MainWindowWidth", width.toStdString());
    if (!height.isEmpty())
      prefs_->Write("MainWindowHeight", height.toStdString());
    MainWindow* window = StartMainWindow();
    QCOMPARE(window->Width(), expectedWidth);
    QCOMPARE(window->Height(), expectedHeight);
    QCOMPARE(window->mainWindowWidth, remembered);
    // The start itself saves no size.
    QCOMPARE(prefs_->Read("MainWindowWidth"), width.toStdString());
  }

  void savedPosition_data() {
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("top");
    QTest::addColumn<bool>("used");
    QTest::newRow("valid") << "120"
                           << "130" << true;
    QTest::newRow("left 0") << "0"
                            << "130" << false;
    QTest::newRow("top 10") << "120"
                            << "10" << false;
    QTest::newRow("top 11") << "120"
                            << "11" << true;
  }
  void savedPosition() {
    QFETCH(QString, left);
    QFETCH(QString, top);
    QFETCH(bool, used);
    prefs_->Write("MainWindowLeft", left.toStdString());
    prefs_->Write("MainWindowTop", top.toStdString());
    MainWindow* window = StartMainWindow();
    const QPoint wanted(left.toInt(), top.toInt());
    QCOMPARE(window->pos() == wanted, used);
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
    prefs_->Write("MainWindowWidth", "5000");
    prefs_->Write("MainWindowHeight", "4000");
    prefs_->Write("MainWindowLeft", left.toStdString());
    prefs_->Write("MainWindowTop", top.toStdString());
    MainWindow* window = StartMainWindow();
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect shown(window->pos(), window->size());
    QVERIFY2(area.contains(shown), qPrintable(QStringLiteral("%1,%2 %3x%4")
                                                  .arg(shown.x())
                                                  .arg(shown.y())
                                                  .arg(shown.width())
                                                  .arg(shown.height())));
    QCOMPARE(window->width(), area.width());
    QCOMPARE(window->mainWindowWidth, area.width());
  }

  void resizingSavesTheSize() {
    MainWindow* window = StartMainWindow();
    window->SetSize(520, 610);
    QTRY_COMPARE(prefs_->Read("MainWindowHeight"), std::string("610"));
    QCOMPARE(prefs_->Read("MainWindowWidth"), std::string("520"));
    QCOMPARE(window->mainWindowWidth, 520);
    // The grip stays in the middle of the splitter.
    QCOMPARE(window->DimpleIcon->mapTo(window, QPoint()).x(), 520 / 2 - 3);
    // ResultField follows all four edges.
    QCOMPARE(window->ControlRect(window->ResultField).width(), 302 + 220);
  }

  void movingSavesThePosition() {
    MainWindow* window = StartMainWindow();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    window->move(140, 150);
    QTRY_COMPARE(prefs_->Read("MainWindowTop"), std::string("150"));
    QCOMPARE(prefs_->Read("MainWindowLeft"), std::string("140"));
  }

  void splitterOpensAtItsSavedPlace_data() {
    QTest::addColumn<QString>("saved");
    QTest::addColumn<int>("top");
    QTest::newRow("none") << "" << 114;
    QTest::newRow("under the floor") << "50" << 114;
    QTest::newRow("200") << "200" << 200;
    QTest::newRow("below the window") << "900" << 900;
  }
  void splitterOpensAtItsSavedPlace() {
    QFETCH(QString, saved);
    QFETCH(int, top);
    if (!saved.isEmpty())
      prefs_->Write("MainWindowWidgetHeight", saved.toStdString());
    MainWindow* window = StartMainWindow();
    QCOMPARE(window->ControlRect(window->Widget).top(), top);
    QCOMPARE(window->ControlRect(window->TextField).height(), top - 38 - 10);
    QCOMPARE(window->ControlRect(window->ResultField).top(), top + 10);
    QCOMPARE(window->ControlRect(window->ResultField).bottom() + 1,
             window->Height() - 22);
    QCOMPARE(window->MinHeight(), 453);
  }

  void splitterDragStopsAtItsLimits() {
    MainWindow* window = StartMainWindow();
    Canvas* bar = window->Widget;
    const int resultBottom = window->ControlRect(window->ResultField).bottom();
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(20, 4));
    DragTo(bar, QPoint(20, 4 - 300));
    QCOMPARE(window->ControlRect(bar).top(), 114);
    QCOMPARE(window->ControlRect(window->TextField).height(), 66);
    QCOMPARE(window->ControlRect(window->ResultField).top(), 124);
    DragTo(bar, QPoint(20, 4 + 500));
    QCOMPARE(window->ControlRect(bar).top(), 453 - 150);
    QCOMPARE(window->ControlRect(window->ResultField).bottom(), resultBottom);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(20, 4));
    QCOMPARE(window->MinHeight(), 453);
  }

  void splitterReleaseRaisesTheLeastHeight() {
    prefs_->Write("MainWindowWidth", "400");
    prefs_->Write("MainWindowHeight", "600");
    MainWindow* window = StartMainWindow();
    Canvas* bar = window->Widget;
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(20, 5));
    DragTo(bar, QPoint(20, 5 + 400 - 114));
    QCOMPARE(window->ControlRect(bar).top(), 400);
    QCOMPARE(window->ControlRect(window->TextField).height(), 66 + 400 - 114);
    QCOMPARE(window->ControlRect(window->ResultField).top(), 410);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(20, 5));
    QCOMPARE(window->MinHeight(), 550);
  }

  void closingSavesTheSplitter() {
    prefs_->Write("MainWindowWidgetHeight", "160");
    StartMainWindow();
    CloseMainWindow();
    QCOMPARE(prefs_->Read("MainWindowWidgetHeight"), std::string("160"));
    QVERIFY(MainWindow::Existing() == nullptr);
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
};

QUILLMERE_TEST_MAIN(GeometryTest)
#include "GeometryTest.moc"
