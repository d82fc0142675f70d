#include "adapters/sql/run_writer.h"

#include <unistd.h>

#include <array>
#include <climits>
#include <fstream>
#include <sstream>
#include <string>

namespace orvane {
namespace {

std::string HostName() {
  std::array<char, HOST_NAME_MAX + 1> name{};
  ::gethostname(name.data(), name.size() - 1);
  return name.data();
}

std::string FirstLineOf(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  return line;
}

/// Which processes this one sees: a container has its own.
std::string ProcessesSeen() {
  std::array<char, 64> name{};
  const ssize_t size = ::readlink("/proc/self/ns/pid", name.data(), name.size());
  return size > 0 ? std::string(name.data(), static_cast<std::size_t>(size)) : "";
}

constexpr char kBetween = ' ';

/// When a process started, in clock ticks since the host did; 0 when there is none, or one that has ended and that
/// nobody has asked for its status.
std::int64_t StartOf(std::int64_t process) {
  const std::string line = FirstLineOf("/proc/" + std::to_string(process) + "/stat");
  // Source: proc(5), /proc/PID/stat: the start is the 22nd field. The second, the name, may have anything in it and
  // ends with the last parenthesis.
  const auto name = line.rfind(')');
  if (name == std::string::npos) return 0;
  std::istringstream fields(line.substr(name + 1));
  std::string state;
  fields >> state;
  if (state == "Z" || state == "X") return 0;
  constexpr int kBetweenStateAndStart = 18;
  std::string skipped;
  for (int i = 0; i < kBetweenStateAndStart; ++i) fields >> skipped;
  std::int64_t start = 0;
  fields >> start;
  return start;
}

}  // namespace

WriterMark CurrentWriter() {
  const std::int64_t process = ::getpid();
  return {HostName(), FirstLineOf("/proc/sys/kernel/random/boot_id") + kBetween + ProcessesSeen(), process,
          StartOf(process)};
}

bool WriterMayLive(const WriterMark& writer) {
  const WriterMark here = CurrentWriter();
  if (writer.host != here.host) return true;
  const auto bootOf = [](const WriterMark& mark) { return mark.boot.substr(0, mark.boot.find(kBetween)); };
  if (bootOf(writer) != bootOf(here)) return false;
  if (writer.boot != here.boot) return true;
  return StartOf(writer.process) == writer.started;
}

}  // namespace orvane
