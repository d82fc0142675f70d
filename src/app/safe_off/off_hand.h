#pragma once

#include <functional>

#include "safe_off/off_words.h"

namespace orvane {

/// Who switches supply and load off for a station, without ever holding it up.
class OffHand {
 public:
  OffHand() = default;
  OffHand(const OffHand&) = delete;
  OffHand& operator=(const OffHand&) = delete;
  virtual ~OffHand() = default;

  /// Where they stand from now on.
  virtual void Tell(const OffPlaces& places) = 0;
  /// The file that takes what is not sure when the station dies; empty for none.
  virtual void Note(const std::string& file) = 0;
  /// Does it now. The answer comes as an event of the loop, within 4 s, whatever happens. One at a time.
  virtual void SwitchOff(std::function<void(const OffOutcome&)> answered) = 0;
  /// The station has come to its end in its own way, and all that it wanted is done.
  virtual void Dismiss() = 0;
};

}  // namespace orvane
