#include "app/records/html_report.h"

#include <algorithm>

#include "app/records/digest.h"
#include "app/records/html_plots.h"
#include "app/records/html_readings.h"
#include "app/records/html_style.h"
#include "app/records/markup.h"
#include "app/records/run_words.h"
#include "app/records/shown_text.h"

namespace orvane {
namespace {

std::string_view ToneOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Good:
      return "good";
    case Outcome::Doubtful:
      return "doubtful";
    case Outcome::Bad:
      return "bad";
    case Outcome::Open:
      return "open";
  }
  return "";
}

std::string TitleOf(const RunRecord& record) {
  const RunIdentity& run = record.identity;
  return run.serial.empty() ? "Run " + std::string(ShortId(run.id)) : run.serial;
}

std::string Section(std::string_view title, const std::string& content, std::string_view style = {}) {
  if (content.empty()) return {};
  return "<section>" + Element("h2", title) + "<div" + Attribute("class", style) + ">" + content +
         "</div></section>\n";
}

std::string Field(std::string_view name, std::string_view value) {
  if (value.empty()) return {};
  return "<div>" + Element("dt", name) + Element("dd", value) + "</div>";
}

/// The run's first cause, then what else the steps have to say, then how many readings are outside.
std::vector<std::string> ReasonsOf(const RunRecord& record) {
  std::vector<std::string> reasons;
  if (record.end && !record.end->reason.empty()) reasons.push_back(record.end->reason);
  for (const RecordedStep& step : record.steps) {
    if (step.complete || step.reason.empty() || (!reasons.empty() && reasons.front() == step.reason)) continue;
    reasons.push_back(step.name + ": " + step.reason);
  }
  const auto outside = std::count_if(record.readings.begin(), record.readings.end(),
                                     [](const RecordedReading& reading) { return !reading.Inside().value_or(true); });
  if (outside == 1) reasons.emplace_back("One reading is outside its limits.");
  if (outside > 1) reasons.push_back(std::to_string(outside) + " readings are outside their limits.");
  return reasons;
}

std::string Head(const RunRecord& record) {
  const RunIdentity& run = record.identity;
  std::string text =
      "<header" + Attribute("class", ToneOf(OutcomeOf(record.end))) + ">" + Element("h1", TitleOf(record));
  text +=
      "<p class=\"verdict\">" + Escaped(OutcomeText(record.end)) + "</p><p class=\"soft\">" +
      Escaped(ClockText(run.beganMs) + " UTC, " + run.station + (run.bench == "virtual" ? " (virtual bench)" : "") +
              (TookText(record.end).empty() ? "" : ", " + TookText(record.end))) +
      "</p>";
  const auto reasons = ReasonsOf(record);
  if (!reasons.empty()) {
    text += "<ul class=\"reasons\">";
    for (const std::string& reason : reasons) text += Element("li", reason);
    text += "</ul>";
  }
  return text + "</header>\n";
}

std::string Conditions(const RunRecord& record) {
  const RunIdentity& run = record.identity;
  std::string text = "<dl>" + Field("Serial number", run.serial) + Field("Part", run.part) +
                     Field("Operator", run.operatorName) + Field("Station", run.station) + Field("Bench", run.bench) +
                     Field("Bench's setup", run.benchSetup) + Field("Program", run.program) +
                     Field("What was run", run.kind) + Field("Run", run.id) + Field("Began", UtcText(run.beganMs));
  if (record.end) {
    text += Field("Ended", UtcText(record.end->endedMs)) + Field("How it ended", EndingText(record.end->ending)) +
            Field("Target's link", std::to_string(record.end->commands) + " commands, " +
                                       std::to_string(record.end->bytesOut) + " bytes out, " +
                                       std::to_string(record.end->bytesIn) + " bytes in");
  }
  for (const auto& [key, value] : run.tags) text += Field("Tag " + key, value);
  return text + "</dl>";
}

