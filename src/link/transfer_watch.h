#pragma once

#include "base/failure.h"
#include "link/target_link.h"
#include "state/cal_state.h"

namespace orvane {

/// Watches over a transfer to the Target, which goes piece by piece: made ahead of the first one.
class TransferWatch {
 public:
  TransferWatch(const TargetLink& link, const CalState& cal) : link_(link), cal_(cal), stopsBefore_(cal.stopsAsked) {}

  /// An operator has asked for a stop since the transfer began, and has not withdrawn it. A failure status asks for
  /// one too, but a transfer goes on behind it.
  [[nodiscard]] bool Stopped() const {
    return cal_.CalStopRequested && cal_.stopStands && cal_.stopsAsked != stopsBefore_;
  }

  /// The wait behind a piece is over.
  /// @throws StationFailure when that many in a row brought no reply: whoever waits on would wait for minutes.
  void PieceSent() {
    silentPieces_ = link_.Silent() ? silentPieces_ + 1 : 0;
    if (silentPieces_ == kMostSilentPieces) throw StationFailure("The Target does not answer.");
  }

 private:
  static constexpr int kMostSilentPieces = 5;

  const TargetLink& link_;
  const CalState& cal_;
  long stopsBefore_;
  int silentPieces_ = 0;
};

}  // namespace orvane
