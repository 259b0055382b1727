// The window's own timings, offscreen: start-up to a shown window, and a
// pasted text of 1 MB looked up with Return, to the last paint of the result.
//
//   QT_QPA_PLATFORM=offscreen build/out/quillmere-window-timing [FILE]
//   -> startup_ms=... paste_ms=... lookup_to_last_paint_ms=... result_chars=...
#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

#include "bench/Corpus.hpp"
#include "windows/App.hpp"
#include "windows/MainWindow.hpp"

namespace {

// Notes the time of the last paint of the widgets it watches.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(const QElapsedTimer& clock) : clock_(clock) {}
  qint64 last = -1;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Paint) last = clock_.elapsed();
    return QObject::eventFilter(object, event);
  }

 private:
  const QElapsedTimer& clock_;
};

// Handles events until a round passes with no paint.
void SettlePaints(PaintWatch& watch) {
  for (int quiet = 0; quiet < 3;) {
    const qint64 before = watch.last;
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    QTest::qWait(20);
    quiet = watch.last == before ? quiet + 1 : 0;
  }
}

}  // namespace

int main(int argc, char** argv) {
  QElapsedTimer clock;
  clock.start();
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  QTemporaryDir preferences;  // never the user's own
  qputenv("XDG_CONFIG_HOME", preferences.path().toLocal8Bit());
  quill::QuillmereApp app(argc, argv);
  PaintWatch watch(clock);
  quill::StartUp();
  quill::MainWindow* window = quill::MainWindow::Existing();
  if (window == nullptr) return 1;
  auto* const resultField = window->findChild<QPlainTextEdit*>("ResultField");
  auto* const textField = window->findChild<QPlainTextEdit*>("TextField");
  window->installEventFilter(&watch);
  resultField->viewport()->installEventFilter(&watch);
  textField->viewport()->installEventFilter(&watch);
  SettlePaints(watch);
  const qint64 startup = watch.last;

  const std::string path =
      argc > 1 ? argv[1] : quill::bench::CorpusPath("traditional-1m.txt");
  const auto text = quill::bench::ReadFile(path);
  if (!text) {
    std::fprintf(stderr, "cannot read %s\n", path.c_str());
    return 2;
  }
  window->SetDataFiles(quill::bench::BuildDataFiles());
  const qint64 pasteStart = clock.elapsed();
  textField->setPlainText(
      QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size())));
  SettlePaints(watch);
  const qint64 paste = watch.last - pasteStart;

  const qint64 returnAt = clock.elapsed();
  QTest::keyClick(textField, Qt::Key_Return);
  SettlePaints(watch);
  std::printf(
      "startup_ms=%lld paste_ms=%lld lookup_to_last_paint_ms=%lld "
      "result_chars=%lld\n",
      static_cast<long long>(startup), static_cast<long long>(paste),
      static_cast<long long>(watch.last - returnAt),
      static_cast<long long>(resultField->toPlainText().size()));
  return 0;
}
