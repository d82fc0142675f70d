#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "records/record.h"

namespace orvane {

/// The parts of a reading's name: "tx", "gsm", "level", "5", "power".
[[nodiscard]] std::vector<std::string_view> PartsOfName(std::string_view name);

/// "tx.gsm.level.5" and "power" of "tx.gsm.level.5.power".
[[nodiscard]] std::pair<std::string_view, std::string_view> SplitLast(std::string_view name);

/// A number that is all of the text.
[[nodiscard]] std::optional<int> WholeNumber(std::string_view text);

/// The channel of "rx.ARFCN.WHAT" with that `what`.
[[nodiscard]] std::optional<int> RxChannel(std::string_view name, std::string_view what);

/// "gsm" or "dcs".
[[nodiscard]] std::string_view BandOfChannel(int arfcn);

/// Where a channel lies among those of its band: 975 to 1023 lie below 0.
[[nodiscard]] int PlaceOfChannel(int arfcn);

/// The reading of that name; the last one where a run has several.
[[nodiscard]] const RecordedReading* ReadingOf(const RunRecord& record, std::string_view name);

}  // namespace orvane
