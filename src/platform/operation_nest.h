#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "platform/boxes.h"

namespace orvane {

class Control;

/// A failure inside an event that was served within another operation's wait: it ends everything down to the
/// outermost operation. No PassOver stops it.
class NestStopped : public TextFailure {
  using TextFailure::TextFailure;
};

/// The station ends, from wherever it stands.
class StationEnded : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "The station ended."; }
};

/// The operations on the stack of the one thread. Every event that may start an operation (an operator's act, a
/// serial event, a request of the automation port) runs in here, and a failure that nothing caught ends here: the
/// station's link is put to rest, the failure is told, and one box shows it.
class OperationNest {
 public:
  explicit OperationNest(Boxes& boxes) : boxes_(boxes) {}

  /// Runs an operation. As the outermost one: shows a failure's box and returns its text; no value when it ran to
  /// its end. Inside another one: lets the failure end that one too, as NestStopped.
  std::optional<std::string> Run(const std::function<void()>& operation);

  /// Shows in a box why an act is refused, and gives that text back. Nothing that is under way is touched by it.
  std::string Refuse(const std::string& why);

  [[nodiscard]] bool Idle() const { return depth_ == 0; }

  /// Why an operator may not press this button now; no value where he may.
  std::function<std::optional<std::string>(const Control& button)> refusal;
  /// Ahead of each act of an operator: on which control or panel, how ("click", "type", ...), and with what.
  std::function<void(const std::string& where, std::string_view how, std::string_view value)> onAct;
  /// Run around each act of an operator, whoever else's operations it stands in.
  std::function<void()> beforeHand;
  std::function<void()> behindHand;
  /// Runs behind each outermost operation, ahead of the box of a failure that ended it.
  std::function<void()> onIdle;
  /// Runs when a failure has stopped everything, before its box: puts the link to rest.
  std::vector<std::function<void()>> onStopped;
  /// Tells front ends of the failure, with its text, before its box.
  std::vector<std::function<void(const std::string& text)>> onFailure;

 private:
  [[nodiscard]] std::optional<std::string> RunGuarded(const std::function<void()>& operation);

  Boxes& boxes_;
  int depth_ = 0;
};

}  // namespace orvane
