#include "program/programs.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace orvane::test {
namespace {

Arguments Joined(Arguments first, const Arguments& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

struct Unit {
  std::string memory;
  std::string flash;
};

const Unit& EmbeddedUnit(int seed) {
  static std::map<int, Unit> units;
  Unit& unit = units[seed];
  if (unit.memory.empty()) {
    const TempFolder folder;
    const auto end = RunOrvane(
        {"--initialize", "--bench", "virtual:seed=" + std::to_string(seed) + ",store=" + folder.Path().string()});
    if (end.status != 0) throw std::runtime_error("no whole road: " + end.output + end.errors);
    unit = {ContentOf(folder / "eeprom.bin"), ContentOf(folder / "flash100.txt")};
  }
  return unit;
}

}  // namespace

Arguments Orvane(const Arguments& arguments) { return Joined({ORVANE_PROGRAM, "--headless"}, arguments); }

Child::End RunOrvane(const Arguments& arguments) { return Child(Orvane(arguments)).WaitForEnd(); }

std::vector<Child::End> InitializeOnEach(const std::vector<Arguments>& benches) {
  std::vector<std::unique_ptr<Child>> stations;
  for (const Arguments& bench : benches) {
    stations.push_back(std::make_unique<Child>(Orvane(Joined({"--initialize"}, bench))));
  }
  std::vector<Child::End> ends;
  for (const auto& station : stations) ends.push_back(station->WaitForEnd());
  return ends;
}

const std::string& EmbeddedMemory(int seed) { return EmbeddedUnit(seed).memory; }
const std::string& EmbeddedFlash(int seed) { return EmbeddedUnit(seed).flash; }

Station::Station(const Arguments& arguments, const std::string& folder)
    : Station(std::make_unique<Child>(Orvane(Joined({"--automation", "stdio"}, arguments)),
                                      Surroundings{folder, false})) {}

Variable::Variable(const char* name, const std::string& value) : name_(name) { ::setenv(name, value.c_str(), 1); }

Variable::~Variable() { ::unsetenv(name_); }

TempFolder::TempFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "orvane-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder " + name);
  path_ = name;
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string ContentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Fill(const std::string& path, const std::string& content) { std::ofstream(path, std::ios::binary) << content; }

std::string OwnLoopbackAddress() {
  const auto process = static_cast<unsigned>(::getpid());
  return "127." + std::to_string(1 + process / 65536 % 250) + "." + std::to_string(process / 256 % 256) + "." +
         std::to_string(process % 256);
}

}  // namespace orvane::test
