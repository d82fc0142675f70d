#pragma once

#include <filesystem>

#include "app/command_line.h"

namespace orvane {

/// The operator's page in each of its states, after runs on a virtual bench in virtual time.
void TakeOperatorsPages(const std::filesystem::path& folder, Theme theme, Language language);

}  // namespace orvane
