#pragma once

#include <string>

#include "base/numbers.h"

namespace orvane {

/// Station-wide values of the test-set session.
struct TestSetState {
  /// The selected test set's name at the last Initialize; decides the dialect.
  std::string TestSetKind;
  bool TestSetReady = false;
  Integer GpibBoardNumber = 0;
  Integer GpibPrimaryAddress = 0;
  Integer GpibSecondaryAddress = 0;
  Integer GpibReadSize = 0;
  /// Data of the last completion event; nothing reads it.
  std::string TestSetEventText;
};

}  // namespace orvane
