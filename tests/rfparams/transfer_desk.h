#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "rfparams/transfer.h"
#include "support/rig.h"

namespace orvane::test {

inline constexpr std::uint8_t kTableRead = 83;
inline constexpr std::uint8_t kTableWrite = 82;

/// A complete parameter file whose values are their positions, modulo 200.
inline std::string CompleteFile() {
  std::string text = "rf_revision\t=\tRF_SL2\r\n";
  for (int p = 1; p < 1857; ++p) text += "x = " + std::to_string(p % 200) + "\r\n";
  return text;
}

class TransferDesk : public ::testing::Test {
 protected:
  TransferDesk() {
    transfer_.Connect();
    rig_.OpenPort();
    rig_.panels.downLoad.Show();
    rig_.files.content["/home/unit.epm"] = CompleteFile();
    rig_.state.reply.TMStatus.clear();
  }

  void DownLoad(const std::string& path = "/home/unit.epm") {
    rig_.dialogs.answers.emplace_back(path);
    ASSERT_EQ(rig_.op.Click(panel_.cmdEepromDownLoad), std::nullopt);
  }
  void UpLoad(const std::string& path = "/home/back.epm") {
    rig_.dialogs.answers.emplace_back(path);
    ASSERT_EQ(rig_.op.Click(panel_.cmdUpLoad), std::nullopt);
  }
  /// A Target whose EEPROM can be read: byte `offset` is `byteAt(offset)`.
  void AnswerReads(std::function<int(int offset)> byteAt) {
    rig_.serial.answer = [byteAt, row = 0](const SentCommand& command) mutable {
      if (command.operation != kTableRead) return PaddedReply(command.operation, 0, command.data);
      std::vector<std::uint8_t> data{3};
      for (int j = 0; j < 16 && row * 16 + j < 1816; ++j)
        data.push_back(static_cast<std::uint8_t>(byteAt(row * 16 + j)));
      ++row;
      return PaddedReply(kTableRead, 0, data);
    };
  }
  std::vector<std::string> Entries(std::size_t first, std::size_t count) {
    const auto begin = rig_.state.rf.EepromImage.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
  }

  Rig rig_;
  FrmDownLoad& panel_ = rig_.panels.downLoad;
  RFState& rf_ = rig_.state.rf;
  ParameterTransfer transfer_{rig_.panels.downLoad, rig_.panels.autoCal, rig_.state.rf,     rig_.state.cal,
                              rig_.state.reply,     rig_.link,           rig_.state.report, rig_.boxes,
                              rig_.dialogs,         rig_.files};
};

}  // namespace orvane::test
