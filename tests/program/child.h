#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "program/line.h"

namespace orvane::test {

/// Where and as whom a program runs.
struct Surroundings {
  std::string folder = ".";
  /// A superuser's program gives its rights up before it begins.
  bool ordinaryUser = false;
};

/// A program of its own, with its standard input and outputs on pipes. It is killed when it outlives its holder, or
/// the thread that started it.
class Child : public Line {
 public:
  explicit Child(std::vector<std::string> command, const Surroundings& surroundings = {});
  ~Child() override;

  void Send(const std::string& line) override;
  [[nodiscard]] std::optional<std::string> NextLine() override;
  /// Reads its standard output up to a line that holds the text. @return whether one came.
  [[nodiscard]] bool Says(const std::string& text);

  void CloseInput();
  /// As a loss of power does.
  void Kill();
  /// The same to all that runs in its group, whose leader it has to be.
  void KillGroup();
  /// As whoever shuts a machine down. It may still end in its own way.
  void Terminate();
  [[nodiscard]] bool Runs() const { return process_ > 0; }

  struct End {
    /// The exit status, or minus the signal that ended it: minus SIGKILL when it had not ended after two minutes.
    int status = 0;
    /// What was not read of its standard output before, and all of its standard error.
    std::string output;
    std::string errors;
  };
  [[nodiscard]] End WaitForEnd();

 private:
  using Clock = std::chrono::steady_clock;

  struct Stream {
    int descriptor = -1;
    std::string text;
  };
  /// Takes what comes next on either output. @return false when both have ended, or nothing came in time.
  bool Hear(Clock::time_point deadline);

  pid_t process_ = -1;
  int input_ = -1;
  Stream output_;
  Stream errors_;
};

}  // namespace orvane::test
