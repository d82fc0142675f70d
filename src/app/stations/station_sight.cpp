#include "app/stations/station_sight.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <utility>

namespace orvane {
namespace {

using Json = nlohmann::ordered_json;

/// A text member; empty where there is none.
QString TextOf(const Json& object, const char* name) {
  const auto member = object.find(name);
  return object.is_object() && member != object.end() && member->is_string()
             ? QString::fromStdString(member->get<std::string>())
             : QString();
}

QString FirstReason(const Json& params) {
  const auto steps = params.find("steps");
  if (steps == params.end() || !steps->is_array()) return {};
  for (const Json& step : *steps) {
    if (QString reason = TextOf(step, "reason"); !reason.isEmpty()) return reason;
  }
  return {};
}

}  // namespace

int StationSight::YieldPercent() const {
  constexpr int kAll = 100;
  return units == 0 ? -1 : passed * kAll / units;
}

void StationSight::Started() {
  stands = Stands::Starting;
  ending.clear();
  unit.clear();
  step.clear();
  box.clear();
  verdict.clear();
  reason.clear();
  stepsDone = 0;
  diedInRun = false;
}

void StationSight::Connected() {
  if (stands == Stands::Starting) stands = Stands::Idle;
}

void StationSight::Take(const std::string& method, const Json& params) {
  if (!params.is_object()) return;
  if (method == "box") {
    box = TextOf(params, "text");
    return;
  }
  if (method == "step") TakeStep(params);
  if (method == "verdict") TakeVerdict(params);
}

void StationSight::TakeStep(const Json& params) {
  box.clear();
  if (TextOf(params, "state") == "began") {
    if (stands != Stands::InRun) stepsDone = 0;
    stands = Stands::InRun;
    verdict.clear();
    reason.clear();
    step = TextOf(params, "name");
  } else {
    step.clear();
    stepsDone = std::min(stepsDone + 1, kStepsOfARun);
  }
}

void StationSight::TakeVerdict(const Json& params) {
  box.clear();
  // What is tried by hand between two units is no unit.
  const bool isOfAUnit = stands == Stands::InRun;
  stands = Stands::Idle;
  step.clear();
  verdict = TextOf(params, "result");
  isComplete = params.value("complete", Json()) == true;
  reason = FirstReason(params);
  if (!isOfAUnit || verdict == "NONE") return;
  ++units;
  if (verdict == "PASS" && isComplete) ++passed;
}

void StationSight::EndedSo(const QString& how) {
  diedInRun = stands == Stands::InRun;
  stands = Stands::Ended;
  ending = how;
  step.clear();
  box.clear();
}

void StationSight::TakeUnit(const Json& answer) { unit = TextOf(answer, "serial"); }

QString StepInWords(const QString& step) {
  static constexpr std::array kWords{std::pair{"receive", QT_TRANSLATE_NOOP("Stations", "Receiver")},
                                     std::pair{"transmitDCS", QT_TRANSLATE_NOOP("Stations", "Transmitter DCS")},
                                     std::pair{"transmitGSM", QT_TRANSLATE_NOOP("Stations", "Transmitter GSM")},
                                     std::pair{"save", QT_TRANSLATE_NOOP("Stations", "Saving")},
                                     std::pair{"charger", QT_TRANSLATE_NOOP("Stations", "Battery")}};
  const auto* const row = std::find_if(kWords.begin(), kWords.end(), [&](const auto& r) { return step == r.first; });
  return row == kWords.end() ? step : QCoreApplication::translate("Stations", row->second);
}

}  // namespace orvane
