#pragma once

#include <functional>

#include "platform/event_loop.h"
#include "platform/operator.h"

namespace orvane {

/// The way of an operator's act from a widget to the station. Slots of widgets run inside the toolkit's frames, where
/// no failure of the station may pass; so an act is posted, and runs where the station's events run.
class Hands {
 public:
  /// `mayAct`: false while a box or a dialog lies open; every act is refused then.
  Hands(EventLoop& loop, OperationNest& nest, std::function<bool()> mayAct)
      : loop_(loop), hand_(nest), mayAct_(std::move(mayAct)) {}

  /// Runs `act` in a later turn of the loop, then `shownAnew` in any case: a widget that ran ahead of its control, or
  /// whose act was refused, shows the control as it is.
  void Do(std::function<void(Operator&)> act, std::function<void()> shownAnew = {});

 private:
  EventLoop& loop_;
  Operator hand_;
  std::function<bool()> mayAct_;
};

}  // namespace orvane
