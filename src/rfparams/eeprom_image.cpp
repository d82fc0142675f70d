#include "rfparams/eeprom_image.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <type_traits>
#include <utility>

#include "base/byte_hex.h"
#include "base/numbers.h"
#include "rfparams/record_layout.h"

namespace orvane {
namespace {

/// Calls `visit(slot, value, entry)` for each value that the image carries, `entry` being the first of its texts.
template <class Visit>
void WalkImage(RFState& state, Visit visit) {
  for (const ParameterSlot& slot : ParameterSlots()) {
    if (slot.row->form == EepromForm::None) continue;
    VisitValue(slot, state.RFParams, [&](auto& value) {
      if constexpr (std::is_same_v<decltype(value), Integer&>) {
        visit(*slot.row, value, &state.EepromImage[static_cast<std::size_t>(slot.imageOffset)]);
      }
    });
  }
}

}  // namespace

void TMEEPROMDataMaker(RFState& state) {
  WalkImage(state, [](const FieldRow& row, Integer value, std::string* entry) {
    if (row.form == EepromForm::Byte) {
      AssignHexText(*entry++, value);
    } else {
      WordInHex word = WordToHexConvert(value);
      *entry++ = std::move(word.lower);
      if (row.form == EepromForm::Word) *entry++ = std::move(word.upper);
    }
    for (int i = 0; i < row.zeros; ++i) (entry++)->assign(2, '0');
  });
}

void TMEEPROMDataToRFParams(RFState& state) {
  WalkImage(state, [](const FieldRow& row, Integer& value, const std::string* entry) {
    value = ToInteger(row.form == EepromForm::Word ? "&H" + entry[1] + entry[0] : "&H" + entry[0]);
  });
}

std::string EepromBytes(const RFState& state, int first, int last) {
  std::string bytes;
  for (int i = first; i <= last; ++i) {
    std::string_view entry = state.EepromImage.at(static_cast<std::size_t>(i));
    entry.remove_prefix(entry.size() - std::min<std::size_t>(entry.size(), 2));
    unsigned value = 0;
    std::from_chars(entry.data(), entry.data() + entry.size(), value, 16);
    bytes += static_cast<char>(value);
  }
  return bytes;
}

}  // namespace orvane
