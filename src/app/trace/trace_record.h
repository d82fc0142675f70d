#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/event_loop.h"

namespace orvane {

/// One thing that happened on one link.
struct TraceRecord {
  /// Since the start of the trace.
  TimePoint at{0};
  /// "COM1", "GPIB 5", or "station" for what stopped an operation.
  std::string link;
  /// "open", "close", "out", "in", "line" (an event of the serial control), "failure".
  std::string event;
  /// What went over the wire, byte by byte.
  std::string bytes;
  /// In words: a decoded command or reply, settings, a failure's text. May be empty.
  std::string says;
};

/// The first line of each part of a trace.
struct TraceHead {
  std::string program;
  /// UTC, "2026-03-01T08:15:00Z".
  std::string started;
  int part = 1;
};

/// The serial line's bytes stand in hexadecimal, `"hex":"02 14"`; an instrument's as `"text"`, each byte the
/// character of its number. One JSON object, no line end.
[[nodiscard]] std::string LineOf(const TraceRecord& record);
[[nodiscard]] std::string LineOf(const TraceHead& head);
/// No value for a line that is none.
[[nodiscard]] std::optional<TraceRecord> TraceRecordOf(std::string_view line);
[[nodiscard]] std::optional<TraceHead> TraceHeadOf(std::string_view line);

/// "02 14 00".
[[nodiscard]] std::string HexOf(std::string_view bytes);
/// A serial line, by a link's name.
[[nodiscard]] bool IsSerial(std::string_view link);

}  // namespace orvane
