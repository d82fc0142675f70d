// Bytes from the Target. The first one says in what pieces they come. Deframing must agree with a second formulation,
// and the link must be at rest when the exchange is over.

#include <cstdio>
#include <cstdlib>

#include "link/plain_deframer.h"
#include "link/wire_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane;
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  const std::string_view gathered = std::string_view(bytes).substr(0, kGatheredLimit);
  std::string fault;
  for (const ReplyLayout layout : {ReplyLayout::Padded, ReplyLayout::Plain}) {
    fault += test::DifferenceOf(Deframe(gathered, layout), test::DeframedPlainly(gathered, layout));
  }
  test::LinkRig rig;
  fault += test::FaultOfReply(rig, bytes, data[0] == 0 ? bytes.size() + 1 : data[0]);
  if (fault.empty()) return 0;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}
