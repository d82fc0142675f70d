// A reply of an instrument as the runs read it: as a whole number, a number, a fixed-point decimal, the three values
// of a phase error. Each must be what a second reader makes of it.

#include <cmath>
#include <optional>
#include <utility>

#include "base/decimal4.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "instruments/test_set.h"
#include "plain_number.h"
#include "require.h"
#include "txcal/phase_check.h"

namespace {

using namespace orvane;
using fuzz::PlainNumber;
using fuzz::Require;

template <class Read>
auto ValueOf(const Read& read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const StationFailure&) {
    return std::nullopt;
  }
}

std::optional<std::int64_t> PlainlyScaled(std::string_view text, int places) {
  const auto number = PlainNumber::Of(text);
  return number ? number->Scaled(places) : std::nullopt;
}

template <class Whole>
void CheckWhole(std::string_view text, Whole (*read)(std::string_view)) {
  const auto plain = PlainlyScaled(text, 0);
  const auto fitting =
      plain && std::in_range<Whole>(*plain) ? std::optional(static_cast<Whole>(*plain)) : std::nullopt;
  Require(ValueOf([&] { return read(text); }) == fitting, "another whole number");
}

void CheckReal(std::string_view text) {
  const auto value = ValueOf([&] { return ToDouble(text); });
  const auto number = PlainNumber::Of(text);
  const auto plain = number ? number->Real() : std::nullopt;
  Require(value == plain, "another real number");
  if (!value) return;
  Require(std::isfinite(*value), "a number that is none");
  // Its text, where it is short, says the same again.
  if (std::fabs(*value) < 1e15) Require(ToDouble(NumberText(*value)) == *value, "its text is another number");
}

void CheckDecimal(std::string_view text) {
  const auto value = ValueOf([&] { return Decimal4::FromText(text); });
  const auto plain = PlainlyScaled(text, 4);
  Require(value.has_value() == plain.has_value() && (!value || value->Raw() == *plain), "another decimal");
  if (value) Require(Decimal4::FromText(value->Text()) == *value, "its text is another decimal");
}

/// Field by field behind the commas, as far as they go.
void CheckPhase(std::string_view text) {
  const auto error = ValueOf([&] { return PhaseErrorOf(text); });
  const auto first = text.find(',');
  const auto second = first == std::string_view::npos ? first : text.find(',', first + 1);
  const auto third = second == std::string_view::npos ? second : text.find(',', second + 1);
  if (third == std::string_view::npos) return Require(!error, "a phase error of too few values");
  const auto rms = PlainlyScaled(text.substr(first + 1, second - first - 1), 4);
  const auto peak = PlainlyScaled(text.substr(second + 1, third - second - 1), 4);
  Require(error.has_value() == (peak && rms), "a phase error out of nothing, or none");
  if (error) Require(error->peak.Raw() == *peak && error->rms.Raw() == *rms, "another phase error");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const std::string text = TextOfBytes(bytes);
  Require(BytesOfText(text) == bytes, "the bytes of a reply do not come back");
  CheckPhase(text);
  // A text that is no number is none for all, and a failure costs more than all else: one of them is tried.
  const bool isNumber = PlainNumber::Of(text).has_value();
  if (isNumber || size % 4 == 0) CheckWhole<Integer>(text, &ToInteger);
  if (isNumber || size % 4 == 1) CheckWhole<Long>(text, &ToLong);
  if (isNumber || size % 4 == 2) CheckReal(text);
  if (isNumber || size % 4 == 3) CheckDecimal(text);
  if (IsEmptyReading(text)) Require(!isNumber, "an empty reading is a number");
  return 0;
}
