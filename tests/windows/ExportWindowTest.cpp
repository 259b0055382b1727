// The export dialog and the export behind its Continue button: what each
// format writes, when nothing is written, and what the dialog remembers.
// The save dialog is replaced by a handler that answers with a path in a
// folder of the test's own, or with nothing for a cancel.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "DialogsTestSupport.hpp"
#include "WindowTestSupport.hpp"
#include "windows/Canvas.hpp"
#include "windows/Dialogs.hpp"
#include "windows/ExportWindow.hpp"
#include "windows/MsgBox.hpp"

using namespace quill;
using namespace quill::testing;

namespace {

constexpr char kTableMissing[] =
    "The data file is missing. Please reinstall the application.";

}  // namespace

class ExportWindowTest : public QObject {
  Q_OBJECT

 private:
  ExportWindow* Open() {
    ShowExportWindow();
    ExportWindow* dialog = ExportWindow::Existing();
    if (dialog != nullptr) (void)QTest::qWaitForWindowExposed(dialog);
    return dialog;
  }

  // Drops the dialog as closing does, without waiting for the event loop.
  static void Flush() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void LookUp(const QString& text) {
    main_->TextField->setPlainText(text);
    QTest::keyClick(main_->TextField, Qt::Key_Return);
  }

  // Open the dialog, choose the format by keyboard, press Continue.
  void Export(int format) {
    ExportWindow* dialog = Open();
    QVERIFY(dialog != nullptr);
    if (format == 1) QTest::keyClick(dialog->PopupMenu1, Qt::Key_Down);
    QCOMPARE(dialog->PopupMenu1->currentIndex(), format);
    QTest::mouseClick(dialog->PushButton1, Qt::LeftButton);
    QVERIFY(ExportWindow::Existing() == nullptr);
    Flush();
  }

  QString Target(const char* name) const { return outFolder_->filePath(name); }

 private slots:
  void init() {
    prefs_ = std::make_unique<PreferencesFolder>();
    outFolder_ = std::make_unique<QTemporaryDir>();
    messages_.clear();
    asked_.clear();
    answer_ = Target("export");
    SetMsgBoxHandler([this](const QString& text) { messages_ << text; });
    SetSaveFolderItemHandler([this](const QString& defaultName) {
      asked_ << defaultName;
      return answer_;
    });
    main_ = StartMainWindow();
    main_->SetDataFiles(SmallTable(tableFolder_));
  }

  void cleanup() {
    if (ExportWindow* dialog = ExportWindow::Existing()) dialog->close();
    Flush();
    QVERIFY(ExportWindow::Existing() == nullptr);
    CloseMainWindow();
    SetMsgBoxHandler({});
    SetSaveFolderItemHandler({});
    outFolder_.reset();
    prefs_.reset();
  }

  void dialogAsLaidOut() {
    ExportWindow* dialog = Open();
    QCOMPARE(dialog->windowTitle(), QString("Export"));
    QCOMPARE(dialog->size(), QSize(272, 125));
    QCOMPARE(dialog->minimumSize(), dialog->maximumSize());  // not resizable
    QCOMPARE(dialog->windowModality(), Qt::ApplicationModal);
    QCOMPARE(dialog->StaticText1->text(), QString("Format:"));
    QCOMPARE(dialog->PopupMenu1->count(), 2);
    QCOMPARE(dialog->PopupMenu1->itemText(0), QString("Plain text"));
    QCOMPARE(dialog->PopupMenu1->itemText(1),
             QString("HTML with phonetic guides"));
    QCOMPARE(dialog->PopupMenu1->currentIndex(), 0);
    QCOMPARE(dialog->PushButton2->text(), QString("Cancel"));
    QCOMPARE(dialog->PushButton1->text(), QString("Continue"));
    QVERIFY(dialog->PushButton1->isDefault());
    QVERIFY(dialog->PushButton1->geometry().left() >
            dialog->PushButton2->geometry().left());
    // A picture of the dialog for a look by eye, when asked for.
    const QString shot = qEnvironmentVariable("QUILLMERE_SCREENSHOT");
    if (!shot.isEmpty()) dialog->grab().save(shot);
  }

  void plainTextIsTheFieldsAsTheyStand() {
    LookUp("  中文\n");
    const QString shown = main_->ResultField->toPlainText();
    Export(0);
    QCOMPARE(asked_, QStringList{"Untitled.txt"});
    const QByteArray bytes = FileBytes(Target("export").toStdString());
    const QByteArray head = QString("中文\n\nHanyu Pinyin\r").toUtf8();
    QVERIFY(bytes.startsWith(head));
    // The result keeps its own CR line ends; nothing follows it.
    const QByteArray result = bytes.mid(QString("中文\n\n").toUtf8().size());
    QVERIFY(!result.contains('\n'));
    QCOMPARE(QString::fromUtf8(result).replace('\r', '\n'), shown);
    QVERIFY(messages_.isEmpty());
  }

  // The file takes TextField as it is now, not the text that was looked up.
  void plainTextTakesTheFieldNow() {
    LookUp("中");
    main_->TextField->setPlainText(" 文 ");
    Export(0);
    const QByteArray bytes = FileBytes(Target("export").toStdString());
    QVERIFY(bytes.startsWith(QString("文\n\nHanyu Pinyin\r").toUtf8()));
  }

