#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "program/child.h"
#include "program/client.h"

namespace orvane::test {

using Arguments = std::vector<std::string>;

/// The station's program without windows.
[[nodiscard]] Arguments Orvane(const Arguments& arguments);
/// The same, from start to end.
[[nodiscard]] Child::End RunOrvane(const Arguments& arguments);
/// `--initialize` on each of these benches, all at a time: a run waits more than it works.
[[nodiscard]] std::vector<Child::End> InitializeOnEach(const std::vector<Arguments>& benches);

/// The EEPROM of a unit that went the whole road in one process with its bench, and its flash table 100.
[[nodiscard]] const std::string& EmbeddedMemory(int seed);
[[nodiscard]] const std::string& EmbeddedFlash(int seed);

/// A station with its automation port on its standard input and output, on the embedded bench if nothing else is
/// said.
class Station : public Client {
 public:
  explicit Station(const Arguments& arguments = {"--bench", "virtual"}, const std::string& folder = ".");
  [[nodiscard]] Child& Process() { return *process_; }

 private:
  explicit Station(std::unique_ptr<Child> process) : Client(*process), process_(std::move(process)) {}
  std::unique_ptr<Child> process_;
};

/// What the programs started meanwhile find in their environment.
class Variable {
 public:
  Variable(const char* name, const std::string& value);
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable();

 private:
  const char* name_;
};

/// A folder of the test's own, gone with it.
class TempFolder {
 public:
  TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  [[nodiscard]] std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

[[nodiscard]] std::string ContentOf(const std::string& path);
void Fill(const std::string& path, const std::string& content);

/// An address of the loopback network that no other test uses: ports there stay free between two benches.
[[nodiscard]] std::string OwnLoopbackAddress();

}  // namespace orvane::test
