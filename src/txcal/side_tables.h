#pragma once

#include <array>
#include <string>

#include "panels/frm_auto_cal.h"
#include "panels/orvane_main.h"
#include "platform/files.h"
#include "platform/panel.h"
#include "state/band_levels.h"
#include "state/cal_state.h"

namespace orvane {

/// Losses that the panels show.
inline constexpr int kLosses = 5;

/// The station's own target powers and first DAC values, which the calibration panel starts with.
void FillDefaultSideTables(CalState& state);

/// A table file holds one value at the head of each record of 128 bytes, low byte first: 31 Integers, or 31 or 5
/// four-decimal values as 64-bit counts of ten-thousandths. Reading throws StationFailure with the system's text;
/// values read before it stay.
void ReadInitialRecords(File& file, CalState& state);
[[nodiscard]] std::string InitialRecords(const CalState& state);
void ReadPowerRecords(File& file, CalState& state);
[[nodiscard]] std::string PowerRecords(const CalState& state);
void ReadLossRecords(File& file, CalState& state);
/// One of the losses, 0 to 4.
void ReadLossRecord(File& file, std::size_t loss, CalState& state);
[[nodiscard]] std::string LossRecords(const CalState& state);

/// The companions for a spreadsheet: a line a position.
[[nodiscard]] std::string InitialSideText(const CalState& state);
[[nodiscard]] std::string PowerSideText(const CalState& state);

/// The boxes of the five losses, in the order of the loss table. Reaching for the first ones creates `frmAutoCal`.
[[nodiscard]] std::array<TextBox*, kLosses> LossBoxes(PanelRef<FrmAutoCal> autoCal, PanelRef<OrvaneMain> main);
/// Shows the loss table in its boxes.
void ShowLosses(const CalState& state, PanelRef<FrmAutoCal> autoCal, PanelRef<OrvaneMain> main);

}  // namespace orvane
