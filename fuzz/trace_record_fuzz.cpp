// One line of a trace. A line that is a record or a head must be the same one when it is written and read again, and
// what it cannot say must not be in it.

#include <cctype>
#include <nlohmann/json.hpp>

#include "app/trace/trace_record.h"
#include "base/text.h"
#include "require.h"

namespace {

using namespace orvane;
using fuzz::Require;

bool Same(const TraceRecord& a, const TraceRecord& b) {
  return a.link == b.link && a.event == b.event && a.bytes == b.bytes && a.says == b.says;
}

/// By its words: the line need not be read a second time to see that it is none.
bool MayBeHead(std::string_view line) { return line.find("trace") != std::string_view::npos; }

/// A text member of the line, by a plain reading.
std::string Member(const nlohmann::json& line, const char* name) {
  return line.contains(name) && line[name].is_string() ? line[name].get<std::string>() : "";
}

/// A record says what its line says, byte by byte.
void CheckAgainst(std::string_view text, const TraceRecord& record) {
  const auto line = nlohmann::json::parse(text);
  Require(record.link == Member(line, "link") && record.event == Member(line, "event"), "another event");
  Require(record.says == Member(line, "says"), "other words");
  if (!line.contains("hex"))
    return Require(TextOfBytes(record.bytes) == Member(line, "text"), "other bytes of a text");
  std::string hex;
  for (const char c : Member(line, "hex")) hex += static_cast<char>(std::toupper(c));
  Require(HexOf(record.bytes) == hex, "other bytes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  if (const auto record = TraceRecordOf(line)) {
    Require(!record->link.empty() && !record->event.empty(), "a record of nothing");
    CheckAgainst(line, *record);
    const auto again = TraceRecordOf(LineOf(*record));
    Require(again && Same(*again, *record), "another record from its own line");
    // Times are written in microseconds, and read to the nanosecond.
    const auto moved = again->at > record->at ? again->at - record->at : record->at - again->at;
    const bool exact = record->at < std::chrono::hours(24 * 365) && record->at > -std::chrono::hours(24 * 365);
    Require(!exact || moved <= std::chrono::microseconds(1), "another time from its own line");
  } else if (const auto head = MayBeHead(line) ? TraceHeadOf(line) : std::nullopt) {
    const auto again = TraceHeadOf(LineOf(*head));
    Require(again && again->program == head->program && again->started == head->started && again->part == head->part,
            "another head from its own line");
  }
  return 0;
}
