#include "app/records/junit_export.h"

#include <algorithm>

#include "app/records/markup.h"
#include "app/records/run_words.h"
#include "app/records/shown_text.h"

namespace orvane {
namespace {

struct Failure {
  const RecordedStep* step;
  std::string reason;
};

std::string ReasonOf(const std::string& reason) { return reason.empty() ? "The step is not complete." : reason; }

/// What failed as a whole failed in some step.
std::vector<Failure> FailuresOf(const RunRecord& record) {
  std::vector<Failure> failures;
  for (const RecordedStep& step : record.steps) {
    if (!step.complete) failures.push_back({&step, ReasonOf(step.reason)});
  }
  const bool failed = record.end && OutcomeOf(record.end) == Outcome::Bad;
  if (failures.empty() && failed && !record.steps.empty()) {
    failures.push_back({&record.steps.back(), record.end->reason.empty() ? "The run failed." : record.end->reason});
  }
  return failures;
}

std::string NameOf(const RunIdentity& run) { return run.serial.empty() ? run.id : run.serial; }

std::string Property(std::string_view name, const std::string& value) {
  if (value.empty()) return {};
  return "      <property" + Attribute("name", name) + Attribute("value", value) + "/>\n";
}

std::string Properties(const RunRecord& record) {
  const RunIdentity& run = record.identity;
  std::string text = "    <properties>\n" + Property("run", run.id) + Property("serial", run.serial) +
                     Property("part", run.part) + Property("operator", run.operatorName) +
                     Property("bench", run.bench) + Property("bench_setup", run.benchSetup) +
                     Property("program", run.program) + Property("kind", run.kind);
  for (const auto& [key, value] : run.tags) text += Property("tag." + key, value);
  if (record.end) {
    text += Property("verdict", record.end->verdict) + Property("complete", record.end->complete ? "1" : "0") +
            Property("ending", std::string(EndingText(record.end->ending)));
  }
  return text + "    </properties>\n";
}

std::string Case(const RunRecord& record, const RecordedStep& step, const std::vector<Failure>& failures) {
  std::string text = "    <testcase" + Attribute("classname", "orvane." + record.identity.kind) +
                     Attribute("name", step.name) + Attribute("time", PlainNumber(step.seconds));
  const auto failure =
      std::find_if(failures.begin(), failures.end(), [&](const Failure& f) { return f.step == &step; });
  if (failure == failures.end()) return text + "/>\n";
  return text + ">\n      <failure" + Attribute("message", failure->reason) +
         Attribute("type", step.complete ? "failed" : "incomplete") + ">" + Escaped(failure->reason) +
         "</failure>\n    </testcase>\n";
}

std::string Suite(const RunRecord& record) {
  const std::vector<Failure> failures = FailuresOf(record);
  const RunIdentity& run = record.identity;
  // The form has no place for fractions of a second and for the zone, which is UTC.
  std::string text =
      "  <testsuite" + Attribute("name", NameOf(run)) + Attribute("id", run.id) +
      Attribute("timestamp", UtcText(run.beganMs).substr(0, 19)) + Attribute("hostname", run.station) +
      Attribute("tests", std::to_string(record.steps.size())) +
      Attribute("failures", std::to_string(failures.size())) + Attribute("errors", "0") + Attribute("skipped", "0") +
      Attribute("time", PlainNumber(record.end ? record.end->seconds : 0)) + ">\n" + Properties(record);
  for (const RecordedStep& step : record.steps) text += Case(record, step, failures);
  const std::string outcome = OutcomeText(record.end);
  const std::string reason = record.end ? record.end->reason : std::string();
  text += "    " + Element("system-out", reason.empty() ? outcome : outcome + ": " + reason) + "\n";
  return text + "  </testsuite>\n";
}

}  // namespace

std::string JunitXml(const std::vector<RunRecord>& records) {
  std::size_t tests = 0;
  std::size_t failures = 0;
  double seconds = 0;
  std::string suites;
  for (const RunRecord& record : records) {
    tests += record.steps.size();
    failures += FailuresOf(record).size();
    seconds += record.end ? record.end->seconds : 0;
    suites += Suite(record);
  }
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + Attribute("name", "orvane") +
         Attribute("tests", std::to_string(tests)) + Attribute("failures", std::to_string(failures)) +
         Attribute("errors", "0") + Attribute("time", PlainNumber(seconds)) + ">\n" + suites + "</testsuites>\n";
}

}  // namespace orvane
