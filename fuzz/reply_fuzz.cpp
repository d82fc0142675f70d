// Bytes from the Target in answer to a command. The first one says in what pieces they come. The link must be at rest
// when the exchange is over, with the status of the frame that stands there.

#include <algorithm>

#include "link/deframer.h"
#include "link/wire_check.h"
#include "require.h"
#include "standing_rig.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane;
  if (size == 0) return 0;
  // Beyond the limit a reply is refused, however much longer it is.
  const std::string bytes(data + 1, data + std::min(size, kGatheredLimit + 40));
  fuzz::RequireNone(test::FaultOfReply(fuzz::StandingRig(), bytes, data[0] == 0 ? bytes.size() + 1 : data[0]));
  return 0;
}
