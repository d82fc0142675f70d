#pragma once

#include <optional>
#include <string_view>

#include "link/deframer.h"
#include "link/reply_checksum.h"
#include "link/reply_table.h"
#include "panels/frm_base_band.h"
#include "panels/orvane_main.h"
#include "platform/event_loop.h"
#include "results/results_console.h"
#include "state/cal_state.h"
#include "state/link_tally.h"
#include "state/ramp_state.h"
#include "state/reply_state.h"

namespace orvane {

/// Turns what comes from the Target into console texts, values and the end of the exchange. Fed by the link, from its
/// serial event handler alone.
class ReplyDecoder {
 public:
  ReplyDecoder(EventLoop& loop, ReplyState& state, LinkTally& tally, CalState& cal, RampState& ramp,
               PanelRef<OrvaneMain> main, PanelRef<FrmBaseBand> baseBand, ResultsConsole& console);

  /// A command of that operation has gone out.
  void Expect(Integer operation) { expected_ = operation; }
  /// The port has been opened: who answers from here on need not be who answered before.
  void MeetTarget() { state_.checksums = {}; }

  /// Gathers received text (one character a byte) until a whole frame stands there, at most 60 ms from the first text
  /// behind a command, and decodes it. Serves events meanwhile: texts that they bring are gathered in calls nested in
  /// this one, and the call that sees the frame whole decodes it for all.
  /// @throws StationFailure for more than 200 bytes, and for a frame that is too short for what it should hold.
  void Take(std::string_view text);

  /// A call of Take is on the stack.
  [[nodiscard]] bool Gathering() const { return depth_ > 0; }

 private:
  void Gather();
  void Decode();
  /// Stores what deframing left in `ReplyBytes`; places behind it keep what an earlier reply left there.
  void Publish(const Deframed& reply, std::size_t gathered);
  void JudgeFrame(const Deframed& reply);
  void TakeFrame(FrameSpan frame);
  void ReportFailureStatus();
  [[nodiscard]] ReplyLayout Layout() const;

  EventLoop& loop_;
  ReplyState& state_;
  LinkTally& tally_;
  CalState& cal_;
  ReplyOutlets outlets_;
  int depth_ = 0;
  TimePoint spinStart_{0};
  std::optional<Integer> expected_;
};

}  // namespace orvane
