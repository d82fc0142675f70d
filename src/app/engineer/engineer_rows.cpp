#include "app/engineer/engineer_rows.h"

#include "app/engineer/word_digest.h"
#include "app/route_text.h"

namespace orvane {

void AddEngineerRows(std::vector<OptionRow>& rows) {
  rows.push_back({.name = "engineer-secret",
                  .what = "DIGEST",
                  .means = "What --make-engineer-secret has made of the engineer's word",
                  .take = [](Options& options, const std::string& text) {
                    if (!IsWordDigest(text)) throw OptionFault("it is nothing that --make-engineer-secret has made");
                    options.engineerSecret = text;
                  }});
  rows.push_back(
      FlagRow("make-engineer-secret",
              "Read the engineer's word as a line from standard input, print what a profile has of it, then "
              "exit",
              &Options::makeEngineerSecret, true));
}

}  // namespace orvane
