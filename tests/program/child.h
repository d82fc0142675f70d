#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace orvane::test {

/// A program of its own, with its standard input and outputs on pipes. It is killed when it outlives its holder.
class Child {
 public:
  explicit Child(std::vector<std::string> command);
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child();

  void Send(const std::string& line) const;
  void CloseInput();
  /// The next line of its standard output; no value at the end of the output, or after 30 seconds without one.
  [[nodiscard]] std::optional<std::string> NextLine();
  /// The rest of both outputs, when it has ended.
  struct End {
    int status = -1;
    std::string output;
    std::string errors;
  };
  [[nodiscard]] End WaitForEnd();

 private:
  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
  int errors_ = -1;
  std::string received_;
};

}  // namespace orvane::test
