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
  std::uint64_t most;
};

namespace {

constexpr InstalledFile kRFParameterFile{kRFParameterFileName, "There is not TI532.epm in Windows\\System directory.",
                                         &Boxes::Alarm, kLargestParameterFile};
constexpr InstalledFile kRampTableFile{kRampTableFileName, "There is not RampTable.dat in Windows\\System directory.",
                                       &Boxes::Caution, kLargestRecordFile};
constexpr InstalledFile kCableLossFile{kCableLossFileName, "There is not Cable.loss in Windows\\System directory.",
                                       &Boxes::Caution, kLargestRecordFile};

/// The reason that a run gives which stands on the file; empty without a damage.
std::string SentenceOf(const std::string& path, const std::string& damage) {
  return damage.empty() ? "" : path + " " + damage + ".";
}

/// Enough of a digest for a person to tell two of them apart.
std::string Beginning(const std::string& digest) {
  constexpr std::size_t kDigits = 12;
  return digest.substr(0, kDigits) + "...";
}

/// The same for a file that did not open, or that stands behind one that did not.
std::string NotLoaded(const InstalledFile& file) { return SentenceOf(std::string(file.name), "was not loaded"); }

}  // namespace

bool InstalledData::Load() {
  rf_.damage = NotLoaded(kRFParameterFile);
  ramp_.damage = NotLoaded(kRampTableFile);
  cal_.lossDamage = NotLoaded(kCableLossFile);
  if (!LoadRFParameterText() || !LoadRampTable() || !LoadCableLoss()) return false;
  FillRecord();
  ramp_.RampStorageMode = "File";
  PassOver([&] { ShowRampSumsAsOpened(main_->ramp); });
  return true;
}

std::optional<InstalledData::Opened> InstalledData::Open(const InstalledFile& file) {
  std::string path = files_.SystemPath(file.name);
  if (!files_.Exists(path)) {
    path = files_.TempPath(file.name);
    if (!files_.Exists(path)) (boxes_.*file.tellMissing)(std::string(file.missing));
  }
  try {
    return Opened{path, files_.OpenForReading(path, file.most)};
  } catch (const StationFailure& failure) {
    boxes_.SystemText(failure.Text());
    return std::nullopt;
  }
}

std::string InstalledData::SentenceOf(const InstalledFile& kind, const Opened& opened,
                                      const std::string& damage) const {
  const auto digest = digests_.find(kind.name);
  if (digest == digests_.end()) return orvane::SentenceOf(opened.path, damage);
  // Zeros that are expected are no damage; a file that is too short is one whatever was expected.
  std::string other = damage == kNothingButZeros ? "" : damage;
  PassOver(
      [&] {
        const std::string found = digestOf_(ReadWhole(*opened.file));
        if (found != digest->second) {
          other =
              "has the SHA-256 " + Beginning(found) + ", not " + Beginning(digest->second) + " as the profile says";
        }
      },
      [&](const StationFailure& failure) { other = "cannot be read: " + failure.Text(); });
  return orvane::SentenceOf(opened.path, other);
}

bool InstalledData::LoadRFParameterText() {
  const auto opened = Open(kRFParameterFile);
  if (!opened) return false;
  std::string damage;
  PassOver(
      [&] {
        ReadParameterLines(ReadWhole(*opened->file), rf_);
        damage = DamageOfParameterLines(rf_);
      },
      [&](const StationFailure& failure) { damage = "cannot be read: " + failure.Text(); });
  rf_.damage = SentenceOf(kRFParameterFile, *opened, damage);
  return true;
}

bool InstalledData::LoadRampTable() {
  const auto opened = Open(kRampTableFile);
  if (!opened) return false;
  ReadRampRecords(*opened->file, ramp_);
  ramp_.damage = SentenceOf(kRampTableFile, *opened, DamageOfRecords(*opened->file, kRampRecords, Tail::None));
  PassOver([&] { ShowRampTable(ramp_, 0, main_->ramp); });
  return true;
}

bool InstalledData::LoadCableLoss() {
  const auto opened = Open(kCableLossFile);
  if (!opened) return false;
  cal_.lossDamage = SentenceOf(kCableLossFile, *opened, DamageOfRecords(*opened->file, kLosses, Tail::None));
  // The calibration panel puts defaults into the record as it is created. It is created here, ahead of the record's
  // own values.
  PassOver([&] { autoCal_->Touch(); });
  std::array<bool, kLosses> read{};
  for (std::size_t i = 0; i < read.size(); ++i) read[i] = PassOver([&] { ReadLossRecord(*opened->file, i, cal_); });
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