std::string Steps(const RunRecord& record) {
  if (record.steps.empty()) return {};
  double whole = record.end ? record.end->seconds : 0;
  for (const RecordedStep& step : record.steps) whole = std::max(whole, step.beganS + step.seconds);
  std::string text =
      "<table><thead><tr><th>step</th><th class=\"number\">began</th><th class=\"number\">took</th>"
      "<th></th><th>result</th><th>reason</th></tr></thead><tbody>";
  for (const RecordedStep& step : record.steps) {
    text += "<tr>" + Element("th", step.name) + "<td class=\"number\">" + Escaped(SecondsText(step.beganS)) +
            "</td><td class=\"number\">" + Escaped(SecondsText(step.seconds)) + "</td><td>" + StepBar(step, whole) +
            "</td><td class=\"toned " + (step.complete ? "good\">complete" : "doubtful\">not complete") + "</td>" +
            Element("td", step.reason) + "</tr>";
  }
  return text + "</tbody></table>";
}

std::string BoxRows(const RunRecord& record) {
  if (record.boxes.empty()) return {};
  std::string text =
      "<table><thead><tr><th class=\"number\">at</th><th>title</th><th>text</th><th>answer</th>"
      "<th class=\"number\">answered</th></tr></thead><tbody>";
  for (const RecordedBox& box : record.boxes) {
    text += "<tr><td class=\"number\">" + Escaped(SecondsText(box.atS)) + "</td>" + Element("td", box.title) +
            "<td>" + Element("pre", box.text) + "</td>" + Element("td", box.answer.empty() ? "none" : box.answer) +
            "<td class=\"number\">" + (box.answeredS ? Escaped(SecondsText(*box.answeredS)) : "") + "</td></tr>";
  }
  return text + "</tbody></table>";
}

std::string Documents(const RunRecord& record) {
  if (record.documents.empty()) return {};
  std::string text =
      "<table><thead><tr><th>document</th><th>kind</th><th class=\"number\">bytes</th><th>SHA-256</th>"
      "</tr></thead><tbody>";
  for (const RecordedDocument& document : record.documents) {
    text += "<tr>" + Element("th", document.role) + Element("td", document.kind) + "<td class=\"number\">" +
            std::to_string(document.content.size()) + "</td><td class=\"digest\">" + Sha256Of(document.content) +
            "</td></tr>";
  }
  return text + "</tbody></table>";
}

std::string Run(const RunRecord& record) {
  std::string searches = SearchPlots(record);
  if (!searches.empty()) {
    searches +=
        "<p class=\"note\">Distance from the target in dB, pass by pass, by powers of ten; dashed is the "
        "tolerance that the next look takes. Where no value was found, the power in dBm.</p>";
  }
  return "<article class=\"run\">" + Head(record) + Section("Identity and conditions", Conditions(record)) +
         Section("Steps", Steps(record)) + Section("Readings against their limits", ReadingTables(record), "pair") +
         Section("Over the channels", ChannelPlots(record), "two") +
         Section("The searches as they converged", searches, "many") + Section("Boxes", BoxRows(record)) +
         Section("Documents", Documents(record)) + "</article>\n";
}

std::string Contents(const std::vector<RunRecord>& records) {
  if (records.size() < 2) return {};
  std::string text = "<table><tbody>";
  for (const RunRecord& record : records) {
    text += "<tr>" + Element("th", TitleOf(record)) + Element("td", ClockText(record.identity.beganMs)) +
            Element("td", record.identity.station) + "<td" +
            Attribute("class", "toned " + std::string(ToneOf(OutcomeOf(record.end)))) + ">" +
            Escaped(OutcomeText(record.end)) + "</td>" +
            Element("td", record.end ? record.end->reason : std::string()) + "</tr>";
  }
  return Section(std::to_string(records.size()) + " runs", text + "</tbody></table>");
}

}  // namespace

std::string HtmlReport(const std::vector<RunRecord>& records) {
  const std::string title = records.size() == 1 ? TitleOf(records.front()) + ": " + OutcomeText(records.front().end)
                                                : std::to_string(records.size()) + " runs";
  // The page may load nothing and run nothing, whatever a record's texts hold.
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
      Element("title", title) + "\n<style>" + std::string(kReportStyle) + "</style>\n</head>\n<body>\n" +
      Contents(records);
  for (const RunRecord& record : records) page += Run(record);
  return page +
         "<footer>Run records of the station orvane. Times are UTC, seconds count from the run's begin.</footer>\n"
         "</body>\n</html>\n";
}

}  // namespace orvane
