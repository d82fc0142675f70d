#include "app/records/run_text.h"

#include <algorithm>

#include "app/records/digest.h"
#include "app/records/shown_text.h"

namespace orvane {
namespace {

constexpr std::string_view kIndent = "  ";
/// What a person types is cut in a list at this; `show` has all of it.
constexpr std::size_t kMostOfText = 32;
constexpr std::size_t kDigestShown = 12;

class Sheet {
 public:
  explicit Sheet(const Page& page) : page_(page) {}

  void Line(const std::string& text) { text_ += text + "\n"; }
  void Heading(std::string_view title) { text_ += "\n" + Emphasized(title, page_) + "\n"; }
  /// Nothing for what is not known.
  void Field(std::string_view name, std::string_view value) {
    if (value.empty()) return;
    std::string label(name);
    label.resize(std::max<std::size_t>(label.size() + 1, kLabel), ' ');
    text_ += Dimmed(label, page_) + Harmless(value) + "\n";
  }
  void Table(const TextTable& table) { text_ += table.Text(page_, kIndent); }

  [[nodiscard]] const Page& On() const { return page_; }
  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  static constexpr std::size_t kLabel = 12;
  const Page& page_;
  std::string text_;
};

void AddHead(Sheet& sheet, const RunRecord& record) {
  const RunIdentity& run = record.identity;
  sheet.Line(Emphasized(Coloured(OutcomeText(record.end), OutcomeOf(record.end), sheet.On()), sheet.On()));
  sheet.Field("reason", record.end ? record.end->reason : std::string());
  sheet.Field("run", run.id);
  sheet.Field("serial", run.serial);
  sheet.Field("part", run.part);
  sheet.Field("operator", run.operatorName);
  sheet.Field("station", run.station);
  sheet.Field("bench", run.benchSetup.empty() ? run.bench : run.bench + ", " + run.benchSetup);
  sheet.Field("program", run.program);
  sheet.Field("kind", run.kind);
  sheet.Field("began", ClockText(run.beganMs) + " UTC");
  for (const auto& [key, value] : run.tags) sheet.Field("tag", std::string(key).append(" = ").append(value));
  if (!record.end) return;
  sheet.Field("ended", ClockText(record.end->endedMs) + " UTC");
  sheet.Field("ending", EndingText(record.end->ending));
  if (record.end->ending == Ending::Abandoned) return;
  sheet.Field("took", TookText(record.end));
  sheet.Field("link", std::to_string(record.end->commands) + " commands, " + std::to_string(record.end->bytesOut) +
                          " bytes out, " + std::to_string(record.end->bytesIn) + " bytes in");
}

void AddSteps(Sheet& sheet, const RunRecord& record) {
  if (record.steps.empty()) return;
  TextTable table({{"STEP"}, {"BEGAN", true}, {"TOOK", true}, {"RESULT"}, {"REASON"}});
  for (const RecordedStep& step : record.steps) {
    const auto outcome = step.complete ? Outcome::Good : Outcome::Doubtful;
    table.Add({step.name,
               SecondsText(step.beganS),
               SecondsText(step.seconds),
               {step.complete ? "complete" : "not complete", outcome},
               step.reason});
  }
  sheet.Heading("Steps");
  sheet.Table(table);
}

std::string LimitText(const std::optional<double>& limit) { return limit ? ShortNumber(*limit) : std::string(); }

void AddReadings(Sheet& sheet, const RunRecord& record) {
  if (record.readings.empty()) return;
  TextTable table({{"READING"}, {"VALUE", true}, {"UNIT"}, {"LOW", true}, {"HIGH", true}, {"LIMITS"}});
  std::size_t outside = 0;
  for (const RecordedReading& reading : record.readings) {
    const auto inside = reading.Inside();
    TextTable::Cell mark("");
    if (inside) mark = *inside ? TextTable::Cell("inside", Outcome::Good) : TextTable::Cell("OUTSIDE", Outcome::Bad);
    if (inside && !*inside) ++outside;
    table.Add({reading.name, ShortNumber(reading.value), reading.unit, LimitText(reading.low),
               LimitText(reading.high), mark});
  }
  sheet.Heading("Readings (" + std::to_string(record.readings.size()) +
                (outside == 0 ? ")" : ", " + std::to_string(outside) + " outside their limits)"));
  sheet.Table(table);
}

void AddSearches(Sheet& sheet, const RunRecord& record) {
  if (record.passes.empty()) return;
  TextTable table({{"SEARCH"}, {"PASSES", true}, {"FIRST DAC", true}, {"LAST DAC", true}, {"LAST dBm", true}});
  const auto& passes = record.passes;
  for (auto first = passes.begin(); first != passes.end();) {
    const auto end =
        std::find_if(first, passes.end(), [&](const auto& pass) { return pass.reading != first->reading; });
    const RecordedPass& last = *(end - 1);
    table.Add({first->reading, std::to_string(end - first), std::to_string(first->dac), std::to_string(last.dac),
               ShortNumber(last.dbm)});
    first = end;
  }
  sheet.Heading("Searches");
  sheet.Table(table);
}

void AddBoxes(Sheet& sheet, const RunRecord& record) {
  if (record.boxes.empty()) return;
  TextTable table({{"AT", true}, {"ANSWER"}, {"TITLE"}, {"TEXT"}});
  for (const RecordedBox& box : record.boxes) {
    table.Add({SecondsText(box.atS), box.answer.empty() ? "none" : box.answer, box.title, box.text});
  }
  sheet.Heading("Boxes");
  sheet.Table(table);
}

void AddDocuments(Sheet& sheet, const RunRecord& record) {
  if (record.documents.empty()) return;
  TextTable table({{"DOCUMENT"}, {"KIND"}, {"BYTES", true}, {"SHA-256"}});
  for (const RecordedDocument& document : record.documents) {
    table.Add({document.role, document.kind, std::to_string(document.content.size()),
               Sha256Of(document.content).substr(0, kDigestShown)});
  }
  sheet.Heading("Documents");
  sheet.Table(table);
}

}  // namespace

std::string ListText(const std::vector<RunSummary>& runs, const Page& page) {
  const bool onlyWhole =
      std::all_of(runs.begin(), runs.end(), [](const RunSummary& run) { return run.identity.kind == "whole"; });
  const std::size_t idLength = TellingLength(runs);
  TextTable table({{"RUN"},
                   {"BEGAN (UTC)"},
                   {"SERIAL", false, kMostOfText},
                   {"STATION", false, kMostOfText},
                   {onlyWhole ? "" : "KIND", false, kMostOfText},
                   {"TOOK", true},
                   {"VERDICT"},
                   {"REASON"}});
  for (const RunSummary& run : runs) {
    table.Add({run.identity.id.substr(0, idLength),
               ClockText(run.identity.beganMs),
               run.identity.serial,
               run.identity.station,
               onlyWhole ? std::string() : run.identity.kind,
               TookText(run.end),
               {OutcomeText(run.end), OutcomeOf(run.end)},
               run.end ? run.end->reason : std::string()});
  }
  return runs.empty() ? std::string() : table.Text(page);
}

std::string ShowText(const RunRecord& record, const Page& page) {
  Sheet sheet(page);
  AddHead(sheet, record);
  AddSteps(sheet, record);
  AddReadings(sheet, record);
  AddSearches(sheet, record);
  AddBoxes(sheet, record);
  AddDocuments(sheet, record);
  return sheet.Text();
}

}  // namespace orvane
