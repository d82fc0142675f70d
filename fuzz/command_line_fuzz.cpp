// A command line as an operator might type it. What goes out must be a sound frame, or nothing.

#include <cstdio>
#include <cstdlib>

#include "link/wire_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvane::test::LinkRig rig;
  const std::string fault = orvane::test::FaultOfLine(rig, std::string(data, data + size));
  if (fault.empty()) return 0;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}
