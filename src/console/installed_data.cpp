#include "console/installed_data.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "ramp/ramp_boxes.h"
#include "ramp/ramp_file.h"
#include "rfparams/rf_text_file.h"
#include "txcal/side_tables.h"

namespace orvane {

struct InstalledFile {
  std::string_view name;
  std::string_view missing;
  void (Boxes::*tellMissing)(std::string text);
};

namespace {

constexpr InstalledFile kRFParameterFile{"TI532.epm", "There is not TI532.epm in Windows\\System directory.",
                                         &Boxes::Alarm};
constexpr InstalledFile kRampTableFile{"RampTable.dat", "There is not RampTable.dat in Windows\\System directory.",
                                       &Boxes::Caution};
constexpr InstalledFile kCableLossFile{"Cable.loss", "There is not Cable.loss in Windows\\System directory.",
                                       &Boxes::Caution};

}  // namespace

bool InstalledData::Load() {
  if (!LoadRFParameterText() || !LoadRampTable() || !LoadCableLoss()) return false;
  FillRecord();
  ramp_.RampStorageMode = "File";
  PassOver([&] { ShowRampSumsAsOpened(main_->ramp); });
  return true;
}

std::unique_ptr<File> InstalledData::Open(const InstalledFile& file) {
  std::string path = files_.SystemPath(file.name);
  if (!files_.Exists(path)) {
    path = files_.TempPath(file.name);
    if (!files_.Exists(path)) (boxes_.*file.tellMissing)(std::string(file.missing));
  }
  try {
    return files_.OpenForReading(path);
  } catch (const StationFailure& failure) {
    boxes_.SystemText(failure.what());
    return nullptr;
  }
}

bool InstalledData::LoadRFParameterText() {
  const auto file = Open(kRFParameterFile);
  if (!file) return false;
  PassOver([&] { ReadParameterLines(ReadWhole(*file), rf_); });
  return true;
}

bool InstalledData::LoadRampTable() {
  const auto file = Open(kRampTableFile);
  if (!file) return false;
  ReadRampRecords(*file, ramp_);
  PassOver([&] { ShowRampTable(ramp_, 0, main_->ramp); });
  return true;
}

bool InstalledData::LoadCableLoss() {
  const auto file = Open(kCableLossFile);
  if (!file) return false;
  // The calibration panel puts defaults into the record as it is created. It is created here, ahead of the record's
  // own values.
  PassOver([&] { autoCal_->Touch(); });
  std::array<bool, kLosses> read{};
  for (std::size_t i = 0; i < read.size(); ++i) read[i] = PassOver([&] { ReadLossRecord(*file, i, cal_); });
  // A record that is not there leaves its box as it was: a loss that nobody measured must not look like one of zero.
  const auto boxes = LossBoxes(autoCal_, main_);
  for (std::size_t i = 0; i < read.size(); ++i) {
    if (read[i]) PassOver([&] { boxes[i]->SetText(cal_.LossTable[i].Text()); });
  }
  return true;
}

void InstalledData::FillRecord() {
  PassOver([&] { FileToRFParamsConvert(rf_); });
  ListRFParameterText();
}

void InstalledData::ListRFParameterText() {
  ListBox& list = downLoad_->lstDataReadWindow;
  list.Clear();
  list.AddItem("Address\tData");
  const auto lines = std::min(static_cast<std::size_t>(rf_.RFParamCount), rf_.RFParamText.size());
  for (std::size_t i = 0; i < lines; ++i) list.AddItem(std::to_string(i) + "\t" + rf_.RFParamText[i]);
}

}  // namespace orvane
