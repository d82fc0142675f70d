#include "app/operator/unit_verdict.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

#include "adapters/qt/appearance.h"
#include "state/reading_words.h"

namespace orvane {
namespace {

struct VerdictTexts {
  Q_DECLARE_TR_FUNCTIONS(Verdict)
};

const StepRecord* FirstFlawed(const RunReport& report) {
  const auto& steps = report.Steps();
  const auto hit = std::find_if(steps.begin(), steps.end(), [](const StepRecord& step) { return !step.complete; });
  return hit == steps.end() ? nullptr : &*hit;
}

/// Readings first: their numbers tell most.
QString DetailsOf(const RunReport& report) {
  constexpr std::size_t kMostReadings = 3;
  QStringList lines;
  const auto& outside = report.Outside();
  for (std::size_t i = 0; i < std::min(outside.size(), kMostReadings); ++i) lines << ToQt(LimitsText(outside[i]));
  if (outside.size() > kMostReadings) {
    lines << VerdictTexts::tr("and %1 more").arg(outside.size() - kMostReadings);
  }
  for (const StepRecord& step : report.Steps()) {
    if (!step.complete) lines << NameOf(step.step) + ": " + ToQt(step.reason);
  }
  return lines.join(u'\n');
}

QString WhyOf(UnitVerdict verdict, const RunReport& report) {
  const StepRecord* flawed = FirstFlawed(report);
  const QString step = flawed == nullptr ? QString() : NameOf(flawed->step);
  switch (verdict) {
    case UnitVerdict::Pass:
      return VerdictTexts::tr("Every step was completed and everything is within its limits.");
    case UnitVerdict::OutOfTolerance:
      return VerdictTexts::tr("Every step ran, but a measured value lies outside its limits (%1).").arg(step);
    case UnitVerdict::NotMeasured:
      return VerdictTexts::tr("The unit is not calibrated: something was left out, failed or is not sure (%1).")
          .arg(step);
    case UnitVerdict::Fail:
      return step.isEmpty() ? VerdictTexts::tr("A measurement was outside its window.")
                            : VerdictTexts::tr("The unit failed in the step \"%1\".").arg(step);
    case UnitVerdict::None:
      return VerdictTexts::tr("The run ended without a verdict: this unit was not tested.");
  }
  return {};
}

QString ToDoOf(UnitVerdict verdict) {
  switch (verdict) {
    case UnitVerdict::Pass:
      return VerdictTexts::tr("Take the unit out. It is good.");
    case UnitVerdict::OutOfTolerance:
      return VerdictTexts::tr("Take it through once more; if it ends so again, put it aside for repair.");
    case UnitVerdict::NotMeasured:
      return VerdictTexts::tr("Never ship it: mend what stands below, then take it through once more.");
    case UnitVerdict::Fail:
      return VerdictTexts::tr("Take it through once more; if it fails again, put it aside for repair.");
    case UnitVerdict::None:
      return VerdictTexts::tr("Treat it as a unit that was not tested: take it through again.");
  }
  return {};
}

QString WordOf(UnitVerdict verdict) {
  switch (verdict) {
    case UnitVerdict::Pass:
      return VerdictTexts::tr("PASS");
    case UnitVerdict::OutOfTolerance:
      return VerdictTexts::tr("OUT OF TOLERANCE");
    case UnitVerdict::NotMeasured:
      return VerdictTexts::tr("NOT MEASURED");
    case UnitVerdict::Fail:
      return VerdictTexts::tr("FAIL");
    case UnitVerdict::None:
      return VerdictTexts::tr("NO RESULT");
  }
  return {};
}

}  // namespace

UnitVerdict VerdictOf(const RunReport& report) {
  const auto verdict = report.Concluded().value_or(Verdict::None);
  if (verdict == Verdict::Fail) return UnitVerdict::Fail;
  if (verdict == Verdict::None) return UnitVerdict::None;
  const auto doubt = report.Doubt();
  if (!doubt) return UnitVerdict::Pass;
  return *doubt == FlawKind::OutOfTolerance ? UnitVerdict::OutOfTolerance : UnitVerdict::NotMeasured;
}

VerdictWords WordsOf(const RunReport& report, bool isStopped, const std::string& failure) {
  const UnitVerdict verdict = VerdictOf(report);
  VerdictWords words{WordOf(verdict), WhyOf(verdict, report), ToDoOf(verdict), DetailsOf(report)};
  if (verdict != UnitVerdict::None) return words;
  if (isStopped) {
    words.why = VerdictTexts::tr("The run was stopped: this unit was not tested.");
  } else if (!failure.empty()) {
    words.why = VerdictTexts::tr("The run was broken off: this unit was not tested.");
    words.details = ToQt(failure) + (words.details.isEmpty() ? "" : "\n" + words.details);
  }
  return words;
}

QString NameOf(RunStep step) {
  switch (step) {
    case RunStep::Receive:
      return VerdictTexts::tr("Receiver");
    case RunStep::TransmitDcs:
      return VerdictTexts::tr("Transmitter DCS");
    case RunStep::TransmitGsm:
      return VerdictTexts::tr("Transmitter GSM");
    case RunStep::Save:
      return VerdictTexts::tr("Save");
    case RunStep::Charger:
      return VerdictTexts::tr("Battery");
  }
  return {};
}

}  // namespace orvane
