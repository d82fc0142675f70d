// A record as bytes, behind what shows that they are whole. What is a record must have the same bytes when it is
// written again; there is no second way to say the same, and nothing is set aside for a length that is not there.

#include "records/record_bytes.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  RunRecord record;
  if (fuzz::Done<DamagedRecord>([&] { record = RunRecordOf(bytes); })) {
    fuzz::Require(BytesOf(record) == bytes, "other bytes from their own record");
  }
  return 0;
}
