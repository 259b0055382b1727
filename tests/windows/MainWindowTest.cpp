// The main window's look-up: typing, the keys that start it, the look-up
// button, the wait cursor, and a missing table.
#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>

#include "WindowTestSupport.hpp"
#include "windows/Pictures.hpp"

using namespace quill;
using namespace quill::testing;

namespace {

bool Shows(const Canvas* canvas, const QPixmap& picture) {
  return !picture.isNull() &&
         canvas->Backdrop().cacheKey() == picture.cacheKey();
}

}  // namespace

class MainWindowTest : public WindowTest {
  Q_OBJECT

 private slots:
  // Start as the program does, type as a keyboard does, press Return.
  void typedTextIsLookedUpOnReturn() {
    for (const QChar c : QString("中文")) {
      QTest::sendKeyEvent(QTest::Click, TextField(main_), Qt::Key_unknown,
                          QString(c), Qt::NoModifier);
    }
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    const QStringList lines = Result(main_).split('\n');
    QCOMPARE(lines.mid(0, 2),
             (QStringList{"Hanyu Pinyin", "-------------------"}));
    QVERIFY(lines.contains("ㄓㄨㄥ (ㄓㄨㄥˋ) ㄨㄣˊ "));
    QCOMPARE(lines.filter("-------------------").size(), 5);
    // A picture of the window for a look by eye, when asked for.
    const QString shot = qEnvironmentVariable("QUILLMERE_SCREENSHOT");
    if (!shot.isEmpty()) main_->grab().save(shot);
  }

  // Which keys start the look-up and which break the line, by the stored
  // PressReturnTo, which is read at every key.
  void keys_data() { AddRows("keys"); }
  void keys() {
    QFETCH(QString, pressReturnTo);
    QFETCH(QString, key);
    Qt::KeyboardModifiers modifiers;
    if (key.startsWith("Shift+")) modifiers |= Qt::ShiftModifier;
    if (key.endsWith("Enter")) modifiers |= Qt::KeypadModifier;
    TextField(main_)->setPlainText("中");
    TextField(main_)->moveCursor(QTextCursor::End);
    QTest::keyClick(TextField(main_), Qt::Key_Return);  // before the change
    QVERIFY(Result(main_).startsWith("Hanyu Pinyin\n"));
    ResultField(main_)->setPlainText("old result");
    if (pressReturnTo != "-") prefs_->Write("PressReturnTo", pressReturnTo);
    QTest::keyClick(TextField(main_),
                    key.endsWith("Return")  ? Qt::Key_Return
                    : key.endsWith("Enter") ? Qt::Key_Enter
                                            : Qt::Key_A,
                    modifiers);
    const bool lookedUp = Result(main_).startsWith("Hanyu Pinyin\n");
    QCOMPARE(lookedUp || Result(main_) == "old result", true);
    QTEST(QString::number(lookedUp), "looksUp");
    QTEST(QString::number(TextField(main_)->toPlainText().contains('\n')),
          "breaksLine");
  }

  void returnWithBlankInputClearsTheResult() {
    TextField(main_)->setPlainText("  \n ");
    ResultField(main_)->setPlainText("old result");
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    QCOMPARE(Result(main_), QString());
  }

  // An unusable file met at a key goes up to the program, which ends.
  void unusablePreferencesAreNotSwallowed() {
    QFile file(QString::fromStdString(prefs_->FilePath()));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("<root><PressReturnTo>1</root>");
    file.close();
    const QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r");
    QVERIFY_THROWS_EXCEPTION(PreferencesError, main_->TextField_KeyDown(key));
    file.remove();  // the window writes on closing
  }

  // The button looks pressed while the mouse is down over it, and looks up
  // on release wherever the mouse is.
  void lookUpButton() {
    TextField(main_)->setPlainText("中");
    auto* button = Control<Canvas>(main_, "LookUpCanvas");
    QVERIFY(Shows(button, lookupbutton()));
    QTest::mousePress(button, Qt::LeftButton, {}, QPoint(15, 15));
    QVERIFY(Shows(button, lookupbutton_on()));
    const std::pair<QPoint, bool> drags[] = {{{45, 15}, false},
                                             {{29, 29}, true},
                                             {{0, 15}, false},
                                             {{15, 30}, false}};
    for (const auto& [point, pressed] : drags) {
      DragTo(button, point);
      QVERIFY(Shows(button, pressed ? lookupbutton_on() : lookupbutton()));
    }
    QCOMPARE(Result(main_), QString());
    QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(60, 60));
    QVERIFY(Shows(button, lookupbutton()));
    QVERIFY(Result(main_).startsWith("Hanyu Pinyin\n"));
    // Nothing to look up: the old result stays.
    TextField(main_)->clear();
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(15, 15));
    QVERIFY(Result(main_).startsWith("Hanyu Pinyin\n"));
  }

  // The button and the key each report a missing table; the key clears.
  void missingTableIsReportedAtEachLookUp() {
    QTemporaryDir empty;
    main_->SetDataFiles(NoTable(empty));
    TextField(main_)->setPlainText("中");
    ResultField(main_)->setPlainText("old result");
    QTest::mouseClick(Control<Canvas>(main_, "LookUpCanvas"), Qt::LeftButton,
                      {}, QPoint(15, 15));
    QCOMPARE(Result(main_), QString("old result"));
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    QCOMPARE(messages_, QStringList(2,
                                    "The data file is missing. Please "
                                    "reinstall the application."));
    QCOMPARE(Result(main_), QString());
  }

  // The wait cursor shows while the look-up works, and is gone after it.
  void busyCursorWhileLookingUp() {
    QList<int> shapes;  // the override cursor's shape at each change
    QObject context;
    connect(ResultField(main_), &QPlainTextEdit::textChanged, &context,
            [&shapes] {
              const QCursor* cursor = QApplication::overrideCursor();
              shapes << (cursor != nullptr ? cursor->shape() : -1);
            });
    TextField(main_)->setPlainText("中文");
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    QCOMPARE(shapes, (QList<int>{-1, Qt::WaitCursor}));  // cleared, shown
    QVERIFY(QApplication::overrideCursor() == nullptr);
  }

  // The multiple readings are read from the store at each look-up.
  void multipleReadingsAreReadAtEachLookUp() {
    TextField(main_)->setPlainText("中");
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    QVERIFY(Result(main_).contains("ㄓㄨㄥ (ㄓㄨㄥˋ) "));
    prefs_->Write("ShowMultipleReadings", "0");
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    QVERIFY(Result(main_).contains("ㄓㄨㄥ "));
    QVERIFY(!Result(main_).contains("ㄓㄨㄥˋ"));
  }

  void largeInputIsShown() {
    QString input;
    for (int i = 0; i < 50000; ++i) input += i % 40 == 39 ? "\n" : "中文";
    TextField(main_)->setPlainText(input);
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    QVERIFY(ResultField(main_)->document()->characterCount() >
            input.size() * 2);
  }
};

QUILLMERE_TEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
