// The look-up from the window: the button's press, drag and release, the
// result field, and a whole start with typing.
#include <QApplication>
#include <QClipboard>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTest>

#include "WindowTestSupport.hpp"
#include "windows/Canvas.hpp"
#include "windows/MsgBox.hpp"
#include "windows/Pictures.hpp"

using namespace quill;
using namespace quill::testing;

namespace {

void DragTo(QWidget* widget, QPoint point) {
  QMouseEvent move(QEvent::MouseMove, point, widget->mapToGlobal(point),
                   Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(widget, &move);
}

// Keys that carry Chinese text, one character each, as a keyboard sends them.
void Type(QWidget* widget, const QString& text) {
  for (const QChar c : text) {
    QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c),
                        Qt::NoModifier);
  }
}

bool Shows(const Canvas* canvas, const QPixmap& picture) {
  return canvas->Backdrop().cacheKey() == picture.cacheKey();
}

}  // namespace

class LookUpTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    prefs_ = std::make_unique<PreferencesFolder>();
    messages_.clear();
    SetMsgBoxHandler([this](const QString& text) { messages_ << text; });
    window_ = StartMainWindow();
    window_->SetDataFiles(SmallTable(tableFolder_));
  }
  void cleanup() {
    CloseMainWindow();
    SetMsgBoxHandler({});
    prefs_.reset();
  }

  void picturesAreThere() {
    for (const QPixmap* picture :
         {&lookupbutton(), &lookupbutton_on(), &dimple(), &dictmode(),
          &convertermode(), &dictmode_on(), &convertermode_on(), &icon100()}) {
      QVERIFY(!picture->isNull());
    }
    QCOMPARE(lookupbutton().deviceIndependentSize(), QSizeF(30, 30));
    QCOMPARE(dimple().deviceIndependentSize(), QSizeF(5, 5));
    QVERIFY(lookupbutton().hasAlphaChannel());
  }

  // The wait cursor shows while the look-up works and is gone after it,
  // and before a message.
  void busyCursorWhileLookingUp() {
    QList<int> shapes;  // the override cursor's shape at each moment, or -1
    const auto note = [&shapes] {
      const QCursor* cursor = QApplication::overrideCursor();
      shapes << (cursor != nullptr ? cursor->shape() : -1);
    };
    QObject context;
    connect(window_->ResultField, &QPlainTextEdit::textChanged, &context, note);
    window_->TextField->setPlainText("中文");
    QTest::keyClick(window_->TextField, Qt::Key_Return);
    QVERIFY(window_->ResultField->toPlainText().contains("ㄓㄨㄥ"));
    QCOMPARE(shapes.last(), int(Qt::WaitCursor));
    QVERIFY(QApplication::overrideCursor() == nullptr);

    QTemporaryDir empty;
    DataFiles files;
    files.zhuyintable = empty.filePath("zhuyintable").toStdString();
    window_->SetDataFiles(files);
    shapes.clear();
    SetMsgBoxHandler([&note](const QString&) { note(); });
    QTest::keyClick(window_->TextField, Qt::Key_Return);
    QCOMPARE(shapes, (QList<int>{-1, -1}));  // the field cleared, the message
    QVERIFY(QApplication::overrideCursor() == nullptr);
  }

  void buttonPressDragOffAndRelease() {
    window_->TextField->setPlainText("中");
    Canvas* button = window_->LookUpCanvas;
    QVERIFY(Shows(button, lookupbutton()));
    QTest::mousePress(button, Qt::LeftButton, {}, QPoint(15, 15));
    QVERIFY(Shows(button, lookupbutton_on()));
    DragTo(button, QPoint(45, 15));
    QVERIFY(Shows(button, lookupbutton()));
    DragTo(button, QPoint(29, 29));  // the last row and column are inside
    QVERIFY(Shows(button, lookupbutton_on()));
    DragTo(button, QPoint(0, 15));  // 0 counts as outside
    QVERIFY(Shows(button, lookupbutton()));
    DragTo(button, QPoint(15, 30));
    QVERIFY(Shows(button, lookupbutton()));
    QCOMPARE(window_->ResultField->toPlainText(), QString());
    QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(60, 60));
    QVERIFY(Shows(button, lookupbutton()));
    QVERIFY(window_->ResultField->toPlainText().startsWith("Hanyu Pinyin\n"));
  }

  void buttonKeepsTheOldResultWhenNothingIsLookedUp() {
    window_->ResultField->setPlainText("old result");
    QTest::mouseClick(window_->LookUpCanvas, Qt::LeftButton, {},
                      QPoint(15, 15));
    QCOMPARE(window_->ResultField->toPlainText(), QString("old result"));
    QVERIFY(messages_.isEmpty());
  }

  void missingTableIsReportedAtEachLookUp() {
    QTemporaryDir empty;
    DataFiles files;
    files.zhuyintable = empty.filePath("zhuyintable").toStdString();
    window_->SetDataFiles(files);
    window_->TextField->setPlainText("中");
    window_->ResultField->setPlainText("old result");
    QTest::mouseClick(window_->LookUpCanvas, Qt::LeftButton, {},
                      QPoint(15, 15));
    QTest::keyClick(window_->TextField, Qt::Key_Return);
    QCOMPARE(
        messages_,
        QStringList(
            2, "The data file is missing. Please reinstall the application."));
    QCOMPARE(window_->ResultField->toPlainText(),
             QString());  // cleared by the key only
  }

  void lookUpReadsItsPreferencesEachTime() {
    window_->TextField->setPlainText("中");
    window_->PinyinSystemsPrefValue = "01000";
    window_->LookUp();
    QVERIFY(window_->ResultField->toPlainText().contains("ㄓㄨㄥ (ㄓㄨㄥˋ) "));
    prefs_->Write("ShowMultipleReadings", "0");
    window_->LookUp();
    QCOMPARE(window_->ShowMultipleReadingsPrefValue, std::string("0"));
    QVERIFY(!window_->ResultField->toPlainText().contains("ㄓㄨㄥˋ"));
  }

  void resultFieldIsSelectableAndCopies() {
    window_->TextField->setPlainText("中文");
    window_->LookUp();
    QPlainTextEdit* result = window_->ResultField;
    QVERIFY(result->isReadOnly());
    result->setFocus();
    QTest::keyClick(result, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(result, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), result->toPlainText());
    QTest::keyClick(result, Qt::Key_X);  // read-only: typing changes nothing
    QCOMPARE(QApplication::clipboard()->text(), result->toPlainText());
  }

  void largeResultIsShown() {
    QString input;
    for (int i = 0; i < 50000; ++i) input += i % 40 == 39 ? "\n" : "中文";
    window_->TextField->setPlainText(input);
    window_->LookUp();
    QVERIFY(window_->ResultField->document()->characterCount() >
            input.size() * 2);
  }

  // The whole road: start as the program does, type, press Return.
  void typedTextIsLookedUpOnReturn() {
    Type(window_->TextField, "中文");
    QCOMPARE(window_->TextField->toPlainText(), QString("中文"));
    QTest::keyClick(window_->TextField, Qt::Key_Return);
    const QStringList lines = window_->ResultField->toPlainText().split('\n');
    QVERIFY(lines.size() > 9);
    QCOMPARE(lines[0], QString("Hanyu Pinyin"));
    QCOMPARE(lines[1], QString("-------------------"));
    QVERIFY(lines.contains("Zhuyin 1 (Bopomofo)"));
    QVERIFY(lines.contains("ㄓㄨㄥ (ㄓㄨㄥˋ) ㄨㄣˊ "));
    QCOMPARE(lines.filter("-------------------").size(), 5);
    QVERIFY(lines.contains("Tongyong Pinyin"));
    QCOMPARE(window_->TextFieldTemp, std::string("中文"));
    QCOMPARE(window_->TextField->toPlainText(), QString("中文"));
    // A picture of the window for a look by eye, when asked for.
    const QString shot = qEnvironmentVariable("QUILLMERE_SCREENSHOT");
    if (!shot.isEmpty()) window_->grab().save(shot);
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  QTemporaryDir tableFolder_;
  MainWindow* window_ = nullptr;
  QStringList messages_;
};

QUILLMERE_TEST_MAIN(LookUpTest)
#include "LookUpTest.moc"
