#include "platform/output_controls.h"

#include <algorithm>

#include "base/failure.h"

namespace orvane {

void Frame::Hold(std::initializer_list<Control*> controls) {
  for (Control* control : controls) {
    control->frame_ = this;
    changed.Connect([control] { control->changed.Emit(); });
  }
}

void ProgressBar::SetMax(Long max) {
  Assign(max_, max);
  Assign(value_, std::min(value_, max));
}

void ProgressBar::SetValue(Long value) {
  if (value < 0 || value > max_) {
    throw StationFailure("The value " + std::to_string(value) + " of " + Name() + " is above " +
                         std::to_string(max_) + ".");
  }
  Assign(value_, value);
}

}  // namespace orvane
