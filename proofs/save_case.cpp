#include "save_case.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <random>

namespace orvane::test {
namespace {

using Kind = FaultyDisk::Fault::Kind;

constexpr std::array<std::string_view, 3> kOldNames{"new", "yes", "no"};
constexpr std::array<std::string_view, 7> kKindNames{"none",           "fails",  "fails-onwards", "short",
                                                     "short-and-full", "killed", "killed-half"};
constexpr std::array kErrors{ENOSPC, EIO, EACCES};

template <class Names>
std::optional<std::size_t> PlaceOf(const Names& names, std::string_view name) {
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) return std::nullopt;
  return static_cast<std::size_t>(found - names.begin());
}

template <class Number>
bool Take(std::string_view text, Number& number) {
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  return end.ec == std::errc() && end.ptr == text.data() + text.size();
}

bool HasErrors(Kind kind) { return kind == Kind::Fails || kind == Kind::FailsOnwards || kind == Kind::ShortAndFull; }

}  // namespace

const std::vector<std::string_view>& SavePathNames() {
  static const std::vector<std::string_view> names{"upload", "ramp-main", "ramp-dialog", "initial", "power",
                                                   "loss",   "result",    "run",         "log"};
  return names;
}

std::string TextOf(const SaveCase& save) {
  std::string text(SavePathNames().at(save.path));
  text.append(",").append(kOldNames.at(static_cast<std::size_t>(save.old)));
  text.append(",").append(kKindNames.at(static_cast<std::size_t>(save.fault.kind)));
  text += "," + std::to_string(save.fault.error) + "," + std::to_string(save.fault.at);
  return text + "," + std::to_string(save.seed);
}

std::optional<SaveCase> SaveCaseOf(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t comma = 0; comma != std::string_view::npos;) {
    comma = text.find(',');
    words.push_back(text.substr(0, comma));
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  if (words.size() != 6) return std::nullopt;
  const auto path = PlaceOf(SavePathNames(), words[0]);
  const auto old = PlaceOf(kOldNames, words[1]);
  const auto kind = PlaceOf(kKindNames, words[2]);
  SaveCase save;
  if (!path || !old || !kind || !Take(words[3], save.fault.error) || !Take(words[4], save.fault.at) ||
      !Take(words[5], save.seed)) {
    return std::nullopt;
  }
  save.path = *path;
  save.old = static_cast<OldState>(*old);
  save.fault.kind = static_cast<Kind>(*kind);
  return save;
}

std::vector<FaultyDisk::Fault> AllFaults() {
  std::vector<FaultyDisk::Fault> faults;
  for (std::size_t kind = 1; kind < kKindNames.size(); ++kind) {
    for (const int error : kErrors) {
      faults.push_back({static_cast<Kind>(kind), 1, error});
      if (!HasErrors(static_cast<Kind>(kind))) break;
    }
  }
  return faults;
}

SaveCase RandomSaveCase(std::uint64_t seed) {
  std::mt19937_64 random(seed);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
  constexpr std::size_t kCallsOfMostSaves = 40;
  const auto faults = AllFaults();
  SaveCase save{below(SavePathNames().size()), kOldStates[below(3)], faults[below(faults.size())], seed};
  save.fault.at = static_cast<int>(1 + below(kCallsOfMostSaves));
  return save;
}

}  // namespace orvane::test
