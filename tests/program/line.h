#pragma once

#include <optional>
#include <string>

namespace orvane::test {

/// Lines to another program and back.
class Line {
 public:
  Line() = default;
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;
  virtual ~Line() = default;

  virtual void Send(const std::string& line) = 0;
  /// The next line without its end; no value when the other side has ended, or says nothing for two minutes.
  [[nodiscard]] virtual std::optional<std::string> NextLine() = 0;
};

}  // namespace orvane::test
