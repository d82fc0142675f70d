// A device that is pulled out at any exchange, and put back for the next run.

#include <gtest/gtest.h>

#include <chrono>

#include "base/failure.h"
#include "station/virtual_station.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// The line of a bench behind a plug. Pulled out, it is closed and its station is told, as a real device's control
/// does.
class Plug final : public SerialControl {
 public:
  Plug(VirtualEventLoop& loop, SerialControl& line) : loop_(loop), line_(line) {
    line_.onComm = [this](int event) {
      if (onComm) onComm(event);
    };
  }
  /// So long after the write of that number from now on.
  void PullAt(int write, TimePoint after) {
    pullAt_ = writes_ + write;
    after_ = after;
  }

  [[nodiscard]] bool PortOpen() const override { return line_.PortOpen(); }
  void Open() override {
    line_.setup = setup;
    line_.Open();
  }
  void Close() override { line_.Close(); }
  void Output(std::string_view bytes) override {
    if (++writes_ == pullAt_ && after_ == kInsideTheWrite) {
      line_.Close();
      throw StationFailure("The device is gone.");
    }
    line_.Output(bytes);
    if (writes_ == pullAt_) loop_.PostAt(loop_.Now() + after_, [this] { Pull(); });
  }
  [[nodiscard]] std::string Input() override { return line_.Input(); }

  static constexpr TimePoint kInsideTheWrite{-1};
  std::function<void()> onGone;

 private:
  void Pull() {
    if (!line_.PortOpen()) return;
    line_.Close();
    onGone();
  }

  VirtualEventLoop& loop_;
  SerialControl& line_;
  int writes_ = 0;
  int pullAt_ = 0;
  TimePoint after_{0};
};

/// A station whose Target hangs on a plug, with its instruments initialized.
struct PluggedStation {
  PluggedStation() {
    VirtualStation whole(1);
    files.content = whole.files.content;
    plug.onGone = [this] { station.Nest().Run([] { throw StationFailure("The device is gone."); }); };
    station.State().report.concluded.Connect([this](Verdict told) { verdict = told; });
    station.Start();
    op.Click(panels.main.cmdInstrumentInitialize);
    panels.baseBand.Touch();
    op.Click(panels.baseBand.supply.initialize);
    op.Click(panels.baseBand.load.initialize);
  }
  /// Takes the Target through. @return whether it passed with every step complete
  bool Passes() {
    verdict = Verdict::None;
    if (plug.PortOpen()) op.Click(panels.main.cmdTargetReset);
    op.Click(panels.main.cmdTargetInitialize);
    return verdict == Verdict::Pass && station.State().report.AllComplete();
  }
  /// What was not complete.
  std::string Steps() {
    std::string text;
    for (const StepRecord& step : station.State().report.Steps()) {
      if (!step.complete) text += std::string(StepName(step.step)) + ": " + step.reason + "\n";
    }
    return text;
  }

  VirtualEventLoop loop;
  Journal journal;
  FakeBoxes boxes{journal};
  FakeDialogs dialogs;
  MemoryFiles files;
  bench::VirtualBench bench{loop, bench::BenchOptions{}};
  Plug plug{loop, bench.Serial()};
  Station station{{loop, plug, bench.Bus(), files, boxes, dialogs}};
  StationPanels& panels{station.Panels()};
  Operator op{station.Nest()};
  Verdict verdict = Verdict::None;
};

/// Writes of a good road: each command is two.
constexpr int kWrites = 746;

TEST(Unplugged, WhereverItWasTheNextRunPassesWithEveryStepComplete) {
  // Inside a write, right behind it, while its reply is on its way or coming in, and behind the reply.
  for (const TimePoint after :
       {Plug::kInsideTheWrite, TimePoint{0}, TimePoint{3ms}, TimePoint{6ms}, TimePoint{9ms}}) {
    for (int write = 1; write <= kWrites; write += 31) {
      SCOPED_TRACE(testing::Message() << "write " << write << ", " << after.count() << " ns behind it");
      PluggedStation rig;
      rig.plug.PullAt(write, after);
      EXPECT_FALSE(rig.Passes());
      EXPECT_TRUE(rig.station.Nest().Idle());
      EXPECT_TRUE(rig.Passes()) << rig.Steps();
    }
  }
}

}  // namespace
}  // namespace orvane::test
