#include "app/stations/supervised_station.h"

#include <chrono>
#include <utility>

namespace orvane {
namespace {

using namespace std::chrono_literals;
using Json = nlohmann::ordered_json;

constexpr auto kLook = 500ms;
constexpr int kBoxOpen = -32006;

}  // namespace

SupervisedStation::SupervisedStation(std::function<PlannedStation()> plan, QObject* parent)
    : QObject(parent), plan_(std::move(plan)), client_(plan_().socket) {
  sight_.name = plan_().name;
  look_.setInterval(kLook);
  connect(&look_, &QTimer::timeout, this, &SupervisedStation::Look);
  process_.onSaid = [this](const QString& line) { onSaid(line); };
  process_.onEnded = [this] {
    look_.stop();
    client_.End();
    sight_.EndedSo(process_.Ending());
    onChanged();
    onEnded();
  };
  client_.onConnected = [this] { Welcome(); };
  client_.onTold = [this](const std::string& method, const Json& params) {
    sight_.Take(method, params);
    onChanged();
  };
}

void SupervisedStation::Start() {
  if (process_.Runs()) return;
  const PlannedStation planned = plan_();
  sight_.name = planned.name;
  sight_.Started();
  process_.Start(planned.command);
  // One that could not be started has said so already.
  if (process_.Runs()) client_.Begin();
  onChanged();
}

void SupervisedStation::Welcome() {
  client_.Ask("subscribe", {{"topics", {"step"}}}, nullptr);
  sight_.Connected();
  look_.start();
  AskForTheUnit();
  onChanged();
}

void SupervisedStation::Look() {
  if (!sight_.box.isEmpty()) LookForTheBox();
  if (sight_.stands == StationSight::Stands::Idle) AskForTheUnit();
}

/// Between two runs. Within one the port keeps what the run began with to itself.
void SupervisedStation::AskForTheUnit() {
  client_.Ask("unit", Json::object(), [this](const Json& result, const Json&) {
    if (!result.is_object() || sight_.stands != StationSight::Stands::Idle) return;
    const QString before = sight_.unit;
    sight_.TakeUnit(result);
    if (sight_.unit != before) onChanged();
  });
}

/// A port tells of a box that opens, and not that it was answered at the station's own page. An act at nothing is
/// refused for the box while there is one, and for its name when there is none.
void SupervisedStation::LookForTheBox() {
  client_.Ask("click", {{"control", "none"}}, [this](const Json&, const Json& error) {
    if (!error.is_object() || error.value("code", 0) == kBoxOpen) return;
    sight_.box.clear();
    onChanged();
  });
}

}  // namespace orvane
