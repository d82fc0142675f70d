#include "app/automation/state_reader.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <functional>
#include <ranges>
#include <string>
#include <type_traits>
#include <vector>

#include "base/decimal4.h"
#include "base/text.h"
#include "rfparams/record_layout.h"

namespace orvane {
namespace {

template <class Value>
requires std::is_arithmetic_v<Value> Json JsonOf(Value value) { return value; }
Json JsonOf(Decimal4 value) { return value.ToDouble(); }
Json JsonOf(const std::string& text) { return text; }

template <std::ranges::range Values>
requires(!std::same_as<Values, std::string>) Json JsonOf(const Values& values) {
  Json array = Json::array();
  for (const auto& value : values) array.push_back(JsonOf(value));
  return array;
}

/// The labels differ, so that each is put behind the others without a look for its equal.
Json JsonOf(const RFParameter& record) {
  RFParameter values = record;
  Json object = Json::object();
  auto& members = object.get_ref<Json::object_t&>();
  members.reserve(kParameterCount);
  for (const ParameterSlot& slot : ParameterSlots()) {
    std::string label;
    AppendLabel(label, slot);
    VisitValue(slot, values, [&](auto& value) { members.emplace_back(std::move(label), value); });
  }
  return object;
}

/// The other way round. @throws Json::exception where the value is of another form.
template <class Value>
requires std::is_arithmetic_v<Value>
void Take(const Json& json, Value& value) { value = json.get<Value>(); }
void Take(const Json& json, Decimal4& value) { value = Decimal4::FromDouble(json.get<double>()); }
void Take(const Json& json, std::string& text) { text = json.get<std::string>(); }

template <std::ranges::range Values>
requires(!std::same_as<Values, std::string>) void Take(const Json& json, Values& values) {
  auto at = values.begin();
  for (const Json& value : json) {
    if (at == values.end()) return;
    Take(value, *at++);
  }
}
/// It comes from a parameter file alone.
void Take(const Json& /*json*/, RFParameter& /*record*/) {}

struct StateRow {
  std::string_view name;
  std::function<Json(const StationState&)> read;
  std::function<void(const Json&, StationState&)> write;
};

template <class Group, class Value>
StateRow Row(std::string_view name, Group StationState::*group, Value Group::*member) {
  return {name, [=](const StationState& state) { return JsonOf(state.*group.*member); },
          [=](const Json& json, StationState& state) { Take(json, state.*group.*member); }};
}

std::vector<StateRow> OtherRows() {
  return {
      Row("LogFileNumber", &StationState::console, &ConsoleState::LogFileNumber),
      Row("LogOffState", &StationState::console, &ConsoleState::LogOffState),
      Row("LogFileName", &StationState::console, &ConsoleState::LogFileName),
      Row("SerialPortNumber", &StationState::console, &ConsoleState::SerialPortNumber),
      Row("SerialBaud", &StationState::console, &ConsoleState::SerialBaud),
      Row("SerialParity", &StationState::console, &ConsoleState::SerialParity),
      Row("SerialDataBits", &StationState::console, &ConsoleState::SerialDataBits),
      Row("SerialStopBits", &StationState::console, &ConsoleState::SerialStopBits),
      Row("SerialInBuffer", &StationState::console, &ConsoleState::SerialInBuffer),
      Row("SerialOutBuffer", &StationState::console, &ConsoleState::SerialOutBuffer),
      Row("SerialInputLength", &StationState::console, &ConsoleState::SerialInputLength),
      Row("TargetName", &StationState::console, &ConsoleState::TargetName),
      Row("SerialPortState", &StationState::console, &ConsoleState::SerialPortState),
      Row("TestSetKind", &StationState::testSet, &TestSetState::TestSetKind),
      Row("TestSetReady", &StationState::testSet, &TestSetState::TestSetReady),
      Row("ibsta", &StationState::niGlobal, &NiGlobal::ibsta),
      Row("iberr", &StationState::niGlobal, &NiGlobal::iberr),
      Row("GpibBoardNumber", &StationState::testSet, &TestSetState::GpibBoardNumber),
      Row("GpibPrimaryAddress", &StationState::testSet, &TestSetState::GpibPrimaryAddress),
      Row("GpibSecondaryAddress", &StationState::testSet, &TestSetState::GpibSecondaryAddress),
      Row("GpibReadSize", &StationState::testSet, &TestSetState::GpibReadSize),
      Row("TestSetEventText", &StationState::testSet, &TestSetState::TestSetEventText),
      Row("RFParams", &StationState::rf, &RFState::RFParams),
      Row("RFParamText", &StationState::rf, &RFState::RFParamText),
      Row("EepromImage", &StationState::rf, &RFState::EepromImage),
      Row("RFParamCount", &StationState::rf, &RFState::RFParamCount),
      Row("RampTable", &StationState::ramp, &RampState::RampTable),
      Row("RampStorageMode", &StationState::ramp, &RampState::RampStorageMode),
      Row("CalMode", &StationState::cal, &CalState::CalMode),
      Row("SaveMode", &StationState::cal, &CalState::SaveMode),
      Row("CalStopRequested", &StationState::cal, &CalState::CalStopRequested),
      Row("CalFailed", &StationState::cal, &CalState::CalFailed),
      Row("GsmCalDone", &StationState::cal, &CalState::GsmCalDone),
      Row("DcsCalDone", &StationState::cal, &CalState::DcsCalDone),
      Row("SpareCalDone", &StationState::cal, &CalState::SpareCalDone),
      Row("PowerIndex", &StationState::cal, &CalState::PowerIndex),
      Row("InitValueIndex", &StationState::cal, &CalState::InitValueIndex),
      Row("LossTable", &StationState::cal, &CalState::LossTable),
      Row("APCDACPatternTable", &StationState::pattern, &PatternState::APCDACPatternTable),
      Row("CalSaveFileName", &StationState::cal, &CalState::CalSaveFileName),
      Row("CalSaveFileOk", &StationState::cal, &CalState::CalSaveFileOk),
      Row("PSReady", &StationState::charger, &ChargerState::PSReady),
      Row("LoaderReady", &StationState::charger, &ChargerState::LoaderReady),
      Row("PSVoltageSet", &StationState::charger, &ChargerState::PSVoltageSet),
      Row("BatCalShowDone", &StationState::charger, &ChargerState::BatCalShowDone),
      Row("CC2CVADCSaved", &StationState::charger, &ChargerState::CC2CVADCSaved),
      Row("ShutDownADCSaved", &StationState::charger, &ChargerState::ShutDownADCSaved),
  };
}

std::vector<StateRow> ReplyRows() {
  return {
      Row("FrameData", &StationState::reply, &ReplyState::FrameData),
      Row("ReplyDone", &StationState::reply, &ReplyState::ReplyDone),
      Row("TMStatus", &StationState::reply, &ReplyState::TMStatus),
      Row("ReplyOperation", &StationState::reply, &ReplyState::ReplyOperation),
      Row("ReplyItem", &StationState::reply, &ReplyState::ReplyItem),
      // Bytes as they came, one character each.
      StateRow{"ReplyBuffer", [](const StationState& state) { return Json(TextOfBytes(state.reply.ReplyBuffer)); },
               [](const Json& json, StationState& state) {
                 state.reply.ReplyBuffer = BytesOfText(json.get<std::string>());
               }},
      Row("ReplyBytes", &StationState::reply, &ReplyState::ReplyBytes),
      Row("ReplySpin", &StationState::reply, &ReplyState::ReplySpin),
      Row("ReplyHandled", &StationState::reply, &ReplyState::ReplyHandled),
      Row("PlainReplyMode", &StationState::reply, &ReplyState::PlainReplyMode),
      Row("SyncDelay", &StationState::reply, &ReplyState::SyncDelay),
      Row("TargetMode", &StationState::reply, &ReplyState::TargetMode),
      Row("CommEventText", &StationState::reply, &ReplyState::CommEventText),
      Row("CommErrorText", &StationState::reply, &ReplyState::CommErrorText),
      Row("AdcEnableValue", &StationState::reply, &ReplyState::AdcEnableValue),
      Row("ConvertedAdcValue", &StationState::reply, &ReplyState::ConvertedAdcValue),
      Row("RawAdcValue", &StationState::reply, &ReplyState::RawAdcValue),
      Row("CurrentTestModeValue", &StationState::reply, &ReplyState::CurrentTestModeValue),
      Row("PowerMeasureTimes10", &StationState::reply, &ReplyState::PowerMeasureTimes10),
      Row("RawAdcStage", &StationState::reply, &ReplyState::RawAdcStage),
      Row("RawAdcSkip", &StationState::reply, &ReplyState::RawAdcSkip),
      Row("RawAdcOutOfWindow", &StationState::reply, &ReplyState::RawAdcOutOfWindow),
  };
}

/// All rows.
const std::vector<StateRow>& StateRows() {
  static const std::vector<StateRow> rows = [] {
    std::vector<StateRow> all = ReplyRows();
    const std::vector<StateRow> more = OtherRows();
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }();
  return rows;
}

}  // namespace

std::optional<Json> ReadState(const StationState& state, std::string_view name) {
  const auto& rows = StateRows();
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const StateRow& r) { return r.name == name; });
  if (row == rows.end()) return std::nullopt;
  return row->read(state);
}

Json ReadPlainStates(const StationState& state) {
  constexpr std::array kLarge{"FrameData",   "ReplyBytes", "RFParams",          "RFParamText",
                              "EepromImage", "RampTable",  "APCDACPatternTable"};
  Json all = Json::object();
  for (const StateRow& row : StateRows()) {
    if (std::find(kLarge.begin(), kLarge.end(), row.name) == kLarge.end())
      all[std::string(row.name)] = row.read(state);
  }
  return all;
}

void WritePlainStates(const Json& values, StationState& state) {
  for (const StateRow& row : StateRows()) {
    if (const auto value = values.find(row.name); value != values.end()) row.write(*value, state);
  }
}

}  // namespace orvane
