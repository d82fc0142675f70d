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

struct StateRow {
  std::string_view name;
  std::function<Json(const StationState&)> read;
};

template <class Group, class Value>
auto Of(Group StationState::*group, Value Group::*member) {
  return [=](const StationState& state) { return JsonOf(state.*group.*member); };
}

std::vector<StateRow> OtherRows() {
  return {
      StateRow{"LogFileNumber", Of(&StationState::console, &ConsoleState::LogFileNumber)},
      StateRow{"LogOffState", Of(&StationState::console, &ConsoleState::LogOffState)},
      StateRow{"LogFileName", Of(&StationState::console, &ConsoleState::LogFileName)},
      StateRow{"SerialPortNumber", Of(&StationState::console, &ConsoleState::SerialPortNumber)},
      StateRow{"SerialBaud", Of(&StationState::console, &ConsoleState::SerialBaud)},
      StateRow{"SerialParity", Of(&StationState::console, &ConsoleState::SerialParity)},
      StateRow{"SerialDataBits", Of(&StationState::console, &ConsoleState::SerialDataBits)},
      StateRow{"SerialStopBits", Of(&StationState::console, &ConsoleState::SerialStopBits)},
      StateRow{"SerialInBuffer", Of(&StationState::console, &ConsoleState::SerialInBuffer)},
      StateRow{"SerialOutBuffer", Of(&StationState::console, &ConsoleState::SerialOutBuffer)},
      StateRow{"SerialInputLength", Of(&StationState::console, &ConsoleState::SerialInputLength)},
      StateRow{"TargetName", Of(&StationState::console, &ConsoleState::TargetName)},
      StateRow{"SerialPortState", Of(&StationState::console, &ConsoleState::SerialPortState)},
      StateRow{"TestSetKind", Of(&StationState::testSet, &TestSetState::TestSetKind)},
      StateRow{"TestSetReady", Of(&StationState::testSet, &TestSetState::TestSetReady)},
      StateRow{"ibsta", Of(&StationState::niGlobal, &NiGlobal::ibsta)},
      StateRow{"iberr", Of(&StationState::niGlobal, &NiGlobal::iberr)},
      StateRow{"GpibBoardNumber", Of(&StationState::testSet, &TestSetState::GpibBoardNumber)},
      StateRow{"GpibPrimaryAddress", Of(&StationState::testSet, &TestSetState::GpibPrimaryAddress)},
      StateRow{"GpibSecondaryAddress", Of(&StationState::testSet, &TestSetState::GpibSecondaryAddress)},
      StateRow{"GpibReadSize", Of(&StationState::testSet, &TestSetState::GpibReadSize)},
      StateRow{"TestSetEventText", Of(&StationState::testSet, &TestSetState::TestSetEventText)},
      StateRow{"RFParams", Of(&StationState::rf, &RFState::RFParams)},
      StateRow{"RFParamText", Of(&StationState::rf, &RFState::RFParamText)},
      StateRow{"EepromImage", Of(&StationState::rf, &RFState::EepromImage)},
      StateRow{"RFParamCount", Of(&StationState::rf, &RFState::RFParamCount)},
      StateRow{"RampTable", Of(&StationState::ramp, &RampState::RampTable)},
      StateRow{"RampStorageMode", Of(&StationState::ramp, &RampState::RampStorageMode)},
      StateRow{"CalMode", Of(&StationState::cal, &CalState::CalMode)},
      StateRow{"SaveMode", Of(&StationState::cal, &CalState::SaveMode)},
      StateRow{"CalStopRequested", Of(&StationState::cal, &CalState::CalStopRequested)},
      StateRow{"CalFailed", Of(&StationState::cal, &CalState::CalFailed)},
      StateRow{"GsmCalDone", Of(&StationState::cal, &CalState::GsmCalDone)},
      StateRow{"DcsCalDone", Of(&StationState::cal, &CalState::DcsCalDone)},
      StateRow{"SpareCalDone", Of(&StationState::cal, &CalState::SpareCalDone)},
      StateRow{"PowerIndex", Of(&StationState::cal, &CalState::PowerIndex)},
      StateRow{"InitValueIndex", Of(&StationState::cal, &CalState::InitValueIndex)},
      StateRow{"LossTable", Of(&StationState::cal, &CalState::LossTable)},
      StateRow{"APCDACPatternTable", Of(&StationState::pattern, &PatternState::APCDACPatternTable)},
      StateRow{"CalSaveFileName", Of(&StationState::cal, &CalState::CalSaveFileName)},
      StateRow{"CalSaveFileOk", Of(&StationState::cal, &CalState::CalSaveFileOk)},
      StateRow{"PSReady", Of(&StationState::charger, &ChargerState::PSReady)},
      StateRow{"LoaderReady", Of(&StationState::charger, &ChargerState::LoaderReady)},
      StateRow{"PSVoltageSet", Of(&StationState::charger, &ChargerState::PSVoltageSet)},
      StateRow{"BatCalShowDone", Of(&StationState::charger, &ChargerState::BatCalShowDone)},
      StateRow{"CC2CVADCSaved", Of(&StationState::charger, &ChargerState::CC2CVADCSaved)},
      StateRow{"ShutDownADCSaved", Of(&StationState::charger, &ChargerState::ShutDownADCSaved)},
  };
}

