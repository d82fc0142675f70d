#include "app/records/record_faults.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

namespace orvane {
namespace {

class Faults {
 public:
  explicit Faults(const RunRecord& record) : record_(record) {}

  std::vector<std::string> All() {
    Readings();
    Passes();
    Documents();
    return std::move(faults_);
  }

 private:
  /// A run by hand has no steps, and its readings name what was run.
  void Readings() {
    if (record_.steps.empty()) return;
    std::set<std::string> missing;
    for (const RecordedReading& reading : record_.readings) {
      const bool isThere =
          reading.step.empty() || std::any_of(record_.steps.begin(), record_.steps.end(),
                                              [&](const auto& step) { return step.name == reading.step; });
      if (!isThere && missing.insert(reading.step).second) {
        faults_.push_back("reading " + reading.name + ": there is no step " + reading.step);
      }
    }
  }

  /// A search that is done once more goes on counting.
  void Passes() {
    std::map<std::string_view, int> next;
    for (const RecordedPass& pass : record_.passes) {
      int& expected = next[pass.reading];
      if (pass.position != expected) {
        faults_.push_back("pass " + std::to_string(pass.position) + " of " + pass.reading +
                          ": the one before is missing");
      }
      expected = pass.position + 1;
    }
  }

  void Documents() {
    std::set<std::string> roles;
    for (const RecordedDocument& document : record_.documents) {
      if (!roles.insert(document.role).second) faults_.push_back("document " + document.role + ": there are two");
    }
  }

  const RunRecord& record_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> RecordFaults(const RunRecord& record) { return Faults(record).All(); }

}  // namespace orvane
