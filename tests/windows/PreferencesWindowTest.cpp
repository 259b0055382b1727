// The preferences dialog against a real store in a temporary folder: what
// it shows when it opens, what OK, Cancel and Escape write, and the result
// field looked up again at OK.
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include "WindowTestSupport.hpp"
#include "windows/Dialogs.hpp"
#include "windows/PreferencesWindow.hpp"

using namespace quill;
using namespace quill::testing;

class PreferencesWindowTest : public WindowTest {
  Q_OBJECT

 private:
  static PreferencesWindow* Open() {
    ShowPreferencesWindow();
    PreferencesWindow* window = PreferencesWindow::Existing();
    if (window != nullptr) (void)QTest::qWaitForWindowExposed(window);
    return window;
  }
  static QTreeWidget* List(QWidget* window) {
    return Control<QTreeWidget>(window, "ListBox1");
  }
  static bool Checked(QWidget* window, const char* name) {
    return Control<QAbstractButton>(window, name)->isChecked();
  }

  // "10101" from the check boxes of the list, in row order.
  static QString ListChecks(QWidget* window) {
    QString checks;
    for (int row = 0; row < List(window)->topLevelItemCount(); ++row) {
      const auto state = List(window)->topLevelItem(row)->checkState(0);
      checks += state == Qt::Checked ? '1' : '0';
    }
    return checks;
  }

  // Each of `clicks`: a row number of the list, "Down" for the standard
  // pop-up, or the name of a check box or radio button. Then `end`: a
  // button's name or "Escape".
  static void Use(const QStringList& clicks, const QString& end) {
    PreferencesWindow* window = Open();
    for (const QString& click : clicks) {
      bool isRow = false;
      const int row = click.toInt(&isRow);
      if (isRow) {
        ClickRowCheck(List(window), row);
      } else if (click == "Down") {
        auto* popup = Control<QComboBox>(window, "ReadingStandardPopup");
        popup->setFocus();
        QTest::keyClick(popup, Qt::Key_Down);
      } else {
        ClickIndicator(Control<QAbstractButton>(window, click));
      }
    }
    if (end == "Escape") {
      QTest::keyClick(window, Qt::Key_Escape);
    } else {
      QTest::mouseClick(Control<QPushButton>(window, end), Qt::LeftButton);
    }
  }

  // The program started anew, then the file taken away for the test to
  // fill.
  void Begin() override {
    Start();
    QFile::remove(QString::fromStdString(prefs_->FilePath()));
  }

 private slots:
  // Each control opens from the store.
  void opensFromStore_data() { AddRows("opensFromStore"); }
  void opensFromStore() {
    QFETCH(QString, stored);
    prefs_->WriteAll(Values(stored));
    PreferencesWindow* window = Open();
    QTEST(ListChecks(window), "systems");
    QString boxes;
    for (const char* name :
         {"IndicateTonesBox", "UseToneNumbersCheckbox",
          "ShowMultipleReadingsBox", "ShowSegmentationBox", " ",
          "AddANewLineRadioButton", "ContextReadingsBox"}) {
      boxes += *name == ' ' ? ' ' : Checked(window, name) ? '1' : '0';
    }
    const int standard =
        Control<QComboBox>(window, "ReadingStandardPopup")->currentIndex();
    QTEST(boxes + QString::number(standard), "boxes");
    QCOMPARE(Checked(window, "StartLookingUpRadioButton"),
             !Checked(window, "AddANewLineRadioButton"));
    const bool enabled = Control(window, "UseToneNumbersCheckbox")->isEnabled();
    QTEST(QString::number(enabled), "numbersEnabled");
  }

  // What each way out of the dialog writes.
  void closing_data() { AddRows("closing"); }
  void closing() {
    QFETCH(QString, stored);
    QFETCH(QString, clicks);
    QFETCH(QString, end);
    QFETCH(QString, written);
    prefs_->WriteAll(Values(stored));
    const QByteArray before = prefs_->Bytes();
    Use(Values(clicks), end);
    QVERIFY(PreferencesWindow::Existing() == nullptr);
    if (written.isEmpty()) QCOMPARE(prefs_->Bytes(), before);
    for (const QString& pair : Values(written)) {
      QCOMPARE(prefs_->Read(qPrintable(pair.section('=', 0, 0))),
               pair.section('=', 1));
    }
    // The next opening reads the store again, not the abandoned choices.
    QCOMPARE(ListChecks(Open()), prefs_->Read("PinyinSystems"));
    QVERIFY(messages_.isEmpty());
  }

  void noSystemRefusesOk() {
    prefs_->Write("PinyinSystems", "11111");
    const QByteArray before = prefs_->Bytes();
    Use({"0", "1", "2", "3", "4"}, "OKButton");
    QCOMPARE(messages_,
             QStringList{"Please select at least one pinyin system."});
    QCOMPARE(prefs_->Bytes(), before);
    QVERIFY(PreferencesWindow::Existing()->isVisible());
    QCOMPARE(ListChecks(PreferencesWindow::Existing()), QString("00000"));
  }

  // OK looks the input up again at once with the new settings.
  void okChangesTheResult_data() { AddRows("okChangesTheResult"); }
  void okChangesTheResult() {
    QFETCH(QString, stored);
    QFETCH(QString, input);
    QFETCH(QString, clicks);
    QFETCH(QString, before);
    QFETCH(QString, after);
    prefs_->WriteAll(Values(stored));
    CloseMainWindow();
    Start();
    TextField(main_)->setPlainText(input);
    QTest::keyClick(TextField(main_), Qt::Key_Return);
    QVERIFY2(Result(main_).contains(before), qPrintable(Result(main_)));
    QVERIFY(!Result(main_).contains(after));
    Use(Values(clicks), "OKButton");
    QVERIFY2(Result(main_).contains(after), qPrintable(Result(main_)));
    QVERIFY(!Result(main_).contains(before));
    QVERIFY(messages_.isEmpty());
  }

  // The systems in the order of their places in PinyinSystems; a click on
  // a name leaves the check boxes in sight.
  void listNamesTheSystemsInKeyOrder() {
    QTreeWidget* list = List(Open());
    QStringList names = {list->headerItem()->text(0),
                         list->headerItem()->text(1)};
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
      names << list->topLevelItem(row)->text(1);
    }
    QCOMPARE(names, (QStringList{"On", "Pinyin System", "Hanyu Pinyin",
                                 "Zhuyin 1 (Bopomofo)", "Zhuyin 2",
                                 "Wade-Giles", "Tongyong Pinyin"}));
    const QRect name = list->visualRect(list->model()->index(2, 1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, name.center());
    QCOMPARE(list->horizontalScrollBar()->value(), 0);
  }

  void tabGoesDownTheDialogThenToTheButtons() {
    prefs_->Write("PinyinSystems", "11111");
    PreferencesWindow* window = Open();
    QVERIFY(QTest::qWaitForWindowActive(window));
    List(window)->setFocus();
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
};

QUILLMERE_TEST_MAIN(PreferencesWindowTest)
#include "PreferencesWindowTest.moc"
