#pragma once

#include "state/rf_state.h"

namespace orvane {

/// Both bands of `RFParams` into entries 0..1815 of `EepromImage`, one hexadecimal text per byte. An entry may hold
/// one digit or several; whoever sends it cuts it to one byte. Cannot fail.
void TMEEPROMDataMaker(RFState& state);

/// Entries 0..1815 of `EepromImage` into both bands; the head of the record stays. A one-byte field reads as 0..255.
/// @throws StationFailure at the first entry that is no hexadecimal number: the fields before it are updated, those
/// behind it keep their values.
void TMEEPROMDataToRFParams(RFState& state);

}  // namespace orvane
