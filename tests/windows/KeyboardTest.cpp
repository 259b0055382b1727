// Which keys in TextField start the look-up and which insert a line break,
// by the stored PressReturnTo.
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include "WindowTestSupport.hpp"

using namespace quill;
using namespace quill::testing;

class KeyboardTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    prefs_ = std::make_unique<PreferencesFolder>();
    window_ = StartMainWindow();
    window_->SetDataFiles(SmallTable(tableFolder_));
    window_->TextField->setPlainText("中");
    window_->ResultField->setPlainText("old result");
  }
  void cleanup() {
    CloseMainWindow();
    prefs_.reset();
  }

  void keyTable_data() {
    QTest::addColumn<QString>("pressReturnTo");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("looksUp");
    QTest::addColumn<bool>("breaksLine");
    const int none = Qt::NoModifier;
    const int shift = Qt::ShiftModifier;
    const int keypad = Qt::KeypadModifier;
    const int keypadShift = Qt::KeypadModifier | Qt::ShiftModifier;
    for (const QString& stored : {QString(), QString("0")}) {
      const QByteArray tag = stored.isEmpty() ? "default" : "stored 0";
      QTest::newRow(tag + ", Return")
          << stored << int(Qt::Key_Return) << none << true << false;
      QTest::newRow(tag + ", Shift+Return")
          << stored << int(Qt::Key_Return) << shift << false << true;
      QTest::newRow(tag + ", Enter")
          << stored << int(Qt::Key_Enter) << keypad << true << false;
      QTest::newRow(tag + ", Shift+Enter")
          << stored << int(Qt::Key_Enter) << keypadShift << true << false;
      QTest::newRow(tag + ", letter")
          << stored << int(Qt::Key_A) << none << false << false;
    }
    QTest::newRow("1, Return")
        << "1" << int(Qt::Key_Return) << none << false << true;
    QTest::newRow("1, Shift+Return")
        << "1" << int(Qt::Key_Return) << shift << false << true;
    QTest::newRow("1, Enter")
        << "1" << int(Qt::Key_Enter) << keypad << true << false;
    QTest::newRow("1, Shift+Enter")
        << "1" << int(Qt::Key_Enter) << keypadShift << true << false;
    QTest::newRow("1, letter")
        << "1" << int(Qt::Key_A) << none << false << false;
  }

  void keyTable() {
    QFETCH(QString, pressReturnTo);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, looksUp);
    QFETCH(bool, breaksLine);
    if (!pressReturnTo.isEmpty())
      prefs_->Write("PressReturnTo", pressReturnTo.toStdString());
    QTextCursor end = window_->TextField->textCursor();
    end.movePosition(QTextCursor::End);
    window_->TextField->setTextCursor(end);

    QTest::keyClick(window_->TextField, Qt::Key(key),
                    Qt::KeyboardModifiers(modifiers));

    const QString result = window_->ResultField->toPlainText();
    if (looksUp) {
      QVERIFY2(result.startsWith("Hanyu Pinyin\n"), qPrintable(result));
      QCOMPARE(window_->TextFieldTemp, std::string("中"));
    } else {
      QCOMPARE(result, QString("old result"));
      QCOMPARE(window_->TextFieldTemp, std::string());
    }
    QCOMPARE(window_->TextField->toPlainText().contains('\n'), breaksLine);
  }

  void preferenceIsReadAtEveryKey() {
    QTest::keyClick(window_->TextField, Qt::Key_Return);
    QVERIFY(window_->ResultField->toPlainText().startsWith("Hanyu Pinyin"));
    prefs_->Write("PressReturnTo", "1");
    window_->ResultField->setPlainText("kept");
    QTest::keyClick(window_->TextField, Qt::Key_Return);
    QCOMPARE(window_->ResultField->toPlainText(), QString("kept"));
    QVERIFY(window_->TextField->toPlainText().contains('\n'));
  }

  void returnWithEmptyInputClearsTheResult() {
    window_->TextField->setPlainText("  \n ");
    QTest::keyClick(window_->TextField, Qt::Key_Return);
    QCOMPARE(window_->ResultField->toPlainText(), QString());
  }

  void unusablePreferencesAreNotSwallowed() {
    const std::string path = prefs_->FilePath();
    QFile::remove(QString::fromStdString(path));
    QFile file(QString::fromStdString(path));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<root><PressReturnTo>1</root>");
    file.close();
    const QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r");
    QVERIFY_THROWS_EXCEPTION(PreferencesError, window_->TextField_KeyDown(key));
    QCOMPARE(window_->ResultField->toPlainText(), QString("old result"));
    QFile::remove(
        QString::fromStdString(path));  // the window writes on closing
  }

  void returnInCharacterFieldDoesNothing() {
    window_->CharacterField->setText("中");
    QTest::keyClick(window_->CharacterField, Qt::Key_Return);
    QCOMPARE(window_->ResultField->toPlainText(), QString("old result"));
    QCOMPARE(window_->CharacterField->text(), QString("中"));
  }

 private:
  std::unique_ptr<PreferencesFolder> prefs_;
  QTemporaryDir tableFolder_;
  MainWindow* window_ = nullptr;
};

QUILLMERE_TEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
