#pragma once

#include <deque>

#include "rxcal/mp_panel.h"
#include "rxcal/rx_run.h"
#include "support/rig.h"

namespace orvane::test {

/// The receive run, and a Target whose power reports come from a script, in 64ths of a dB.
struct RxRig : Rig {
  explicit RxRig(const std::string& kind = "HP8960") {
    run.Connect();
    panel.Connect();
    OpenPort();
    OpenTestSet(kind);
    serial.answer = [this](const SentCommand& command) { return Answer(command); };
  }

  std::string Answer(const SentCommand& command) {
    constexpr std::uint8_t kSr = 36;
    if (refuse && refuse(journal.Commands().back())) return PaddedReply(command.operation, 1);
    if (command.operation != kSr) return PaddedReply(command.operation, 0, command.data);
    std::uint16_t value = level;
    if (!levels.empty()) {
      value = levels.front();
      levels.pop_front();
    }
    return PaddedReply(
        kSr, 0,
        {1, 0, reportKind, 0, static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>(value >> 8)});
  }

  std::optional<std::string> Run() {
    return Act([this] { face.cmdMPRxAllAutoCal.Click(); });
  }

  /// How a whole run would record the receive step.
  StepRecord Step() {
    state.report.Begin();
    state.report.Enter(RunStep::Receive);
    Run();
    state.report.Leave();
    return state.report.Steps().back();
  }

  /// Reports of a whole default run: two settling ones ahead of each band, then each channel's level twice.
  void Script(const std::vector<int>& dB) {
    for (std::size_t i = 0; i < dB.size(); ++i) {
      const int reads = i == 0 || i == 3 || i == 10 ? 4 : 2;
      for (int read = 0; read < reads; ++read) levels.push_back(static_cast<std::uint16_t>(dB[i] * 64));
    }
  }

  FrmMPAutoCal& face = panels.mpAutoCal;
  FrmAutoCal& autoCal = panels.autoCal;
  RunButtons runButtons{panels.autoCal, panels.mpAutoCal, panels.baseBand};
  bool downlinkOk = true;
  RxRun run{link,
            state.reply,
            testSet,
            panels.autoCal,
            panels.mpAutoCal,
            state.cal,
            state.rf,
            boxes,
            state.report,
            state.rxTrail,
            runButtons,
            [this] {
              journal.Add("DownlinkParamSet");
              return downlinkOk;
            }};
  MpPanel panel{
      panels.mpAutoCal, panels.autoCal, state.cal, link, boxes, [this] { journal.Add("DownloadSaveFileName"); }};

  std::uint16_t level = 56 * 64;
  std::deque<std::uint16_t> levels;
  std::uint8_t reportKind = 2;
  /// Command lines that get a failure status.
  std::function<bool(const std::string& line)> refuse;
};

}  // namespace orvane::test
