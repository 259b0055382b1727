// The program as a whole, started as a user starts it, over a preferences
// file it can't use.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include "WindowTestSupport.hpp"

using namespace quill::testing;

class StartUpTest : public QObject {
  Q_OBJECT

 private slots:
  void unusableFileEndsTheProgram_data() {
    AddRows("unusableFileEndsTheProgram");
  }
  void unusableFileEndsTheProgram() {
    QFETCH(QString, content);
    QFETCH(QString, problem);
    PreferencesFolder prefs;
    const QString path = QString::fromStdString(prefs.FilePath());
    {
      QFile file(path);
      QVERIFY(file.open(QIODevice::WriteOnly));
      file.write(content.toUtf8());
    }
    EndsSaying(prefs, problem);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content.toUtf8());
  }

  void folderInPlaceOfTheFileIsNamedSo() {
    PreferencesFolder prefs;
    const QString path = QString::fromStdString(prefs.FilePath());
    QVERIFY(QDir().mkpath(path));
    EndsSaying(prefs, "it is a folder, not a file");
    QVERIFY(QFileInfo(path).isDir());
  }

 private:
  // Starts the program over `prefs` and checks that it ends with status 1,
  // naming the file and `problem` on standard error.
  static void EndsSaying(const PreferencesFolder& prefs,
                         const QString& problem) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_CONFIG_HOME", QString::fromStdString(prefs.Path()));
    program.setProcessEnvironment(environment);
    program.start(QUILLMERE_OUT_DIR "/quillmere", {});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 1);
    const QString error =
        QString::fromLocal8Bit(program.readAllStandardError());
    QVERIFY2(error.contains(QString::fromStdString(prefs.FilePath())),
             qPrintable(error));
    QVERIFY2(error.contains(problem), qPrintable(error));
  }
};

QTEST_GUILESS_MAIN(StartUpTest)
#include "StartUpTest.moc"
