#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// How a run came to its end.
enum class Ending {
  /// Of its own: a whole run behind its verdict, one that was started by hand at its end.
  Verdict,
  Stopped,
  Failure,
  /// The station that ran it is no more.
  Abandoned,
};
/// "verdict", "stopped", "failure", "abandoned".
[[nodiscard]] std::string_view EndingText(Ending ending);
[[nodiscard]] std::optional<Ending> EndingOf(std::string_view text);

/// Who and what a run is of, as it stands when the run begins. All texts are UTF-8 without control characters; an
/// empty one is not known.
struct RunIdentity {
  /// A time-ordered UUID (version 7 of RFC 9562), in lower case.
  std::string id;
  std::string station;
  /// "real" or "virtual", and the virtual one's options as they were given.
  std::string bench;
  std::string benchSetup;
  /// "orvane 0.1.0".
  std::string program;
  /// "whole", or what was started by hand: "receive", "GSM", "DCS", "transmit", "rf", "charger".
  std::string kind;
  std::string serial;
  std::string part;
  std::string operatorName;
  std::map<std::string, std::string> tags;
  /// Milliseconds since 1970, UTC.
  std::int64_t beganMs = 0;
  friend bool operator==(const RunIdentity&, const RunIdentity&) = default;
};

/// What is known of a run when it has ended.
struct RunEnd {
  std::int64_t endedMs = 0;
  double seconds = 0;
  /// "PASS", "FAIL", "NONE".
  std::string verdict = "NONE";
  bool complete = false;
  Ending ending = Ending::Verdict;
  /// The first cause of what is no complete PASS; empty behind one.
  std::string reason;
  /// Of the Target's link.
  std::int64_t commands = 0;
  std::int64_t bytesOut = 0;
  std::int64_t bytesIn = 0;
  friend bool operator==(const RunEnd&, const RunEnd&) = default;
};

// All times below are in seconds since the run began, by the station's monotonic clock.

struct RecordedStep {
  /// As in the notification `verdict`: "receive".
  std::string name;
  double beganS = 0;
  double seconds = 0;
  bool complete = false;
  std::string reason;
  friend bool operator==(const RecordedStep&, const RecordedStep&) = default;
};

/// A value as it was read, with the limits that the run itself judges by.
struct RecordedReading {
  /// Name of the step; empty outside all of them.
  std::string step;
  std::string name;
  double value = 0;
  std::string unit;
  std::optional<double> low{};
  std::optional<double> high{};
  double atS = 0;

  /// No value without limits. Both limits count as inside.
  [[nodiscard]] std::optional<bool> Inside() const;
  friend bool operator==(const RecordedReading&, const RecordedReading&) = default;
};

/// One pass of a power search.
struct RecordedPass {
  /// The search's name: "tx.gsm.level.5", "tx.dcs.channel.885".
  std::string reading;
  /// From 0 in each search.
  int position = 0;
  int dac = 0;
  double dbm = 0;
  double tolerance = 0;
  double atS = 0;
  friend bool operator==(const RecordedPass&, const RecordedPass&) = default;
};

/// The title of the box that comes behind a run, when what is switched off then could not be made sure to be off. It
/// is no word of the run's: the one that is run again does not say it.
inline constexpr std::string_view kSafeOffTitle = "Safe-off";

struct RecordedBox {
  std::string title;
  std::string text;
  /// The button's caption; empty when nobody answered.
  std::string answer;
  double atS = 0;
  std::optional<double> answeredS{};
  friend bool operator==(const RecordedBox&, const RecordedBox&) = default;
};

/// Something whole that the run began with, made or stood on.
struct RecordedDocument {
  /// "parameters.before", "eeprom.sent", "trace", ...: a role is there once in a run.
  std::string role;
  /// "text", "bytes", "json", "trace".
  std::string kind;
  std::string content;
  friend bool operator==(const RecordedDocument&, const RecordedDocument&) = default;
};

/// A run as it is kept: a plain value, whoever keeps it.
struct RunRecord {
  RunIdentity identity;
  /// No value while it runs.
  std::optional<RunEnd> end{};
  std::vector<RecordedStep> steps{};
  std::vector<RecordedReading> readings{};
  std::vector<RecordedPass> passes{};
  std::vector<RecordedBox> boxes{};
  std::vector<RecordedDocument> documents{};

  [[nodiscard]] const RecordedDocument* Document(std::string_view role) const;
  friend bool operator==(const RunRecord&, const RunRecord&) = default;
};

/// "2026-11-22T03:04:05.678Z".
[[nodiscard]] std::string UtcText(std::int64_t milliseconds);
/// The same and its shorter forms ("2026-11-22", "2026-11-22T03:04", "...:05Z"); no value for anything else.
[[nodiscard]] std::optional<std::int64_t> UtcOf(std::string_view text);

}  // namespace orvane
