#include "save_proof.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <random>

#include "disk_station.h"
#include "platform/files.h"

namespace orvane::test {
namespace {

using Kind = FaultyDisk::Fault::Kind;

constexpr std::size_t kLongerThanAnyNewFile = 200000;
/// A save that a child process does not end within it hangs.
constexpr unsigned kLongestSaveSeconds = 60;

bool IsLog(const SaveCase& save) { return SavePathNames().at(save.path) == "log"; }
bool Kills(const SaveCase& save) { return save.fault.kind == Kind::Killed || save.fault.kind == Kind::KilledHalf; }
std::uint64_t UnitOf(const SaveCase& save) { return save.seed % 20 + 1; }

std::string OldContent(const SaveCase& save, std::string_view name) {
  std::mt19937_64 random(save.seed + name.size());
  const std::size_t size = save.seed == 0 ? kLongerThanAnyNewFile : random() % (2 * kLongerThanAnyNewFile);
  std::string content;
  while (content.size() < size) content += "old " + std::to_string(content.size()) + "\n";
  return content;
}

std::string FileName(const SaveCase& save) {
  switch (save.seed % 4) {
    case 1:
      return "단말 " + std::to_string(save.seed) + ".abc";
    case 2:
      return std::string(251, 'n').append(".abc");
    default:
      return "unit.abc";
  }
}

bool IsLeftover(const std::string& name) { return name.rfind(".orvane-", 0) == 0; }

/// What a reader is told of a content.
std::string Sketch(const std::string& content) {
  return std::to_string(content.size()) + " bytes \"" + content.substr(0, 12) + "\"";
}

}  // namespace

SaveProof::Place::Place(const SaveCase& save) : file(FileName(save)) {
  if (save.old == OldState::Nothing) return;
  for (const std::string& name : {file, SideFileOf(file).value_or(file)}) old[name] = OldContent(save, name);
}

void SaveProof::Place::Lay() const {
  for (const std::string& name : folder.Names()) std::filesystem::remove(folder.Path(name));
  for (const auto& [name, content] : old) folder.Put(name, content);
}

SaveProof::Contents SaveProof::Place::Now() const {
  Contents contents;
  for (const std::string& name : folder.Names()) {
    if (!IsLeftover(name)) contents[name] = folder.ContentOf(name);
  }
  return contents;
}

bool SaveProof::Place::HasLeftovers() const {
  const auto names = folder.Names();
  return std::any_of(names.begin(), names.end(), IsLeftover);
}

SaveProof::Contents SaveProof::Wanted(const SaveCase& save) {
  SaveCase sound = save;
  sound.fault = {};
  const std::string key = TextOf(sound);
  const auto known = wanted_.find(key);
  if (known != wanted_.end()) return known->second;
  const Place place(sound);
  place.Lay();
  DiskStation station(UnitOf(sound));
  station.Save(sound.path, sound.old, place.folder.Path(place.file), {});
  return wanted_[key] = place.Now();
}

SaveProof::Outcome SaveProof::Try(const SaveCase& save) {
  const Place place(save);
  place.Lay();
  if (const std::string finding = WithoutFault(save, place); !finding.empty()) return {false, finding};
  return Kills(save) ? Killed(save, place) : Alive(save, place);
}

/// What a save over an old file makes follows from what it makes where there was none.
std::string SaveProof::WithoutFault(const SaveCase& save, const Place& place) {
  SaveCase first = save;
  first.old = OldState::Nothing;
  const Contents fresh = Wanted(first);
  const Contents wanted = Wanted(save);
  for (const auto& [name, content] : fresh) {
    if (content.empty()) return "without a fault nothing is saved in " + name;
    const auto before = place.old.find(name);
    const bool there = before != place.old.end();
    std::string expected = content;
    // Companions are never asked about.
    const bool overlaid = there && (save.old == OldState::No || name != place.file);
    if (overlaid && before->second.size() > content.size()) expected += before->second.substr(content.size());
    if (IsLog(save) && save.old == OldState::No) expected = before->second;
    if (wanted.at(name) != expected) return "without a fault " + name + " is " + Sketch(wanted.at(name));
  }
  return fresh.contains(place.file) ? "" : "without a fault nothing is saved";
}

SaveProof::Outcome SaveProof::Alive(const SaveCase& save, const Place& place) {
  DiskStation station(UnitOf(save));
  station.Save(save.path, save.old, place.folder.Path(place.file), save.fault);
  const auto now = place.Now();
  Outcome outcome{station.Struck(), Judge(save, place, now)};
  const bool whole = now == Wanted(save);
  if (outcome.finding.empty() && !whole && !station.ToldOfAFailure())
    outcome.finding = "no box for a file that is not there";
  if (outcome.finding.empty() && !outcome.struck && (!whole || station.ToldOfAFailure())) {
    outcome.finding = "no fault, and no whole file or a box";
  }
  if (outcome.finding.empty() && !station.CameToItsVerdict()) outcome.finding = "the run came to no verdict";
  if (outcome.finding.empty() && station.Ran() && station.Complete() == station.ToldOfAFailure()) {
    outcome.finding = "the run's steps and the box do not agree";
  }
  if (outcome.finding.empty() && place.HasLeftovers() && !station.UnlinkFailed())
    outcome.finding = "a draft was left";
  if (outcome.finding.empty()) outcome.finding = TryAgain(save, place);
  if (!outcome.finding.empty()) outcome.finding += " " + station.Boxes();
  return outcome;
}

SaveProof::Outcome SaveProof::Killed(const SaveCase& save, const Place& place) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::alarm(kLongestSaveSeconds);
    DiskStation station(UnitOf(save));
    station.Save(save.path, save.old, place.folder.Path(place.file), save.fault);
    ::_exit(0);
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) return {false, "no child process"};
  const bool killed = WIFEXITED(status) && WEXITSTATUS(status) == FaultyDisk::kKilledStatus;
  if (!killed && status != 0) return {false, "the process ended with " + std::to_string(status)};
  std::string finding = Judge(save, place, place.Now());
  if (finding.empty()) finding = TryAgain(save, place);
  return {killed, finding};
}

