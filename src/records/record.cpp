#include "records/record.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "base/text.h"

namespace orvane {
namespace {

using namespace std::chrono;

constexpr std::array kEndings{std::pair{Ending::Verdict, std::string_view("verdict")},
                              std::pair{Ending::Stopped, std::string_view("stopped")},
                              std::pair{Ending::Failure, std::string_view("failure")},
                              std::pair{Ending::Abandoned, std::string_view("abandoned")}};

void AppendDigits(std::string& text, long number, std::size_t digits) {
  const std::string plain = std::to_string(number);
  if (plain.size() < digits) text.append(digits - plain.size(), '0');
  text.append(plain);
}

/// Takes so many digits off the front.
std::optional<int> TakeDigits(std::string_view& rest, std::size_t digits) {
  if (rest.size() < digits) return std::nullopt;
  int number = 0;
  for (const char c : rest.substr(0, digits)) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  rest.remove_prefix(digits);
  return number;
}

bool Take(std::string_view& rest, char wanted) {
  if (rest.empty() || rest.front() != wanted) return false;
  rest.remove_prefix(1);
  return true;
}

std::optional<std::int64_t> DayOf(std::string_view& rest) {
  const auto y = TakeDigits(rest, 4);
  if (!y || !Take(rest, '-')) return std::nullopt;
  const auto m = TakeDigits(rest, 2);
  if (!m || !Take(rest, '-')) return std::nullopt;
  const auto d = TakeDigits(rest, 2);
  if (!d) return std::nullopt;
  const year_month_day date{year{*y}, month{static_cast<unsigned>(*m)}, day{static_cast<unsigned>(*d)}};
  if (!date.ok()) return std::nullopt;
  return duration_cast<milliseconds>(sys_days{date}.time_since_epoch()).count();
}

/// ":05.678", ":05", or nothing.
std::optional<int> SecondsOf(std::string_view& rest) {
  if (!Take(rest, ':')) return 0;
  const auto seconds = TakeDigits(rest, 2);
  if (!seconds || *seconds > 59) return std::nullopt;
  if (!Take(rest, '.')) return *seconds * 1000;
  const auto thousandths = TakeDigits(rest, 3);
  if (!thousandths) return std::nullopt;
  return *seconds * 1000 + *thousandths;
}

}  // namespace

std::string_view EndingText(Ending ending) {
  return std::find_if(kEndings.begin(), kEndings.end(), [&](const auto& row) { return row.first == ending; })->second;
}

std::optional<Ending> EndingOf(std::string_view text) {
  const auto* const row =
      std::find_if(kEndings.begin(), kEndings.end(), [&](const auto& each) { return each.second == text; });
  return row == kEndings.end() ? std::nullopt : std::optional(row->first);
}

std::optional<bool> RecordedReading::Inside() const {
  if (!low && !high) return std::nullopt;
  return (!low || value >= *low) && (!high || value <= *high);
}

const RecordedDocument* RunRecord::Document(std::string_view role) const {
  const auto hit =
      std::find_if(documents.begin(), documents.end(), [&](const auto& each) { return each.role == role; });
  return hit == documents.end() ? nullptr : &*hit;
}

std::string UtcText(std::int64_t sinceEpoch) {
  const sys_time<milliseconds> at{milliseconds{sinceEpoch}};
  const auto midnight = floor<days>(at);
  const year_month_day date{midnight};
  const hh_mm_ss time{at - midnight};
  std::string text;
  AppendDigits(text, static_cast<int>(date.year()), 4);
  text += '-';
  AppendDigits(text, static_cast<unsigned>(date.month()), 2);
  text += '-';
  AppendDigits(text, static_cast<unsigned>(date.day()), 2);
  text += 'T';
  AppendDigits(text, time.hours().count(), 2);
  text += ':';
  AppendDigits(text, time.minutes().count(), 2);
  text += ':';
  AppendDigits(text, time.seconds().count(), 2);
  text += '.';
  AppendDigits(text, time.subseconds().count(), 3);
  text += 'Z';
  return text;
}

std::optional<std::int64_t> UtcOf(std::string_view text) {
  std::string_view rest = text;
  const auto day = DayOf(rest);
  if (!day) return std::nullopt;
  if (rest.empty()) return day;
  if (!Take(rest, 'T')) return std::nullopt;
  const auto hours = TakeDigits(rest, 2);
  if (!hours || *hours > 23 || !Take(rest, ':')) return std::nullopt;
  const auto minutes = TakeDigits(rest, 2);
  if (!minutes || *minutes > 59) return std::nullopt;
  const auto millisecondsOfMinute = SecondsOf(rest);
  if (!millisecondsOfMinute) return std::nullopt;
  Take(rest, 'Z');
  if (!rest.empty()) return std::nullopt;
  return *day + (*hours * 60L + *minutes) * 60'000L + *millisecondsOfMinute;
}

}  // namespace orvane
