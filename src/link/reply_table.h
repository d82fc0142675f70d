#pragma once

#include <string_view>

#include "base/numbers.h"
#include "link/deframer.h"
#include "panels/frm_base_band.h"
#include "panels/orvane_main.h"
#include "results/results_console.h"
#include "state/ramp_state.h"
#include "state/reply_state.h"

namespace orvane {

/// One decoded frame, read at places counted from its start, pads included.
/// Every reading member throws StationFailure for a place that the frame does not reach.
class Reply {
 public:
  Reply(const ReplyState& state, FrameSpan frame) : state_(state), frame_(frame) {}

  /// "&HXX" as it stands in `ReplyBytes`.
  [[nodiscard]] const std::string& Text(int offset) const;
  [[nodiscard]] Long Byte(int offset) const;
  /// 16 bits, low byte at `offset`, high byte two behind it: 0 to 65535.
  [[nodiscard]] Long Word(int offset) const;
  /// The value of a read reply.
  [[nodiscard]] Long Value() const { return Word(9); }
  /// The same as a signed number.
  [[nodiscard]] Long SignedValue() const;

  [[nodiscard]] FrameSpan Span() const { return frame_; }
  /// Numeric `ReplyItem`.
  [[nodiscard]] Long Item() const { return ToLong(state_.ReplyItem); }

 private:
  const ReplyState& state_;
  FrameSpan frame_;
};

/// What replies are shown on and stored in.
struct ReplyOutlets {
  ReplyState& state;
  RampState& ramp;
  PanelRef<OrvaneMain> main;
  PanelRef<FrmBaseBand> baseBand;
  ResultsConsole& console;
};

/// Whether the exchange is over with this reply, or its wait runs on to its limit.
enum class Exchange { Over, LeftOpen };

/// What becomes of the reply to one operation.
struct ReplyRow {
  Integer code;
  std::string_view word;
  /// Place of the item number, 0 for none.
  int itemOffset;
  Exchange (*show)(const Reply& reply, const ReplyOutlets& out);
};

/// The row of an operation code, or null.
[[nodiscard]] const ReplyRow* ReplyRowOf(Long code);

/// The first ten entries of `ReplyBytes`, run together, whether or not the last reply reached so far.
[[nodiscard]] std::string FirstTenBytes(const ReplyState& state);

}  // namespace orvane
