// A parameter file as a disk might hand it out. Its texts must be those of a second reader. Short lines are repeated,
// so that few bytes can fill all positions.

#include <cstdint>

#include "require.h"
#include "rfparams/parameter_file_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  constexpr int kMorePositions = 2710;
  constexpr std::size_t kShort = 4;
  const std::string piece(data + 1, data + size);
  std::string content;
  for (int i = 0; i < (data[0] == 0xFF && size <= kShort ? kMorePositions : 1); ++i) content += piece;
  orvane::fuzz::RequireNone(orvane::test::FaultOfParameterLines(content));
  return 0;
}
