#pragma once

#include <string>

#include "app/records/doors.h"
#include "app/records/orders.h"

namespace orvane {

/// Copies the finished records of a store that the other one has not, the oldest first. With `follow` it goes on
/// until it is asked to end; a store that cannot be reached is told once then, and tried again.
/// @return the exit status. @throws StoreFault.
[[nodiscard]] int Forward(const ForwardOrder& order, const std::string& fromName, RecordsDoors& doors);

}  // namespace orvane
