#include "app/golden/golden_rows.h"

namespace orvane {

void AddGoldenRows(std::vector<OptionRow>& rows) {
  rows.push_back(
      TextRow("golden", "SERIAL",
              "Serial number of the golden unit: while it is due, or was outside its limits, no other unit "
              "is run",
              [](Options& options) -> std::string& { return options.golden.serial; }));
  rows.push_back(
      TextRow("golden-reference", "RUN|FILE.orvane",
              "What the golden unit is held against: a run in the store of --records, or a record in a file",
              [](Options& options) -> std::string& { return options.golden.reference; }));
  rows.push_back(
      {.name = "check-every",
       .what = "TIME",
       .means = "How long a good check of the golden unit counts: 90m, 12h, 7d [12h]",
       .take = [](Options& options, const std::string& text) { options.golden.checkEvery = ParseInterval(text); }});
  OptionRow excuse = TextRow("golden-excuse", "TEXT",
                             "Why other units are run although the golden unit is due or was outside; goes into each "
                             "record",
                             [](Options& options) -> std::string& { return options.golden.excuse.emplace(); });
  excuse.onCommandLineOnly = true;
  rows.push_back(excuse);
}

}  // namespace orvane
