#pragma once

#include <sys/types.h>

#include <string>

#include "bench/wires/terminal_pair.h"

namespace orvane::test {

/// A Target that answers every command with success after about the time that its bytes take on a line, in a process
/// of its own.
class PlayedTarget {
 public:
  PlayedTarget();
  PlayedTarget(const PlayedTarget&) = delete;
  PlayedTarget& operator=(const PlayedTarget&) = delete;
  ~PlayedTarget();

  [[nodiscard]] const std::string& Device() const { return line_.Path(); }

 private:
  bench::TerminalPair line_;
  pid_t process_;
};

}  // namespace orvane::test
