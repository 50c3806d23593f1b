#pragma once

#include <QRadioButton>

#include "platform/controls/option_button.h"

namespace desktop {

/// An option whose selection is the control's: clicking asks, and what the control says is shown.
class OptionRadio : public QRadioButton {
 public:
  /// What the arrow keys do among the options of a frame.
  enum class Arrows {
    kChoose,  ///< choose the next option: a criterion
    kMove,    ///< go to the next option; only space, Enter or the mouse choose: each choice is an action
  };

  explicit OptionRadio(Arrows arrows = Arrows::kChoose, QWidget* parent = nullptr);

 protected:
  void nextCheckState() override {}
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MoveTo(OptionRadio* option);
  OptionRadio* Neighbour(int step) const;

  const Arrows arrows_;
};

/// A click on an option that is selected already (mouse, space or Enter) repeats its action. The tool tip of
/// a disabled one says why.
void Bind(platform::OptionButton& option, OptionRadio& radio);

}  // namespace desktop