  // In dictionary mode the dictionary input decides whether anything is
  // written, and still the file begins with the converter field's text.
  void dictionaryModeExports() {
    main_->TextField->setPlainText(" 中 ");
    main_->DictModeButton->setVisible(true);
    main_->DictModeButton->setEnabled(true);
    QTest::mouseClick(main_->DictModeButton, Qt::LeftButton);
    for (int tick = 0; tick < 6; ++tick) main_->Timer1_Action();
    QCOMPARE(main_->mode, Mode::kDictionary);
    main_->CharacterField->setText("文");
    QTest::mouseClick(main_->LookUpCanvas, Qt::LeftButton);
    Export(0);
    QVERIFY(FileBytes(Target("export").toStdString())
                .startsWith(QString("中\n\n文\r\r").toUtf8()));
    main_->PinyinSystemsPrefValue = "01000";
    Export(1);
    const QString page =
        QString::fromUtf8(FileBytes(Target("export").toStdString()));
    QVERIFY(page.contains("<p><ruby>文<rt>ㄨㄣˊ</rt></ruby></p>"));
    QVERIFY(!page.contains("中"));
  }

  void pageHasItsHeadAndRubies() {
    LookUp("中a");
    main_->PinyinSystemsPrefValue = "01000";     // Zhuyin 1 alone
    prefs_->Write("ShowMultipleReadings", "0");  // read again by the export
    Export(1);
    QCOMPARE(asked_, QStringList{"Untitled.html"});
    const QString page =
        QString::fromUtf8(FileBytes(Target("export").toStdString()));
    QVERIFY(
        page.startsWith("<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.1//EN\" "
                        "\"http://www.w3.org/TR/xhtml11/DTD/xhtml11.dtd\">\n"));
    // The second block, as Zhuyin 1 is the second system.
    QVERIFY(
        page.contains("<body>\n</ruby><br />\n"
                      "<p><ruby>中<rt>ㄓㄨㄥ</rt></ruby><ruby>a</p></ruby>"));
    QCOMPARE(main_->ShowMultipleReadingsPrefValue, std::string("0"));
    QVERIFY(page.endsWith("</html>"));
  }

  void cancelHidesAndKeepsTheChoice() {
    ExportWindow* dialog = Open();
    QTest::keyClick(dialog->PopupMenu1, Qt::Key_Down);
    QTest::mouseClick(dialog->PushButton2, Qt::LeftButton);
    Flush();
    QCOMPARE(ExportWindow::Existing(), dialog);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(Open(), dialog);
    QCOMPARE(dialog->PopupMenu1->currentIndex(), 1);
    // Escape is the cancel button's key.
    QTest::keyClick(dialog, Qt::Key_Escape);
    Flush();
    QCOMPARE(ExportWindow::Existing(), dialog);
    QVERIFY(!dialog->isVisible());
    QVERIFY(asked_.isEmpty());
  }

  void continueForgetsTheChoice() {
    LookUp("中");
    Export(1);
    QCOMPARE(Open()->PopupMenu1->currentIndex(), 0);
  }

  void nothingLookedUpWritesNothing_data() {
    QTest::addColumn<int>("format");
    QTest::newRow("plain text") << 0;
    QTest::newRow("page") << 1;
  }
  void nothingLookedUpWritesNothing() {
    QFETCH(int, format);
    main_->TextField->setPlainText("中文");  // typed but never looked up
    Export(format);
    QVERIFY(asked_.isEmpty());
    QVERIFY(!QFile::exists(Target("export")));
    LookUp("  \n ");  // a blank look-up leaves nothing either
    Export(format);
    QVERIFY(asked_.isEmpty());
    QVERIFY(messages_.isEmpty());
  }

  void cancelledSaveDialogWritesNothing_data() {
    nothingLookedUpWritesNothing_data();
  }
  void cancelledSaveDialogWritesNothing() {
    QFETCH(int, format);
    LookUp("中");
    answer_.clear();
    Export(format);
    QCOMPARE(asked_.size(), 1);
    QVERIFY(QDir(outFolder_->path()).isEmpty());
    QVERIFY(messages_.isEmpty());
  }

  // The page's file is made before the table is looked for, and stays.
  void missingTableLeavesAnEmptyPage() {
    LookUp("中");
    QTemporaryDir empty;
    DataFiles files;
    files.zhuyintable = empty.filePath("zhuyintable").toStdString();
    main_->SetDataFiles(files);
    Export(1);
    QCOMPARE(messages_, QStringList{kTableMissing});
    QVERIFY(QFile::exists(Target("export")));
    QCOMPARE(QFileInfo(Target("export")).size(), 0);
  }

  // The wait cursor of the export is gone before the save dialog or a
  // message comes, and after the export.
  void noWaitCursorOverDialogs() {
    QList<bool> busy;
    const auto note = [&busy] {
      busy << (QApplication::overrideCursor() != nullptr);
    };
    SetSaveFolderItemHandler([this, note](const QString&) {
      note();
      return answer_;
    });
    SetMsgBoxHandler([note](const QString&) { note(); });
    LookUp("中");
    Export(0);
    Export(1);
    answer_ = Target("no such folder/export");
    Export(1);
    QCOMPARE(busy, (QList<bool>{false, false, false, false}));
    QVERIFY(QApplication::overrideCursor() == nullptr);
  }

  void unwritableFile() {
    LookUp("中");
    answer_ = Target("no such folder/export");
    Export(0);
    QVERIFY(messages_.isEmpty());  // plain text gives up in silence
    Export(1);
    QCOMPARE(messages_.size(), 1);
    QVERIFY(messages_[0].startsWith("The page can't be saved"));
    QVERIFY(messages_[0].contains(answer_));
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  std::unique_ptr<QTemporaryDir> outFolder_;
  QTemporaryDir tableFolder_;
  MainWindow* main_ = nullptr;
  QStringList messages_;
  QStringList asked_;
  QString answer_;
};

QUILLMERE_TEST_MAIN(ExportWindowTest)
#include "ExportWindowTest.moc"
