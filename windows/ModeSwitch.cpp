#include "windows/ModeSwitch.hpp"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "settings/Settings.hpp"
#include "windows/MainWindow.hpp"

namespace quill {

namespace {

// Dictionary mode's fixed size, converter mode's least size after a switch,
// and the animation's steps and their travel.
constexpr QSize kDictionarySize(300, 453);
constexpr int kConverterLeastWidth = 560;
constexpr int kConverterLeastHeight = 600;
constexpr int kZoomSteps = 4;
constexpr int kZoomTravel = 35;

// A size step of the animation, worked out in double precision.
int Stepped(int present, double change) {
  return static_cast<int>(std::lround(present + change));
}

}  // namespace

ModeSwitch::ModeSwitch(MainWindow& window) : window_(window) {
  Timer1 = new QTimer(&window);
  Timer1->setObjectName("Timer1");
  Timer1->setInterval(1);
  QObject::connect(Timer1, &QTimer::timeout, Timer1, [this] { Step(); });
}

void ModeSwitch::Start() {
  originalWidth = window_.Width();
  originalHeight = window_.Height();
  if (window_.mode == Mode::kConverter) {
    // The shrinking steps resize in converter mode and so overwrite the
    // converter size; the last step puts these copies back.
    windowWidthTemp = window_.mainWindowWidth;
    windowHeightTemp = window_.mainWindowHeight;
    TextFieldResultTemp = window_.ResultFieldText();
    QRect rect = window_.layout_.Rect(window_.CharacterField);
    rect.setSize(window_.layout_.Rect(window_.TextField).size());
    window_.layout_.SetRect(window_.CharacterField, rect);
    window_.CharacterField->setVisible(true);
    window_.TextField->setVisible(false);
    // Kept for the record only: every start is in converter mode.
    Settings::SetDefaultMode(Mode::kDictionary);
  } else {
    CharacterFieldResultTemp = window_.ResultFieldText();
    Settings::SetDefaultMode(Mode::kConverter);
  }
  window_.ResultField->clear();
  // The limits of the mode being left would hold back the animation's own
  // size changes; the last step sets those of the new mode.
  window_.SetLimits(kDictionarySize,
                    QSize(MainWindow::kMaxSize, MainWindow::kMaxSize));
  Timer1->start();
}

// Four steps move the fields and the window, the fifth settles the new
// mode, the sixth stops the timer. The mode changes only in the fifth, so it
// tells the direction all along.
void ModeSwitch::Step() {
  const int targetWidth =
      std::max(window_.mainWindowWidth, kConverterLeastWidth);
  const int targetHeight =
      std::max(window_.mainWindowHeight, kConverterLeastHeight);
  if (zoomCounter > kZoomSteps) {
    zoomCounter = 0;
    Timer1->stop();
    return;
  }
  if (window_.mode == Mode::kConverter) {
    // A window that is large in one direction only keeps its size.
    const bool resizing = originalWidth > kDictionarySize.width() &&
                          originalHeight > kDictionarySize.height();
    if (zoomCounter == kZoomSteps) {
      if (resizing)
        window_.SetSize(kDictionarySize.width(), kDictionarySize.height());
      window_.mode = Mode::kDictionary;
      window_.mainWindowWidth = windowWidthTemp;
      window_.mainWindowHeight = windowHeightTemp;
      window_.SetResultFieldText(CharacterFieldResultTemp);
      window_.CharacterField->setFocus();
      window_.SetLimits(kDictionarySize, kDictionarySize);
    } else if (zoomCounter < kZoomSteps) {
      if (resizing) {
        window_.SetSize(Stepped(window_.Width(),
                                -(originalWidth - kDictionarySize.width()) /
                                    static_cast<double>(kZoomSteps)),
                        Stepped(window_.Height(),
                                -(originalHeight - kDictionarySize.height()) /
                                    static_cast<double>(kZoomSteps)));
      }
      window_.MoveFields(-kZoomTravel);
    }
  } else {
    const bool resizing =
        originalWidth < targetWidth && originalHeight < targetHeight;
    if (zoomCounter == kZoomSteps) {
      if (resizing) window_.SetSize(targetWidth, targetHeight);
      window_.mode = Mode::kConverter;
      QRect rect = window_.layout_.Rect(window_.TextField);
      rect.setSize(window_.layout_.Rect(window_.CharacterField).size());
      window_.layout_.SetRect(window_.TextField, rect);
      window_.TextField->setVisible(true);
      window_.TextField->setFocus();
      window_.CharacterField->setVisible(false);
      window_.SetLimits(QSize(kConverterLeastWidth, kConverterLeastHeight),
                        QSize(MainWindow::kMaxSize, MainWindow::kMaxSize));
      window_.SetResultFieldText(TextFieldResultTemp);
    } else if (zoomCounter < kZoomSteps) {
      if (resizing) {
        window_.SetSize(
            Stepped(window_.Width(), (targetWidth - originalWidth) /
                                         static_cast<double>(kZoomSteps)),
            Stepped(window_.Height(), (targetHeight - originalHeight) /
                                          static_cast<double>(kZoomSteps)));
      }
      window_.MoveFields(kZoomTravel);
    }
  }
  ++zoomCounter;
}

}  // namespace quill
