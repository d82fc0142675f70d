#include "txcal/side_table_groups.h"

#include "base/failure.h"
#include "platform/save_dialog.h"

namespace orvane {

/// A group that shows one table by band and level: its controls, its words and how a position is shown and stored.
struct LevelTableRow {
  struct Range {
    Long min;
    Long max;
  };

  OptionButton FrmAutoCal::*gsm;
  OptionButton FrmAutoCal::*dcs;
  TextBox FrmAutoCal::*level;
  TextBox FrmAutoCal::*value;
  UpDown FrmAutoCal::*levelSpin;
  UpDown FrmAutoCal::*valueSpin;
  Button FrmAutoCal::*set;
  Button FrmAutoCal::*load;
  Button FrmAutoCal::*save;
  FileDialog FrmAutoCal::*dialog;
  Range gsmValues;
  Range dcsValues;
  std::string_view inputMissing;
  std::string_view badDcsLevel;
  std::string_view openTitle;
  std::string_view saveTitle;
  int positions;
  std::string (*show)(const CalState& state, std::size_t position);
  void (*store)(CalState& state, std::size_t position, const std::string& text);
  void (*read)(File& file, CalState& state);
  std::string (*records)(const CalState& state);
  std::string (*sideText)(const CalState& state);
};

namespace {

constexpr std::string_view kBadGsmLevel = "Input the number which is between 5 and 19 without blank.";

constexpr LevelTableRow kInitialValue{
    &FrmAutoCal::optinitialGSM,
    &FrmAutoCal::optinitialDCS,
    &FrmAutoCal::txtinitialLevel,
    &FrmAutoCal::txtinitialDAC,
    &FrmAutoCal::updinitialLevel,
    &FrmAutoCal::updinitialDAC,
    &FrmAutoCal::cmdinitialSet,
    &FrmAutoCal::cmdinitialLoad,
    &FrmAutoCal::cmdinitialSave,
    &FrmAutoCal::dlgInitial,
    {0, 1023},
    {0, 1023},
    "Input Initial Value.",
    kBadGsmLevel,  // The words of GSM, also for DCS.
    "APCDAC First Value Open",
    "APCDAC First Value Save",
    31,
    [](const CalState& state, std::size_t position) { return std::to_string(state.InitValueIndex[position]); },
    [](CalState& state, std::size_t position, const std::string& text) {
      state.InitValueIndex[position] = ToInteger(text);
    },
    &ReadInitialRecords,
    &InitialRecords,
    &InitialSideText,
};

constexpr LevelTableRow kPowerIndex{
    &FrmAutoCal::optPowerIndexGSM,
    &FrmAutoCal::optPowerIndexDCS,
    &FrmAutoCal::txtPowerIndex,
    &FrmAutoCal::txtPowerIndexLevel,
    &FrmAutoCal::updPowerIndex,
    &FrmAutoCal::updPowerIndexLevel,
    &FrmAutoCal::cmdPowerIndexSet,
    &FrmAutoCal::cmdPowerIndexLoad,
    &FrmAutoCal::cmdPowerIndexSave,
    &FrmAutoCal::dlgPowerIndex,
    {5, 33},
    {0, 30},
    "Input Power Index.",
    "Input the number which is between 0 and 15 without blank.",
    "Open Ramp Power Index",
    "Save Ramp Power Index",
    32,
    [](const CalState& state, std::size_t position) { return state.PowerIndex[position].Text(); },
    [](CalState& state, std::size_t position, const std::string& text) {
      state.PowerIndex[position] = Decimal4::FromText(text);
    },
    &ReadPowerRecords,
    &PowerRecords,
    &PowerSideText,
};

const BandLevels& LevelsOf(bool gsm) { return gsm ? kGsmLevels : kDcsLevels; }

/// @throws StationFailure for a position that the table has not.
std::size_t PositionOf(int level, bool gsm, int positions) {
  const int position = LevelsOf(gsm).PositionOf(level);
  if (position < 0 || position >= positions) {
    throw StationFailure("Level " + std::to_string(level) + " has no place in the table.");
  }
  return static_cast<std::size_t>(position);
}

}  // namespace

void SideTableGroups::Connect() {
  ConnectLevelTable(kInitialValue);
  ConnectLevelTable(kPowerIndex);
  FrmAutoCal& panel = panel_.Untouched();
  panel.cmdRxLossSet.onClick = [this] { SetLosses(); };
  panel.cmdRxLossLoad.onClick = [this] { LoadLosses(); };
  panel.cmdRxLossSave.onClick = [this] { SaveLosses(); };
}

void SideTableGroups::ConnectLevelTable(const LevelTableRow& row) {
  FrmAutoCal& panel = panel_.Untouched();
  (panel.*row.gsm).onClick = [&panel, &row] {
    (panel.*row.levelSpin).SetRange(kGsmLevels.lowest, kGsmLevels.highest);
    (panel.*row.valueSpin).SetRange(row.gsmValues.min, row.gsmValues.max);
  };
  (panel.*row.dcs).onClick = [&panel, &row] {
    (panel.*row.levelSpin).SetRange(kDcsLevels.lowest, kDcsLevels.highest);
    (panel.*row.valueSpin).SetRange(row.dcsValues.min, row.dcsValues.max);
  };
  (panel.*row.level).onChange = [this, &row] { OnLevelChanged(row); };
  (panel.*row.set).onClick = [this, &row] { Set(row); };
  (panel.*row.load).onClick = [this, &row] { Load(row); };
  (panel.*row.save).onClick = [this, &row] { Save(row); };
}

bool SideTableGroups::GsmSelected(const LevelTableRow& row) const { return ((*panel_).*row.gsm).Selected(); }

void SideTableGroups::OnLevelChanged(const LevelTableRow& row) {
  TextBox& level = (*panel_).*row.level;
  const bool gsm = GsmSelected(row);
  if (level.Text().empty()) return;
  if (!LevelsOf(gsm).Has(level.Text())) {
    boxes_.Warning(std::string(gsm ? kBadGsmLevel : row.badDcsLevel));
    level.SetText(gsm ? "5" : "0");
    return;
  }
  const std::size_t position = PositionOf(ToInteger(level.Text()), gsm, row.positions);
  ((*panel_).*row.value).SetText(row.show(state_, position));
}

void SideTableGroups::Set(const LevelTableRow& row) {
  const std::string& level = ((*panel_).*row.level).Text();
  const std::string& value = ((*panel_).*row.value).Text();
  if (level.empty() || value.empty()) {
    boxes_.Warning(std::string(row.inputMissing));
    return;
  }
  const bool gsm = GsmSelected(row);
  if (gsm && ToInteger(level) < kGsmLevels.lowest) {
    boxes_.Warning("GSM Power Level should be equal or higher then 5.");
    return;
  }
  row.store(state_, PositionOf(ToInteger(level), gsm, row.positions), value);
}

// A level below 5 can stand there from DCS; with GSM it is left alone here.
void SideTableGroups::Load(const LevelTableRow& row) {
  if (!LoadFile((*panel_).*row.dialog, row.openTitle, row.read)) return;
  const std::string& level = ((*panel_).*row.level).Text();
  const bool leftAlone = !level.empty() && GsmSelected(row) && ToInteger(level) < kGsmLevels.lowest;
  if (!leftAlone) OnLevelChanged(row);
}

void SideTableGroups::Save(const LevelTableRow& row) {
  const auto path = SaveFile((*panel_).*row.dialog, row.saveTitle, row.records);
  if (!path) return;
  const auto side = SideFileOf(*path);
  if (!side) return;
  try {
    WriteWhole(files_, *side, OldFile::IsOverlaid, row.sideText(state_));
  } catch (const StationFailure& failure) {
    boxes_.SystemText(failure.Text());
  }
}

void SideTableGroups::SetLosses() {
  const auto boxes = LossBoxes(panel_, main_);
  constexpr std::size_t kTestedBoxes = 4;
  for (std::size_t i = 0; i < kTestedBoxes; ++i) {
    if (!boxes[i]->Text().empty()) continue;
    boxes_.Warning("Run after inputing value.");
    return;
  }
  for (std::size_t i = 0; i < boxes.size(); ++i) state_.LossTable[i] = Decimal4::FromText(boxes[i]->Text());
}

void SideTableGroups::LoadLosses() {
  const auto read = [](File& file, CalState& state) {
    ReadLossRecords(file, state);
    state.lossDamage = DamageOfRecords(file, kLosses, Tail::MayBe);
  };
  const auto path = LoadFile(panel_->dlgLoss, "Loss Table Open", read);
  if (!path) return;
  if (!state_.lossDamage.empty()) state_.lossDamage = *path + " " + state_.lossDamage + ".";
  ShowLosses(state_, panel_, main_);
}

void SideTableGroups::SaveLosses() { SaveFile(panel_->dlgLoss, "Loss Table Save", &LossRecords); }

std::optional<std::string> SideTableGroups::LoadFile(FileDialog& dialog, std::string_view title,
                                                     void (*read)(File&, CalState&)) {
  dialog.title = title;
  auto path = dialogs_.ShowOpen(dialog);
  if (!path) return path;
  dialog.initialFolder = FolderOf(*path);
  try {
    read(*files_.OpenForReading(*path, kLargestRecordFile), state_);
    return path;
  } catch (const StationFailure& failure) {
    boxes_.SystemText(failure.Text());
    return std::nullopt;
  }
}

std::optional<std::string> SideTableGroups::SaveFile(FileDialog& dialog, std::string_view title,
                                                     std::string (*records)(const CalState&)) {
  dialog.title = title;
  const SaveName name = ChooseSaveName(dialogs_, dialog, files_, boxes_, "Do you want to change a current file to ");
  if (!name.Chosen()) return std::nullopt;
  try {
    WriteWhole(files_, name.path, name.old, records(state_));
    return name.path;
  } catch (const StationFailure& failure) {
    boxes_.SystemText(failure.Text());
    return std::nullopt;
  }
}

}  // namespace orvane
