#include "app/records/csv_export.h"

#include "app/records/shown_text.h"
#include "app/records/utf8_walk.h"

namespace orvane {
namespace {

constexpr std::string_view kHeader =
    "run,position,step,name,value,unit,low,high,inside,at_s,serial,part,station,began,verdict\r\n";

std::string WithSoundCharacters(std::string_view text) {
  std::string sound;
  while (!text.empty()) {
    const WalkedCharacter next = TakeCharacter(text);
    // A spreadsheet takes NUL for the end of the file.
    const bool isSound = next.code && *next.code != 0;
    sound += isSound ? next.bytes : std::string_view("\uFFFD");
  }
  return sound;
}

/// Some spreadsheets pass over blanks and tabs ahead of a formula.
bool LooksLikeFormula(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && std::string_view("=+-@").find(text[first]) != std::string_view::npos;
}

std::string TextField(std::string_view text) {
  std::string field = WithSoundCharacters(text);
  if (LooksLikeFormula(field)) field.insert(0, "'");
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  std::string quoted = "\"";
  for (const char c : field) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + "\"";
}

std::string LimitField(const std::optional<double>& limit) { return limit ? PlainNumber(*limit) : std::string(); }

std::string InsideField(const std::optional<bool>& inside) {
  if (!inside) return {};
  return *inside ? "1" : "0";
}

}  // namespace

std::string ReadingsCsv(const std::vector<RunRecord>& records) {
  std::string csv(kHeader);
  for (const RunRecord& record : records) {
    const RunIdentity& run = record.identity;
    const std::string ofRun = TextField(run.serial) + "," + TextField(run.part) + "," + TextField(run.station) + "," +
                              UtcText(run.beganMs) + "," + (record.end ? TextField(record.end->verdict) : "") +
                              "\r\n";
    for (std::size_t i = 0; i < record.readings.size(); ++i) {
      const RecordedReading& reading = record.readings[i];
      csv += TextField(run.id) + "," + std::to_string(i) + "," + TextField(reading.step) + "," +
             TextField(reading.name) + "," + PlainNumber(reading.value) + "," + TextField(reading.unit) + "," +
             LimitField(reading.low) + "," + LimitField(reading.high) + "," + InsideField(reading.Inside()) + "," +
             PlainNumber(reading.atS) + "," + ofRun;
    }
  }
  return csv;
}

}  // namespace orvane
