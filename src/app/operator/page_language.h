#pragma once

#include <optional>

#include "app/command_line.h"

namespace orvane {

/// The language of the operator's page from now on: what is wished, or else the desktop's where there is one of it,
/// or else English.
void Speak(std::optional<Language> wished);

}  // namespace orvane
