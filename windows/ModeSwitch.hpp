// The switch between converter and dictionary mode: it swaps the input
// fields, keeps each mode's result, and animates the window to the new
// mode's size in six ticks of Timer1. The mode buttons that start it stay
// hidden, so it is built but not offered.
//
//   window.Switch().Start();  // then Timer1 runs Step until it is done
#pragma once

#include <string>

class QTimer;

namespace quill {

class MainWindow;

class ModeSwitch {
 public:
  // Makes Timer1 as a child of `window`, which outlives the switch's use.
  explicit ModeSwitch(MainWindow& window);

  // Leaves the present mode: saves what the last step puts back, shows the
  // other input field and starts Timer1.
  void Start();
  // One tick of Timer1: four steps move the fields and the window, the
  // fifth settles the new mode, the sixth stops the timer.
  void Step();

  // The switch's record; numbers start at 0, strings empty.
  int zoomCounter = 0;
  int originalWidth = 0;
  int originalHeight = 0;
  std::string CharacterFieldResultTemp;
  std::string TextFieldResultTemp;
  int windowWidthTemp = 0;
  int windowHeightTemp = 0;
  QTimer* Timer1 = nullptr;

 private:
  MainWindow& window_;
};

}  // namespace quill
