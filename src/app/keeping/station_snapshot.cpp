#include "app/keeping/station_snapshot.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "app/automation/state_reader.h"
#include "platform/control.h"

namespace orvane {
namespace {

using Names = std::set<std::string, std::less<>>;

/// "&H02 &H1F ...": they are never cleared as a whole, and a reply that is missing leaves the one before.
std::string JoinedReply(const ReplyState& reply) {
  std::string joined;
  for (const std::string& byte : reply.ReplyBytes) joined.append(byte).append(" ");
  joined.erase(joined.find_last_not_of(' ') + 1);
  return joined;
}

void SplitReply(std::string_view joined, ReplyState& reply) {
  for (std::string& byte : reply.ReplyBytes) {
    const auto end = std::min(joined.find(' '), joined.size());
    byte = joined.substr(0, end);
    joined.remove_prefix(std::min(end + 1, joined.size()));
  }
}

/// Those whose title a run or an operator changes, in this order.
std::array<FileDialog*, 7> DialogsOf(StationPanels& panels) {
  return {&panels.downLoad.dlgDownload,      &panels.autoCal.dlgPowerIndex, &panels.autoCal.dlgInitial,
          &panels.autoCal.dlgLoss,           &panels.main.ramp.dlgRampSave, &panels.rampTable.editor.dlgRampSave,
          &panels.mpAutoCal.dlgMPPatternSave};
}

Json Titles(StationPanels& panels) {
  Json titles = Json::array();
  for (const FileDialog* dialog : DialogsOf(panels)) titles.push_back(dialog->title);
  return titles;
}

Json AddressJson(const GpibAddress& address) { return {address.board, address.primary, address.secondary}; }
GpibAddress AddressOf(const Json& json) {
  return {json.at(0).get<Integer>(), json.at(1).get<Integer>(), json.at(2).get<Integer>()};
}

Json Disabled(const std::vector<Panel*>& panels) {
  Json names = Json::array();
  for (const Panel* panel : panels) {
    for (const Control* control : panel->Controls()) {
      if (!control->Enabled()) names.push_back(panel->Name() + "." + control->Name());
    }
  }
  return names;
}

void Disable(const Names& names, const std::vector<Panel*>& panels) {
  for (const Panel* panel : panels) {
    for (Control* control : panel->Controls()) {
      const bool disabled = names.contains(panel->Name() + "." + control->Name());
      if (disabled == control->Enabled()) control->SetEnabled(!disabled, control->DisabledWhy());
    }
  }
}

}  // namespace

std::string SnapshotText(const StationState& state, StationPanels& panels, bool verifiesEeprom) {
  Json seen = Json::array();
  for (const Panel* panel : panels.All()) {
    if (panel->Created()) seen.push_back(panel->Name());
  }
  const Json snapshot{
      {"seen", std::move(seen)},
      {"disabled", Disabled(panels.All())},
      {"verifiesEeprom", verifiesEeprom},
      {"tables",
       {{"whole", state.rf.recordIsWhole},
        {"parameters", state.rf.damage},
        {"ramp", state.ramp.damage},
        {"losses", state.cal.lossDamage}}},
      {"save",
       {{"stopStands", state.cal.stopStands},
        {"stopped", state.cal.saveStopped},
        {"overlays", state.cal.oldSaveFile == OldFile::IsOverlaid}}},
      {"charger",
       {{"powerError", state.charger.powerError},
        {"loaderError", state.charger.loaderError},
        {"supply", AddressJson(state.charger.supplyAddress)},
        {"loader", AddressJson(state.charger.loaderAddress)}}},
      {"dialogs", Titles(panels)},
      {"checksums", {state.reply.checksums.fitsInARow, state.reply.checksums.unproven}},
      {"reply", JoinedReply(state.reply)},
      {"state", ReadPlainStates(state)},
  };
  return snapshot.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool StationSnapshot::Saw(const Panel& panel) const { return values_.at("seen").get<Names>().contains(panel.Name()); }

GpibAddress StationSnapshot::SupplyAddress() const { return AddressOf(values_.at("charger").at("supply")); }
GpibAddress StationSnapshot::LoaderAddress() const { return AddressOf(values_.at("charger").at("loader")); }

void StationSnapshot::TakeUp(StationState& state, StationPanels& panels, bool otherTables) const {
  WritePlainStates(values_.at("state"), state);
  if (!otherTables) {
    const Json& tables = values_.at("tables");
    state.rf.recordIsWhole = tables.at("whole").get<bool>();
    state.rf.damage = tables.at("parameters").get<std::string>();
    state.ramp.damage = tables.at("ramp").get<std::string>();
    state.cal.lossDamage = tables.at("losses").get<std::string>();
  }
  const Json& save = values_.at("save");
  state.cal.stopStands = save.at("stopStands").get<bool>();
  state.cal.saveStopped = save.at("stopped").get<bool>();
  state.cal.oldSaveFile = save.at("overlays").get<bool>() ? OldFile::IsOverlaid : OldFile::Goes;
  const Json& charger = values_.at("charger");
  state.charger.powerError = charger.at("powerError").get<bool>();
  state.charger.loaderError = charger.at("loaderError").get<bool>();
  const Json& checksums = values_.at("checksums");
  state.reply.checksums = {checksums.at(0).get<int>(), checksums.at(1).get<int>()};
  SplitReply(values_.at("reply").get_ref<const std::string&>(), state.reply);
  const Json& titles = values_.at("dialogs");
  const auto dialogs = DialogsOf(panels);
  for (std::size_t i = 0; i < dialogs.size(); ++i) dialogs[i]->title = titles.at(i).get<std::string>();
  Disable(values_.at("disabled").get<Names>(), panels.All());
}

}  // namespace orvane
