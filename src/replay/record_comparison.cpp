#include "replay/record_comparison.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace orvane {
namespace {

std::string Number(double value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

std::string Limit(const std::optional<double>& limit) { return limit ? Number(*limit) : "none"; }
std::string Quoted(const std::string& text) { return "\"" + text + "\""; }
std::string Whether(bool complete) { return complete ? "complete" : "incomplete"; }

class Comparison {
 public:
  std::vector<std::string> found;

  void Value(const std::string& what, const std::string& then, const std::string& now) {
    if (then != now) found.push_back(what + ": " + now + ", not " + then + ".");
  }

  /// Row by row; a row that stands on one side alone is told by its name, and the others are held against each other.
  template <class Row, class Name, class Compare>
  void Rows(const std::vector<Row>& then, const std::vector<Row>& now, Name name, Compare compare) {
    auto left = then.begin();
    auto right = now.begin();
    while (left != then.end() || right != now.end()) {
      if (left != then.end() && right != now.end() && name(*left) == name(*right)) {
        compare(*left++, *right++);
      } else if (left != then.end() && !IsAhead(*left, right, now.end(), name)) {
        found.push_back(name(*left++) + " is missing.");
      } else {
        found.push_back(name(*right++) + " is new.");
      }
    }
  }

 private:
  template <class Row, class At, class Name>
  static bool IsAhead(const Row& row, At at, At end, Name name) {
    return std::any_of(at, end, [&](const Row& each) { return name(each) == name(row); });
  }
};

/// What was told of the run behind its end: its times, and how a golden unit did.
bool IsOfNoStep(const RecordedReading& reading) {
  return reading.name.starts_with("road.") || reading.name.starts_with("golden.");
}

std::vector<RecordedReading> OfSteps(std::vector<RecordedReading> readings) {
  readings.erase(std::remove_if(readings.begin(), readings.end(), &IsOfNoStep), readings.end());
  return readings;
}

void CompareReadings(Comparison& told, const RunRecord& then, const RunRecord& now) {
  told.Rows(
      OfSteps(then.readings), OfSteps(now.readings),
      [](const RecordedReading& reading) { return "Reading " + reading.name; },
      [&](const RecordedReading& left, const RecordedReading& right) {
        const std::string what = "Reading " + left.name;
        told.Value(what, Number(left.value) + " " + left.unit, Number(right.value) + " " + right.unit);
        told.Value(what + ", lower limit", Limit(left.low), Limit(right.low));
        told.Value(what + ", upper limit", Limit(left.high), Limit(right.high));
        told.Value(what + ", step", Quoted(left.step), Quoted(right.step));
      });
  told.Rows(
      then.passes, now.passes,
      [](const RecordedPass& pass) { return "Search " + pass.reading + ", pass " + std::to_string(pass.position); },
      [&](const RecordedPass& left, const RecordedPass& right) {
        const auto words = [](const RecordedPass& pass) {
          return "DAC " + std::to_string(pass.dac) + " with " + Number(pass.dbm) + " dBm within " +
                 Number(pass.tolerance);
        };
        told.Value("Search " + left.reading + ", pass " + std::to_string(left.position), words(left), words(right));
      });
}

void CompareSteps(Comparison& told, const RunRecord& then, const RunRecord& now) {
  told.Rows(
      then.steps, now.steps, [](const RecordedStep& step) { return "Step " + step.name; },
      [&](const RecordedStep& left, const RecordedStep& right) {
        told.Value("Step " + left.name, Whether(left.complete), Whether(right.complete));
        told.Value("Step " + left.name + ", reason", Quoted(left.reason), Quoted(right.reason));
      });
  told.Rows(
      then.boxes, now.boxes, [](const RecordedBox& box) { return "Box " + Quoted(box.title + ": " + box.text); },
      [&](const RecordedBox& left, const RecordedBox& right) {
        told.Value("Box " + Quoted(left.title + ": " + left.text) + ", answer", Quoted(left.answer),
                   Quoted(right.answer));
      });
}

/// Where two contents part, in words.
std::string Parting(std::string_view then, std::string_view now) {
  const auto [left, right] = std::mismatch(then.begin(), then.end(), now.begin(), now.end());
  const std::string at = std::to_string(left - then.begin());
  if (left == then.end() || right == now.end()) {
    return std::to_string(now.size()) + " bytes, not " + std::to_string(then.size()) + ", alike up to there";
  }
  const auto value = [](char byte) { return std::to_string(static_cast<unsigned char>(byte)); };
  return "byte " + at + " is " + value(*right) + ", not " + value(*left);
}

void CompareDocuments(Comparison& told, const RunRecord& then, const RunRecord& now) {
  for (const char* const role : {"parameters.after", "eeprom.sent", "eeprom.read", "flash.100"}) {
    const RecordedDocument* const left = then.Document(role);
    const RecordedDocument* const right = now.Document(role);
    const std::string what = std::string("Document ") + role;
    if ((left == nullptr) != (right == nullptr)) {
      told.found.push_back(what + (left == nullptr ? " is new." : " is missing."));
    } else if (left != nullptr && left->content != right->content) {
      told.found.push_back(what + ": " + Parting(left->content, right->content) + ".");
    }
  }
}

void CompareEnds(Comparison& told, const RunEnd& then, const RunEnd& now) {
  told.Value("Verdict", then.verdict, now.verdict);
  told.Value("Run", Whether(then.complete), Whether(now.complete));
  told.Value("Ending", std::string(EndingText(then.ending)), std::string(EndingText(now.ending)));
  told.Value("Reason", Quoted(then.reason), Quoted(now.reason));
  told.Value("Commands", std::to_string(then.commands), std::to_string(now.commands));
  told.Value("Bytes to the Target", std::to_string(then.bytesOut), std::to_string(now.bytesOut));
  told.Value("Bytes from the Target", std::to_string(then.bytesIn), std::to_string(now.bytesIn));
}

}  // namespace

std::vector<std::string> RecordDifferences(const RunRecord& then, const RunRecord& now) {
  Comparison told;
  if (!then.end || then.end->ending == Ending::Abandoned) return {};
  if (!now.end) return {"The run did not come to its end."};
  CompareEnds(told, *then.end, *now.end);
  CompareSteps(told, then, now);
  CompareReadings(told, then, now);
  CompareDocuments(told, then, now);
  return std::move(told.found);
}

}  // namespace orvane
