#include "app/records/reading_names.h"

#include <algorithm>
#include <charconv>

namespace orvane {

std::vector<std::string_view> PartsOfName(std::string_view name) {
  std::vector<std::string_view> parts;
  for (;;) {
    const auto dot = name.find('.');
    parts.push_back(name.substr(0, dot));
    if (dot == std::string_view::npos) return parts;
    name.remove_prefix(dot + 1);
  }
}

std::pair<std::string_view, std::string_view> SplitLast(std::string_view name) {
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos) return {name, {}};
  return {name.substr(0, dot), name.substr(dot + 1)};
}

std::optional<int> WholeNumber(std::string_view text) {
  int number = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (fault != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<int> RxChannel(std::string_view name, std::string_view what) {
  const auto parts = PartsOfName(name);
  if (parts.size() != 3 || parts[0] != "rx" || parts[2] != what) return std::nullopt;
  return WholeNumber(parts[1]);
}

std::string_view BandOfChannel(int arfcn) { return arfcn >= 512 && arfcn <= 885 ? "dcs" : "gsm"; }

int PlaceOfChannel(int arfcn) { return arfcn >= 975 ? arfcn - 1024 : arfcn; }

const RecordedReading* ReadingOf(const RunRecord& record, std::string_view name) {
  const auto hit = std::find_if(record.readings.rbegin(), record.readings.rend(),
                                [&](const RecordedReading& reading) { return reading.name == name; });
  return hit == record.readings.rend() ? nullptr : &*hit;
}

}  // namespace orvane
