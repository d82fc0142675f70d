// Why a unit failed, beneath the verdict.

#include "app/windows/verdict_reasons.h"

#include <gmock/gmock.h>

#include "windows/windows_test.h"

namespace orvane::test {
namespace {

class VerdictReasonsTest : public testing::Test {
 protected:
  [[nodiscard]] std::string In(Panel& panel) {
    windowed_.Settle();
    const auto* label = windowed_.WindowOf(panel).findChild<QLabel*>("verdictReasons");
    return label->isHidden() ? "" : label->text().toStdString();
  }
  /// A run of one step that reads a power and is told a flaw.
  void Run(double power, FlawKind kind, Verdict verdict) {
    RunReport& report = windowed_.on.State().report;
    report.Begin();
    report.Enter(RunStep::TransmitGsm);
    report.Read({"tx.gsm.level.5.power", 40, "dBm", 31.95, 32.05});
    report.Read({"tx.gsm.level.5.power", power, "dBm", 31.95, 32.05});
    report.Read({"tx.gsm.phase.rms", 5.5, "degree", std::nullopt, 5});
    report.Read({"rx.512.level", 600, "0.1 dB"});
    report.Flaw("The power is too low.", kind);
    report.Leave();
    report.Conclude(verdict);
    report.End();
  }

  WindowedStation windowed_;
  StationPanels& panels_ = windowed_.on.Panels();
};

TEST_F(VerdictReasonsTest, OfAFailAreItsStepsItsReadingsWithTheirLimitsAndWhatToDo) {
  panels_.fail.Show();
  EXPECT_EQ(In(panels_.fail), "") << "nothing has run";
  Run(31.2, FlawKind::NotMeasured, Verdict::Fail);
  EXPECT_EQ(In(panels_.fail),
            "transmitGSM: The power is too low.\n"
            "GSM level 5, power: 31.2 dBm, limits 31.95 to 32.05\n"
            "GSM phase error RMS: 5.5 degree, at most 5\n"
            "Take the unit through once more. If it fails again, it goes to repair.");
  EXPECT_EQ(In(panels_.pass), "");
  windowed_.on.State().report.Begin();
  EXPECT_EQ(In(panels_.fail), "") << "another unit";
}

TEST_F(VerdictReasonsTest, OfAPassThatIsNoneYetAreTheReadingsOutsideTheirLimits) {
  panels_.pass.Show();
  Run(32, FlawKind::OutOfTolerance, Verdict::Pass);
  EXPECT_EQ(In(panels_.pass), "GSM phase error RMS: 5.5 degree, at most 5");
}

TEST_F(VerdictReasonsTest, ThatAreManyLeaveTheButtonInSight) {
  panels_.fail.Show();
  RunReport& report = windowed_.on.State().report;
  report.Begin();
  for (int level = 5; level < 15; ++level) {
    report.Read({"tx.gsm.level." + std::to_string(level) + ".power", 0, "dBm", 1, 2});
  }
  report.Conclude(Verdict::Fail);
  report.End();
  const std::string text = In(panels_.fail);
  EXPECT_THAT(text, testing::HasSubstr("GSM level 7, power: 0 dBm, limits 1 to 2\nand 7 more\n"));
}

}  // namespace
}  // namespace orvane::test
