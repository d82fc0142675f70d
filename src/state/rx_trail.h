#pragma once

#include <optional>
#include <vector>

#include "base/numbers.h"
#include "platform/signal.h"
#include "state/rx_channels.h"

namespace orvane {

/// How far a receive run has come in its channels, for whoever wants to show it. The run tells it and never asks it.
class RxTrail {
 public:
  void Begin() {
    channel_.reset();
    read_ = 0;
    changed.Emit();
  }
  void Tune(Integer channel) {
    channel_ = channel;
    changed.Emit();
  }
  void Read() {
    ++read_;
    changed.Emit();
  }

  /// The channel tuned to last.
  [[nodiscard]] std::optional<Integer> Channel() const { return channel_; }
  /// Channels of this run that have their level.
  [[nodiscard]] int ChannelsRead() const { return read_; }

  Signal<> changed;

 private:
  std::optional<Integer> channel_;
  int read_ = 0;
};

}  // namespace orvane
