#pragma once

#include <array>
#include <sstream>
#include <string>
#include <string_view>

#include "link/reply_decoder.h"
#include "link/target_link.h"
#include "platform/operation_nest.h"
#include "platform/operator.h"
#include "platform/virtual_event_loop.h"
#include "support/fake_desk.h"
#include "support/fake_serial.h"
#include "support/memory_files.h"

namespace orvane::test {

/// "02 14 00" as bytes.
inline std::string Bytes(const std::string& hex) {
  std::string bytes;
  std::istringstream in(hex);
  for (std::string digits; in >> digits;) bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
  return bytes;
}

/// Bytes as "02 14 00".
inline std::string Hex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += {kDigits[byte / 16U], kDigits[byte % 16U]};
  }
  return text;
}

/// When a wait for a reply that does not come ends.
inline constexpr TimePoint kFullWait = std::chrono::milliseconds(2500) + TimePoint{1};

/// The link on an open line, with a Target that says just what the test lets it say.
struct LinkRig {
  LinkRig() {
    state.TargetMode = "TestMode";
    serial.answer = nullptr;
    serial.onComm = [this](int commEvent) { nest.Run([&] { link.OnComm(commEvent); }); };
    serial.Open();
    link.Connect();
    nest.onStopped.push_back([this] { link.Rest(); });
  }

  /// Bytes from the Target, so long from now.
  void Later(TimePoint after, const std::string& hex) {
    loop.PostAt(loop.Now() + after, [this, bytes = Bytes(hex)] { serial.Receive(bytes); });
  }
  /// What follows the sync bytes of the frame that a line sends, up to the terminator; empty if nothing was sent.
  std::string BodyOf(const std::string& line) {
    serial.writes.clear();
    main.txtUserCommand.SetText(line);
    link.CommandInterpreter();
    link.Rest();
    if (serial.writes.empty()) return "";
    std::string body = serial.writes.at(1);
    body.erase(body.find_last_not_of('\0') + 1);
    return Hex(body);
  }
  /// Sends a line and answers it one millisecond later.
  void Exchange(const std::string& line, const std::string& replyHex) {
    Later(std::chrono::milliseconds(1), replyHex);
    link.RunTargetCommand(line);
  }
  [[nodiscard]] const std::string& Shown() const { return main.txtResults.Text(); }

  VirtualEventLoop loop;
  Journal journal;
  FakeSerial serial{loop};
  FakeBoxes boxes{journal};
  MemoryFiles files;
  OrvaneMain main;
  FrmBaseBand baseBand;
  ReplyState state;
  LinkTally tally;
  CalState cal;
  RampState ramp;
  ConsoleState consoleState;
  ResultsConsole console{main, consoleState, files, boxes};
  ReplyDecoder decoder{loop, state, tally, cal, ramp, main, baseBand, console};
  TargetLink link{loop, serial, main, console, decoder, state, tally, boxes};
  OperationNest nest{boxes};
  Operator hand{nest};
};

}  // namespace orvane::test
