#include "rxcal/pattern_editor.h"

#include "base/failure.h"
#include "base/subscript.h"
#include "base/text.h"
#include "rxcal/pattern_table.h"

namespace orvane {

void PatternEditor::Connect() {
  FrmMPAutoCal& panel = panel_.Untouched();
  panel.onLoad = [this] { FillDefaultPatterns(state_); };
  const auto ranges = [&panel](const BandLevels& band) {
    return [&panel, &band] {
      constexpr Long kLargestDac = 1023;
      panel.updMPLevel.SetRange(band.lowest, band.highest);
      panel.updMPDAC.SetRange(0, kLargestDac);
    };
  };
  panel.optGSMPattern.onClick = ranges(kGsmLevels);
  panel.optDCSPattern.onClick = ranges(kDcsLevels);
  panel.txtMPLevel.onChange = [this] { OnLevelChanged(); };
  panel.cmdMPSet.onClick = [this] { StoreCell(); };
  panel.cmdPatternLoad.onClick = [this] { Load(); };
}

const BandLevels& PatternEditor::Band() const { return panel_->optDCSPattern.Selected() ? kDcsLevels : kGsmLevels; }

/// No value for a text that names no pattern: the editor then does nothing and says nothing.
std::optional<std::size_t> PatternEditor::Pattern() const {
  std::optional<std::size_t> pattern;
  PassOver([&] {
    const Integer number = ToInteger(panel_->txtMPPattern.Text());
    if (number >= 0 && number < kPatterns) pattern = static_cast<std::size_t>(number);
  });
  return pattern;
}

// An empty text is judged too, so that a level cannot be typed from nothing.
void PatternEditor::OnLevelChanged() {
  const BandLevels& band = Band();
  if (band.Has(panel_->txtMPLevel.Text())) {
    ShowCell();
    return;
  }
  const std::string lowest = std::to_string(band.lowest);
  boxes_.Warning("Input the number which is between " + lowest + " and " + std::to_string(band.highest) +
                 " without blank.");
  panel_->txtMPLevel.SetText(lowest);
}

/// The level can be one of the other band only: a click on an option leaves it as it stands.
void PatternEditor::ShowCell() {
  const std::string& level = panel_->txtMPLevel.Text();
  const auto pattern = Pattern();
  if (!pattern || !Band().Has(level)) return;
  panel_->txtMPDAC.SetText(At(state_.APCDACPatternTable[*pattern], Band().PositionOf(ToInteger(level))));
}

void PatternEditor::StoreCell() {
  const std::string& level = panel_->txtMPLevel.Text();
  const std::string& dac = panel_->txtMPDAC.Text();
  if (level.empty() || dac.empty()) {
    boxes_.Warning("Input Pattern Value.");
    return;
  }
  if (panel_->optGSMPattern.Selected() && ToInteger(level) < kGsmLevels.lowest) {
    boxes_.Warning("GSM Power Level should be equal or higher then 5.");
    return;
  }
  const auto pattern = Pattern();
  if (!pattern) return;
  At(state_.APCDACPatternTable[*pattern], Band().PositionOf(ToInteger(level))) = dac;
}

void PatternEditor::Load() {
  FileDialog& dialog = panel_->dlgMPPatternSave;
  dialog.title = "Pattern Open for MP";
  dialog.fileName.clear();
  const auto path = dialogs_.ShowOpen(dialog);
  if (!path) return;
  dialog.initialFolder = FolderOf(*path);
  std::unique_ptr<File> file;
  const bool opened = PassOver([&] { file = files_.OpenForReading(*path, kLargestPatternFile); },
                               [&](const StationFailure& failure) { boxes_.SystemText(failure.Text()); });
  if (!opened) return;
  PassOver([&] { TakePatterns(TextOfBytes(ReadWhole(*file)), state_); });
  file.reset();
  ShowCell();
}

}  // namespace orvane
