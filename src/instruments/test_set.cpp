#include "instruments/test_set.h"

#include "base/text.h"

namespace orvane {

void TestSet::WriteShown(std::string_view text) {
  Write(text);
  console_.Append(std::string(text).append(kLineEnd));
}

bool IsEmptyReading(std::string_view reply) { return TrimBlanksAndLineEnds(reply).empty(); }

}  // namespace orvane
