#pragma once

#include <QString>
#include <string_view>

namespace orvane {

/// What a box of the station means and what to do about it, in the language of the page.
struct BoxAdvice {
  QString means;
  QString toDo;
};

/// By the box's own text. One that is not known gets an advice that fits all.
[[nodiscard]] BoxAdvice AdviceOn(std::string_view text);
/// Whether it has one of its own.
[[nodiscard]] bool HasAdvice(std::string_view text);

}  // namespace orvane
