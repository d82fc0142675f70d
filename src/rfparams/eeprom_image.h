#pragma once

#include <string>

#include "state/rf_state.h"

namespace orvane {

/// Both bands of `RFParams` into entries 0..1815 of `EepromImage`, one hexadecimal text per byte. An entry may hold
/// one digit or several; whoever sends it cuts it to one byte. Cannot fail.
void TMEEPROMDataMaker(RFState& state);

/// Entries 0..1815 of `EepromImage` into both bands; the head of the record stays. A one-byte field reads as 0..255.
/// @throws StationFailure at the first entry that is no hexadecimal number: the fields before it are updated, those
/// behind it keep their values.
void TMEEPROMDataToRFParams(RFState& state);

/// Entries `first` to `last` of `EepromImage` as bytes: each cut to its last two digits, as whoever sends it does. An
/// entry that is empty or no hexadecimal number is a zero.
[[nodiscard]] std::string EepromBytes(const RFState& state, int first, int last);

}  // namespace orvane
