#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace orvane {

/// A failure with its whole text, which may hold any character: what comes from a file, a wire or a client stands in
/// it as it is, and `what()` ends at the first NUL.
class TextFailure : public std::runtime_error {
 public:
  explicit TextFailure(std::string text) : std::runtime_error(text), text_(std::move(text)) {}
  [[nodiscard]] const std::string& Text() const noexcept { return text_; }

 private:
  std::string text_;
};

/// A failure that ends the operation it strikes: text that is no number, an overflow, an index out of range, a
/// missing object, a control that cannot do its work. It is caught where the operator's act began
/// (platform/operation_nest.h) and shown in a box; nothing between throws it away but `PassOver`.
class StationFailure : public TextFailure {
  using TextFailure::TextFailure;
};

/// Runs one statement that may fail; a failure skips it, is told to `told`, and the next statement runs.
/// @return whether the statement ran to its end.
template <class Statement, class Told>
bool PassOver(Statement&& statement, Told&& told) {
  try {
    std::forward<Statement>(statement)();
    return true;
  } catch (const StationFailure& failure) {
    std::forward<Told>(told)(failure);
    return false;
  }
}

template <class Statement>
bool PassOver(Statement&& statement) {
  return PassOver(std::forward<Statement>(statement), [](const StationFailure&) {});
}

}  // namespace orvane
