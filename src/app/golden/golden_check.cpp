#include "app/golden/golden_check.h"

#include <algorithm>
#include <cmath>

#include "app/golden/golden_cause.h"
#include "app/golden/power_curve.h"
#include "app/records/reading_names.h"
#include "base/numbers.h"
#include "state/reading_words.h"

namespace orvane {
namespace {

constexpr std::string_view kPower = ".power";

std::string Rounded(double value) {
  constexpr double kPlaces = 100;
  return NumberText(std::round(value * kPlaces) / kPlaces);
}

std::string AsSentence(std::string text) {
  if (!text.ends_with(".")) text += ".";
  return text;
}

std::string ShortfallOf(const RunRecord& run) {
  if (IsCompletePass(run)) return "";
  if (!run.end) return "The run did not come to its end.";
  if (!run.end->reason.empty()) return run.end->reason;
  return run.end->verdict == "NONE" ? "The run ended without a verdict."
                                    : "The verdict was " + run.end->verdict + ".";
}

/// What an earlier check has said of the reference itself.
bool IsOfACheck(const RecordedReading& reading) { return reading.name.starts_with("golden."); }

/// One check of a run, reading by reading.
class Check {
 public:
  Check(const RunRecord& reference, const RunRecord& run, const GoldenLimits& limits)
      : reference_(reference), run_(run), limits_(limits) {}

  GoldenFinding Done() {
    GoldenFinding finding;
    finding.shortfall = ShortfallOf(run_);
    for (const RecordedReading& then : reference_.readings) {
      const auto allowed = AllowedDifference(limits_, then.name);
      // What was read once more is held against what was read last.
      if (!allowed || IsOfACheck(then) || ReadingOf(reference_, then.name) != &then) continue;
      if (const RecordedReading* now = ReadingOf(run_, then.name)) {
        Hold(then, *now, *allowed, finding);
      } else if (finding.shortfall.empty()) {
        finding.differences.push_back(
            {then.name, std::nullopt, then.value, *allowed,
             NameInWords(then.name) + ": not read, by the reference " + NumberText(then.value) + " " + then.unit});
      }
    }
    finding.pointsTo = CausesOf(deviations_);
    return finding;
  }

 private:
  struct Expected {
    double value;
    /// " at DAC value 690", where it is another one than then.
    std::string at;
  };

  void Hold(const RecordedReading& then, const RecordedReading& now, double allowed, GoldenFinding& finding) {
    const Expected expected = now.name.ends_with(kPower) ? PowerFor(then) : Expected{then.value, ""};
    const GoldenDeviation deviation{now.name, now.value - expected.value, allowed};
    deviations_.push_back(deviation);
    if (!deviation.IsOutside()) return;
    const std::string should = expected.at.empty() ? NumberText(expected.value) : Rounded(expected.value);
    finding.differences.push_back({now.name, now.value, expected.value, allowed,
                                   NameInWords(now.name) + ": " + NumberText(now.value) + " " + now.unit +
                                       expected.at + ", by the reference " + should + ", limit " +
                                       NumberText(allowed)});
  }

  /// Where the run's own levels reach farther than those of the reference, they tell how much a step of the DAC is.
  Expected PowerFor(const RecordedReading& then) const {
    const std::string search = then.name.substr(0, then.name.size() - kPower.size());
    const RecordedReading* const from = ReadingOf(reference_, search + ".dac");
    const RecordedReading* const to = ReadingOf(run_, search + ".dac");
    if (from == nullptr || to == nullptr || from->value == to->value) return {then.value, ""};
    const bool isGsm = then.name.starts_with("tx.gsm.");
    const PowerCurve& reference = isGsm ? referenceGsm_ : referenceDcs_;
    const PowerCurve& own = isGsm ? ownGsm_ : ownDcs_;
    const double beyond = reference.Beyond(from->value, to->value);
    const double beyondOwn = own.Beyond(from->value, to->value);
    const PowerCurve& curve = beyondOwn < beyond ? own : reference;
    const bool isUnknown = std::isinf(std::min(beyond, beyondOwn));
    return {then.value + (isUnknown ? 0 : curve.Rise(from->value, to->value)),
            " at DAC value " + NumberText(to->value)};
  }

  const RunRecord& reference_;
  const RunRecord& run_;
  const GoldenLimits& limits_;
  PowerCurve referenceGsm_{reference_, "gsm"};
  PowerCurve referenceDcs_{reference_, "dcs"};
  PowerCurve ownGsm_{run_, "gsm"};
  PowerCurve ownDcs_{run_, "dcs"};
  std::vector<GoldenDeviation> deviations_;
};

}  // namespace

std::string GoldenFinding::Text() const {
  std::string text;
  if (!shortfall.empty()) text += "The run was no complete PASS: " + AsSentence(shortfall);
  if (!differences.empty()) {
    const std::size_t others = differences.size() - 1;
    text += (text.empty() ? "" : " ") + differences.front().words +
            (others == 0 ? "." : ", and " + std::to_string(others) + " more.");
  }
  for (const std::string& sentence : pointsTo) text += " " + sentence;
  return text;
}

GoldenFinding CheckGolden(const RunRecord& reference, const RunRecord& run, const GoldenLimits& limits) {
  return Check(reference, run, limits).Done();
}

bool IsCompletePass(const RunRecord& run) {
  return run.identity.kind == "whole" && run.end && run.end->verdict == "PASS" && run.end->complete;
}

}  // namespace orvane
