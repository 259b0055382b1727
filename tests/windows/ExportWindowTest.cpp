// The export dialog and the export behind its Continue button: what each
// format writes, when nothing is written, and what the dialog remembers.
// The save dialog is replaced by a handler that answers with a path in a
// folder of the test's own, or with nothing for a cancel.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "WindowTestSupport.hpp"
#include "windows/Dialogs.hpp"
#include "windows/ExportWindow.hpp"

using namespace quill;
using namespace quill::testing;

class ExportWindowTest : public WindowTest {
  Q_OBJECT

 private:
  static ExportWindow* Open() {
    ShowExportWindow();
    (void)QTest::qWaitForWindowExposed(ExportWindow::Existing());
    return ExportWindow::Existing();
  }
  void LookUp(const QString& text) {
    TextField(main_)->setPlainText(text);
    QTest::keyClick(TextField(main_), Qt::Key_Return);
  }
  // Open the dialog, choose the format by keyboard, press Continue; the
  // file's text, or empty.
  QString Export(int format) {
    ExportWindow* dialog = Open();
    if (format == 1) QTest::keyClick(dialog->PopupMenu1, Qt::Key_Down);
    QTest::mouseClick(dialog->PushButton1, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QFile file(answer_);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                          : QString();
  }

  // The wait cursor of the export is gone before the save dialog or a
  // message comes.
  void Begin() override {
    outFolder_ = std::make_unique<QTemporaryDir>();
    answer_ = outFolder_->filePath("export");
    asked_.clear();
    busy_ = false;
    SetSaveFolderItemHandler([this](const QString& defaultName) {
      busy_ |= QApplication::overrideCursor() != nullptr;
      asked_ << defaultName;
      return answer_;
    });
    prefs_->Write("PinyinSystems", "01000");  // Zhuyin 1 alone
    Start();
  }
  void End() override {
    QVERIFY(!busy_ && QApplication::overrideCursor() == nullptr);
    QVERIFY(!messages_.join('|').contains(" (busy)"));
    SetSaveFolderItemHandler({});
  }

 private slots:
  void dialogAsLaidOut() {
    ExportWindow* dialog = Open();
    QCOMPARE(dialog->windowTitle(), QString("Export"));
    QCOMPARE(dialog->minimumSize(), dialog->maximumSize());  // not resizable
    QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
    QCOMPARE(dialog->PopupMenu1->itemText(1),
             QString("HTML with phonetic guides"));
    QCOMPARE(dialog->PushButton1->text(), QString("Continue"));
    QVERIFY(dialog->PushButton1->isDefault());
    QVERIFY(dialog->PushButton1->x() > dialog->PushButton2->x());
    // A picture of the dialog for a look by eye, when asked for.
    const QString shot = qEnvironmentVariable("QUILLMERE_SCREENSHOT");
    if (!shot.isEmpty()) dialog->grab().save(shot);
  }

  // The text field as it is now, trimmed, then the result with its own CR
  // line ends.
  void plainTextIsTheFieldsAsTheyStand() {
    LookUp("中\n");
    const QString shown = Result(main_);
    TextField(main_)->setPlainText(" 文 ");
    const QString text = Export(0);
    QCOMPARE(asked_, QStringList{"Untitled.txt"});
    QCOMPARE(text, "文\n\n" + QString(shown).replace('\n', '\r'));
    QVERIFY(messages_.isEmpty());
  }

  // The page of what was looked up, with the multiple readings read again.
  void pageHasItsHeadAndRubies() {
    LookUp("中a");
    prefs_->Write("ShowMultipleReadings", "0");
    const QString page = Export(1);
    QCOMPARE(asked_, QStringList{"Untitled.html"});
    QVERIFY(
        page.startsWith("<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.1//EN\" "
                        "\"http://www.w3.org/TR/xhtml11/DTD/xhtml11.dtd\">\n"));
    QVERIFY(
        page.contains("<body>\n</ruby><br />\n"
                      "<p><ruby>中<rt>ㄓㄨㄥ</rt></ruby><ruby>a</p></ruby>"));
    QVERIFY(page.endsWith("</html>"));
  }

  // In dictionary mode the dictionary input is exported, and still the
  // plain text begins with the converter field's text.
  void dictionaryModeExports() {
    TextField(main_)->setPlainText(" 中 ");
    auto* button = Control<Canvas>(main_, "DictModeButton");
    button->setVisible(true);
    button->setEnabled(true);
    QTest::mouseClick(button, Qt::LeftButton);
    for (int tick = 0; tick < 6; ++tick) main_->Timer1_Action();
    Control<QLineEdit>(main_, "CharacterField")->setText("文");
    QTest::mouseClick(Control(main_, "LookUpCanvas"), Qt::LeftButton);
    QVERIFY(Export(0).startsWith("中\n\n文\r\r"));
    const QString page = Export(1);
    QVERIFY(page.contains("<p><ruby>文<rt>ㄨㄣˊ</rt></ruby></p>"));
    QVERIFY(!page.contains("中"));
  }

  // Cancel and Escape hide the dialog with its choice; Continue forgets it.
  void dialogRemembersTheChoiceUntilContinue() {
    ExportWindow* dialog = Open();
    QTest::keyClick(dialog->PopupMenu1, Qt::Key_Down);
    QTest::mouseClick(dialog->PushButton2, Qt::LeftButton);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(Open(), dialog);
    QCOMPARE(dialog->PopupMenu1->currentIndex(), 1);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(Open()->PopupMenu1->currentIndex(), 1);
    QVERIFY(asked_.isEmpty());
    LookUp("中");
    Export(0);
    QCOMPARE(Open()->PopupMenu1->currentIndex(), 0);
  }

  // Nothing is written for text never looked up, a blank look-up, or a
  // cancelled save dialog; plain text into a missing folder gives up in
  // silence, a page says so.
  void nothingWritten_data() { AddRows("nothingWritten"); }
  void nothingWritten() {
    QFETCH(QString, format);
    QFETCH(QString, lookUp);
    QFETCH(QString, answer);
    QFETCH(QString, message);
    TextField(main_)->setPlainText("中文");
    if (lookUp != "-") LookUp(lookUp);
    answer_ = answer.isEmpty() ? QString() : outFolder_->filePath(answer);
    QCOMPARE(Export(format.toInt()), QString());
    QTEST(QString::number(asked_.size()), "asked");
    QVERIFY(QDir(outFolder_->path()).isEmpty());
    QCOMPARE(messages_.size(), message.isEmpty() ? 0 : 1);
    if (!message.isEmpty())
      QVERIFY(messages_[0].startsWith(message.arg(answer_)));
  }

  // The page's file is made before the table is looked for, and stays.
  void missingTableLeavesAnEmptyPage() {
    LookUp("中");
    QTemporaryDir empty;
    main_->SetDataFiles(NoTable(empty));
    QCOMPARE(Export(1), QString());
    QCOMPARE(messages_, QStringList{"The data file is missing. Please "
                                    "reinstall the application."});
    QVERIFY(QFile::exists(answer_));
  }

 private:
  std::unique_ptr<QTemporaryDir> outFolder_;
  QStringList asked_;
  QString answer_;
  bool busy_ = false;
};

QUILLMERE_TEST_MAIN(ExportWindowTest)
#include "ExportWindowTest.moc"
