// A command line as an operator might type it. What goes out must be a sound frame, or nothing, and the same once
// more.

#include "link/wire_check.h"
#include "require.h"
#include "standing_rig.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane;
  const std::string line(data, data + size);
  test::LinkRig& rig = fuzz::StandingRig();
  fuzz::RequireNone(test::FaultOfLine(rig, line));
  const auto writes = rig.serial.writes;
  fuzz::RequireNone(test::FaultOfLine(rig, line));
  fuzz::Require(rig.serial.writes == writes, "another frame from the same line");
  return 0;
}
