// The values of a parameter file as the record takes them: a sound file whose lines are exchanged one by one. The
// image must be made of whatever was converted, and a record that was converted whole must come back from its own
// file.

#include <cstdint>
#include <vector>

#include "portion.h"
#include "require.h"
#include "rfparams/parameter_file_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kLines = 1857;
  // Each position its own value: any that is passed over or exchanged shows, whatever the input changes.
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < kLines; ++i) lines.push_back("l\t=\t" + std::to_string(i));
  lines[0] = "l\t=\tRF_PASCAL_20";
  orvane::fuzz::Portions portions(data, size);
  while (!portions.Empty()) {
    const std::size_t position = portions.Byte() + 256U * portions.Byte();
    lines[position % kLines] = portions.Until('\n');
  }
  std::string content;
  for (const std::string& line : lines) content.append(line).append("\r\n");
  orvane::fuzz::RequireNone(orvane::test::FaultOfParameterFile(content));
  return 0;
}