std::vector<StateRow> ReplyRows() {
  return {
      StateRow{"FrameData", Of(&StationState::reply, &ReplyState::FrameData)},
      StateRow{"ReplyDone", Of(&StationState::reply, &ReplyState::ReplyDone)},
      StateRow{"TMStatus", Of(&StationState::reply, &ReplyState::TMStatus)},
      StateRow{"ReplyOperation", Of(&StationState::reply, &ReplyState::ReplyOperation)},
      StateRow{"ReplyItem", Of(&StationState::reply, &ReplyState::ReplyItem)},
      // Bytes as they came, one character each.
      StateRow{"ReplyBuffer", [](const StationState& state) { return Json(TextOfBytes(state.reply.ReplyBuffer)); }},
      StateRow{"ReplyBytes", Of(&StationState::reply, &ReplyState::ReplyBytes)},
      StateRow{"ReplySpin", Of(&StationState::reply, &ReplyState::ReplySpin)},
      StateRow{"ReplyHandled", Of(&StationState::reply, &ReplyState::ReplyHandled)},
      StateRow{"PlainReplyMode", Of(&StationState::reply, &ReplyState::PlainReplyMode)},
      StateRow{"SyncDelay", Of(&StationState::reply, &ReplyState::SyncDelay)},
      StateRow{"TargetMode", Of(&StationState::reply, &ReplyState::TargetMode)},
      StateRow{"CommEventText", Of(&StationState::reply, &ReplyState::CommEventText)},
      StateRow{"CommErrorText", Of(&StationState::reply, &ReplyState::CommErrorText)},
      StateRow{"AdcEnableValue", Of(&StationState::reply, &ReplyState::AdcEnableValue)},
      StateRow{"ConvertedAdcValue", Of(&StationState::reply, &ReplyState::ConvertedAdcValue)},
      StateRow{"RawAdcValue", Of(&StationState::reply, &ReplyState::RawAdcValue)},
      StateRow{"CurrentTestModeValue", Of(&StationState::reply, &ReplyState::CurrentTestModeValue)},
      StateRow{"PowerMeasureTimes10", Of(&StationState::reply, &ReplyState::PowerMeasureTimes10)},
      StateRow{"RawAdcStage", Of(&StationState::reply, &ReplyState::RawAdcStage)},
      StateRow{"RawAdcSkip", Of(&StationState::reply, &ReplyState::RawAdcSkip)},
      StateRow{"RawAdcOutOfWindow", Of(&StationState::reply, &ReplyState::RawAdcOutOfWindow)},
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

}  // namespace orvane