/// Each file is the old one or the new one; a log that ended early is a beginning of it.
std::string SaveProof::Judge(const SaveCase& save, const Place& place, const Contents& now) {
  const Contents wanted = Wanted(save);
  for (const auto& [name, content] : now) {
    const auto before = place.old.find(name);
    const auto after = wanted.find(name);
    if (before != place.old.end() && content == before->second) continue;
    if (after != wanted.end() && content == after->second) continue;
    // A log that the disk takes again has all of it. One that it never takes again, or whose process is gone, ends
    // early.
    const bool mayEnd = save.fault.kind == Kind::FailsOnwards || Kills(save) || content.empty();
    const bool begun = mayEnd && after != wanted.end() && after->second.compare(0, content.size(), content) == 0;
    if (IsLog(save) && begun) continue;
    return name + " is neither the old file nor the new one: " + Sketch(content);
  }
  for (const auto& [name, content] : place.old) {
    if (!now.contains(name)) return name + " is gone";
  }
  return "";
}

std::string SaveProof::TryAgain(const SaveCase& save, const Place& place) {
  SaveCase next = save;
  next.fault = {};
  // What a first save made is asked about now; it is to go.
  const bool there = place.Now().contains(place.file);
  next.old = there ? OldState::Yes : OldState::Nothing;
  DiskStation station(UnitOf(save));
  station.Save(next.path, next.old, place.folder.Path(place.file), {});
  SaveCase fresh = save;
  fresh.fault = {};
  fresh.old = OldState::Yes;
  const Contents now = place.Now();
  const Contents wanted = Wanted(fresh);
  if (station.ToldOfAFailure()) return "the next save failed: " + station.Boxes();
  if (now.at(place.file) != wanted.at(place.file)) return "the next save is not whole";
  return "";
}

}  // namespace orvane::test
