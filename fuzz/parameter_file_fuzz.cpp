// A parameter file as a disk might hand it out. Its texts must be those of a second reader, and a record made of it
// must come back the same from its own file. Short lines are repeated, so that few bytes can fill all positions.

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "rfparams/parameter_file_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string piece(data + 1, data + size);
  std::string content;
  for (int i = 0; i < (data[0] % 2 == 0 ? 1 : 1857); ++i) content += piece;
  const std::string fault = orvane::test::FaultOfParameterFile(content);
  if (fault.empty()) return 0;
  std::fprintf(stderr, "%s\n", fault.c_str());
  std::abort();
}
