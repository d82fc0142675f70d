#pragma once

#include <string>
#include <vector>

#include "records/record.h"

namespace orvane {

/// These runs as a JUnit report: a run is a test suite, each step of it that began a test case. A step that is not
/// complete is a failure with its reason; so is the last step of a run that failed although all its steps were
/// complete.
[[nodiscard]] std::string JunitXml(const std::vector<RunRecord>& records);

}  // namespace orvane
