#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "console/by_hand/receiver_by_hand.h"
#include "console/by_hand/transmitter_by_hand.h"
#include "support/rig.h"

namespace orvane::test {

/// The tabs "RX" and "TX" before a Target on an open line, which keeps what it is told and reads it back, and whose
/// power report says 50 dB.
struct HandRig : Rig {
  HandRig() {
    receiver.Connect();
    transmitter.Connect();
    serial.delay = TimePoint{0};
    serial.answer = [this](const SentCommand& command) { return Answer(command); };
    OpenPort();
  }

  std::string Answer(const SentCommand& command) {
    constexpr std::uint8_t kStatistics = 36;
    if (silent) return "";
    ++commands;
    if (commands == failing) return PaddedReply(command.operation, 1);
    switch (command.operation) {
      case 48:
      case 52:
      case 54:
        kept[{command.operation + 1, command.data.at(0)}] =
            static_cast<std::uint16_t>(command.data.at(2) + 256 * command.data.at(3));
        break;
      case 49:
      case 53:
      case 55:
        return PaddedReply(command.operation, 0,
                           ItemAndValue(command.data.at(0), kept[{command.operation, command.data.at(0)}]));
      case kStatistics:
        return PaddedReply(kStatistics, 0, {1, 0, 2, 0, 0x80, 0x0C});
      default:
        break;
    }
    return PaddedReply(command.operation, 0);
  }

  /// The commands of an act, each with the paces behind it that are the station's own: "rfpw 1 30 +101".
  std::vector<std::string> Trace(const std::function<void()>& act) {
    constexpr TimePoint kPace{20000 * 2};
    journal.Clear();
    act();
    std::vector<std::string> trace = journal.Lines();
    for (std::size_t i = 0; i < trace.size(); ++i) {
      const TimePoint next = i + 1 < trace.size() ? journal.Times()[i + 1] : loop.Now();
      if (const auto paces = (next - journal.Times()[i]) / kPace; paces > 0) trace[i] += " +" + std::to_string(paces);
    }
    return trace;
  }
  std::vector<std::string> CommandsOf(const std::function<void()>& act) {
    journal.Clear();
    act();
    return Commands();
  }
  [[nodiscard]] const std::string& Shown() const { return main.txtResults.Text(); }

  OrvaneMain& main = panels.main;
  ReceiverByHand receiver{main, link, boxes};
  TransmitterByHand transmitter{main, link, state.reply, boxes};

  bool silent = false;
  /// Which command, from 1 on, gets a failure status.
  int failing = 0;
  int commands = 0;
  std::map<std::pair<int, int>, std::uint16_t> kept;
};

inline void ExpectWarning(const Box& box, const std::string& text) {
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.title, "Warning");
  EXPECT_EQ(box.icon, BoxIcon::Stop);
  EXPECT_EQ(box.buttons, std::vector<BoxButton>{BoxButton::Ok});
}

/// A box or a combo that refuses characters: what passes beside digits, and what it falls back to.
template <class Box>
struct FilterRow {
  Box& box;
  std::string allowed;
  bool hangul;  ///< Refuses the Hangul letters.
  const char* resetText;
};

/// Types each character of the two ranges, and their neighbours, into the box.
template <class Box>
void ExpectFilter(HandRig& rig, const FilterRow<Box>& row) {
  const auto refused = [&](const std::string& text) {
    rig.boxes.shown.clear();
    rig.op.Type(row.box, text);
    if (rig.boxes.shown.empty()) {
      EXPECT_EQ(row.box.Text(), text);
      return false;
    }
    ExpectWarning(rig.boxes.shown.at(0), "Input the number without blank.");
    EXPECT_EQ(rig.boxes.shown.size(), 1U);
    EXPECT_EQ(row.box.Text(), row.resetText);
    return true;
  };
  for (char c = 32; c < 127; ++c) {
    const bool passes = (c >= '0' && c <= '9') || row.allowed.find(c) != std::string::npos;
    EXPECT_EQ(refused(std::string("7") + c), !passes) << row.box.Name() << " '" << c << "'";
  }
  for (const char* letter : {"\u3131", "\u3163"}) {
    EXPECT_EQ(refused(std::string("7") + letter), row.hangul) << row.box.Name() << " " << letter;
  }
  for (const char* passing : {"", "7\t", "7\x7F", "7\u3130", "7\u3164", "7\uAC00"}) {
    EXPECT_FALSE(refused(passing)) << row.box.Name() << " '" << passing << "'";
  }
}

}  // namespace orvane::test
