// Every way of saving, with every call of it to the disk failing or the process killed at it:
//   prove_files [--minutes N] [--state DIR] [--case TEXT]
// goes through all of them once, and on with random ones until the time is over. With --state the next start goes on
// where this one ended, findings counted on; remove DIR to begin anew. --case tries one of the findings again.

#include <charconv>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "save_proof.h"

namespace orvane::test {
namespace {

struct Arguments {
  double minutes = 1;
  std::string state;
  std::optional<SaveCase> only;
};

std::optional<Arguments> ArgumentsOf(const std::vector<std::string>& words) {
  Arguments arguments;
  for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
    const std::string& value = words[i + 1];
    if (words[i] == "--state") {
      arguments.state = value;
    } else if (words[i] == "--case") {
      arguments.only = SaveCaseOf(value);
      if (!arguments.only) return std::nullopt;
    } else if (words[i] == "--minutes") {
      const auto end = std::from_chars(value.data(), value.data() + value.size(), arguments.minutes);
      if (end.ec != std::errc()) return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  if (words.size() % 2 != 0) return std::nullopt;
  return arguments;
}

/// How far it has come, over all starts with the same state.
struct Progress {
  std::size_t combinations = 0;
  std::uint64_t nextSeed = 1;
  std::uint64_t saves = 0;
  std::uint64_t struck = 0;
  std::uint64_t findings = 0;
};

class Run {
 public:
  explicit Run(const Arguments& arguments)
      : end_(std::chrono::steady_clock::now() + std::chrono::duration<double>(arguments.minutes * 60)),
        stateFile_(arguments.state.empty() ? "" : arguments.state + "/files") {
    if (stateFile_.empty()) return;
    std::filesystem::create_directories(arguments.state);
    std::ifstream in(stateFile_);
    Progress kept;
    if (in >> kept.combinations >> kept.nextSeed >> kept.saves >> kept.struck >> kept.findings) progress_ = kept;
  }

  void All() {
    const auto faults = AllFaults();
    const std::size_t ways = SavePathNames().size();
    const std::size_t all = ways * std::size(kOldStates) * faults.size();
    for (; progress_.combinations < all && !Over(); ++progress_.combinations) {
      const std::size_t c = progress_.combinations;
      SaveCase save{c % ways, kOldStates[c / ways % std::size(kOldStates)], faults[c / ways / std::size(kOldStates)],
                    0};
      for (save.fault.at = 1; One(save); ++save.fault.at) {
      }
      Keep();
    }
    while (!Over()) {
      One(RandomSaveCase(progress_.nextSeed));
      ++progress_.nextSeed;
      Keep();
    }
    std::cout << "files: " << progress_.saves << " saves, " << progress_.struck << " of them struck ("
              << progress_.combinations << " of " << all << " combinations at every call, " << progress_.nextSeed - 1
              << " random ones), " << progress_.findings << " findings" << std::endl;
  }

  /// @return whether the fault was met.
  bool One(const SaveCase& save) {
    const SaveProof::Outcome outcome = proof_.Try(save);
    ++progress_.saves;
    if (outcome.struck) ++progress_.struck;
    if (!outcome.finding.empty()) {
      ++progress_.findings;
      std::cout << "finding: " << outcome.finding << " (prove_files --case " << TextOf(save) << ")" << std::endl;
    }
    return outcome.struck;
  }

  [[nodiscard]] bool Clean() const { return progress_.findings == 0; }

 private:
  [[nodiscard]] bool Over() const { return std::chrono::steady_clock::now() >= end_; }
  void Keep() const {
    if (stateFile_.empty()) return;
    std::ofstream(stateFile_) << progress_.combinations << " " << progress_.nextSeed << " " << progress_.saves << " "
                              << progress_.struck << " " << progress_.findings << "\n";
  }

  SaveProof proof_;
  Progress progress_;
  std::chrono::time_point<std::chrono::steady_clock, std::chrono::duration<double>> end_;
  std::string stateFile_;
};

}  // namespace
}  // namespace orvane::test

int main(int argc, char** argv) {
  using namespace orvane::test;
  constexpr int kUsage = 64;
  const auto arguments = ArgumentsOf({argv + 1, argv + argc});
  if (!arguments) {
    std::cerr << "Usage: prove_files [--minutes N] [--state DIR] [--case TEXT]\n";
    return kUsage;
  }
  Run run(*arguments);
  if (arguments->only) {
    run.One(*arguments->only);
  } else {
    run.All();
  }
  return run.Clean() ? 0 : 1;
}
