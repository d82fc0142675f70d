#pragma once

#include <string>
#include <string_view>

#include "panels/ramp_editor_face.h"
#include "state/ramp_state.h"

namespace orvane {

/// Whether a text is, character for character, the decimal text of a number from 0 to 31: "7" is, "07" is not.
[[nodiscard]] bool IsRampValue(std::string_view text);

/// How many boxes of a row hold a ramp value.
[[nodiscard]] int CountRampValues(const ControlArray<TextBox>& boxes);

/// @throws StationFailure for a text that is no number.
[[nodiscard]] int SumOf(const ControlArray<TextBox>& boxes);

/// Fills the boxes of an editor from a table; each box that changes is judged as if it was typed.
/// @throws StationFailure for an index that no table has.
void ShowRampTable(const RampState& state, int index, RampEditorFace& face);

/// What an editor shows of its sums when it opens: both boxes green when one of the sums is 128, else both red. This
/// is so on both panels, whatever sum is green while editing.
/// @throws StationFailure when a box holds no number; nothing is shown then.
void ShowRampSumsAsOpened(RampEditorFace& face);

}  // namespace orvane
