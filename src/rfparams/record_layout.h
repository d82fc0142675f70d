#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "state/rf_parameter.h"

namespace orvane {

/// Values that the text form carries, and bytes of the EEPROM image.
inline constexpr std::size_t kParameterCount = 1857;
inline constexpr int kImageSize = 1816;

/// How a value stands in the EEPROM image.
enum class EepromForm : std::uint8_t {
  None,     ///< Not at all: it lives in the text file only.
  Word,     ///< Two bytes, low byte first.
  Byte,     ///< One byte, the sender's to cut.
  LowByte,  ///< One byte, already cut to the low byte of the value.
};

/// Which element of the repeated fields: band, outer and inner index.
struct Element {
  std::size_t n = 0;
  std::size_t i = 0;
  std::size_t k = 0;
};

using HeadField = Integer& (*)(RFParameter&, Element);
using BandField = Integer& (*)(RFParameter::Band&, Element);
using WideField = Long RFParameter::*;

/// One kind of value of the record.
struct FieldRow {
  /// As a parameter file writes it, but for "BAND(n)."; {i} and {k} stand for the indices.
  std::string_view label;
  std::variant<HeadField, BandField, WideField> field;
  EepromForm form = EepromForm::None;
  /// Bytes 0x00 behind it in the image.
  int zeros = 0;
  /// How often it stands in a row, by k, before the next kind follows.
  std::size_t run = 1;
};

/// One value of the record: its position in the text form is its place in `ParameterSlots()`.
struct ParameterSlot {
  const FieldRow* row = nullptr;
  Element element;
  /// Offset in the image, with a form other than None.
  int imageOffset = 0;

  [[nodiscard]] bool InBand() const { return std::holds_alternative<BandField>(row->field); }
};

/// All 1857 values in the order of the parameter file, which is the order of the image too.
[[nodiscard]] std::span<const ParameterSlot> ParameterSlots();

/// Calls `visit` with the value, an Integer& or a Long&.
template <class Visit>
void VisitValue(const ParameterSlot& slot, RFParameter& record, Visit&& visit) {
  if (const auto* head = std::get_if<HeadField>(&slot.row->field)) {
    visit((*head)(record, slot.element));
  } else if (const auto* band = std::get_if<BandField>(&slot.row->field)) {
    visit((*band)(record.BAND[slot.element.n], slot.element));
  } else {
    visit(record.*std::get<WideField>(slot.row->field));
  }
}

/// Adds the label as a parameter file writes it: "BAND(1).tx_Level(0).ramp_index(5)".
void AppendLabel(std::string& out, const ParameterSlot& slot);

}  // namespace orvane
