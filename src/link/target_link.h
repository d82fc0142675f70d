#pragma once

#include <string>
#include <string_view>

#include "base/numbers.h"
#include "link/frame.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/event_loop.h"
#include "platform/serial_control.h"
#include "results/results_console.h"
#include "state/link_tally.h"
#include "state/reply_state.h"

namespace orvane {

class ReplyDecoder;

/// The one door to the Target: a command line in, a frame on the serial line, the wait for its reply.
class TargetLink {
 public:
  TargetLink(EventLoop& loop, SerialControl& mscomTarget, PanelRef<OrvaneMain> main, ResultsConsole& console,
             ReplyDecoder& decoder, ReplyState& state, LinkTally& tally, Boxes& boxes);

  /// Answers the keys of `txtUserCommand`. The serial events come through OnComm, each as an operation of the nest.
  void Connect();

  /// Puts the line into `txtUserCommand`, interprets it and waits for the reply. The caller then looks at
  /// `Succeeded()`, or at the results in the reply state.
  /// @throws StationFailure for arguments that are no numbers or do not fit their bytes; nothing is sent then.
  void RunTargetCommand(std::string_view line);

  /// Interprets the text of `txtUserCommand` and sends its frame; no wait.
  void CommandInterpreter();
  /// Serves events until the reply is decoded or 2.5 seconds and a bit have passed. @return whether it came.
  bool WaitForReply();

  /// Processor time: that many times the count in `txtSyncDelay`. Serves nothing.
  /// @throws StationFailure when the box holds no number.
  void PaceDelay(int paces = 1);

  /// Escapes, assembles and transmits one frame of 53 bytes.
  void BuildAndSendFrame(Integer operation, Integer count, FrameData data, Integer checksum);
  /// The first data of the frame that was sent last, before they were escaped.
  [[nodiscard]] std::string SentData(int count) const { return PlainData(state_.FrameData, count); }
  /// Transmits a text character by character, a pace behind each. No path of the station uses it.
  void DataSend(std::string_view text);

  /// The serial event handler.
  void OnComm(int commEvent);

  /// Opens the port. @throws StationFailure
  void OpenPort();
  [[nodiscard]] bool PortOpen() const { return mscomTarget_.PortOpen(); }
  /// Numeric status of the last exchange: 0 success, 255 nothing came.
  [[nodiscard]] int Status() const { return StatusOf(state_); }
  [[nodiscard]] bool Succeeded() const { return Status() == 0; }
  /// Nothing came.
  [[nodiscard]] bool Silent() const { return Status() == kNothingCame; }
  [[nodiscard]] bool InTestMode() const { return state_.TargetMode == "TestMode"; }

  /// After a failure has stopped everything: no reply is awaited, nothing is left to decode.
  void Rest();

 private:
  void Receive();
  void OnUserCommandKey(char32_t key);
  void ShowPayloadCaption();

  EventLoop& loop_;
  SerialControl& mscomTarget_;
  PanelRef<OrvaneMain> main_;
  ResultsConsole& console_;
  ReplyDecoder& decoder_;
  ReplyState& state_;
  LinkTally& tally_;
  Boxes& boxes_;
  /// Reply waits on the stack.
  int waits_ = 0;
};

}  // namespace orvane
