#include "app/device_list.h"

#include <algorithm>

#include "adapters/adapter_bus.h"

namespace orvane::test {
namespace {

TEST(DeviceList, GivesAnAdapterThatStartsAfreshWhenItsDeviceIsOpenedTheTimeForItAndOpensItOnce) {
  int greetings = 0;
  ScriptedAdapter adapter(
      [&](ScriptedAdapter& self, const std::string& line) {
        if (line == "++savecfg 0") ++greetings;
        if (line == "++read eoi") self.Send("maker,model,0,1.0\n");
        // What it was told before it was up is lost.
        return greetings < 2;
      },
      ScriptedAdapter::Wire::kTerminal);
  Options options;
  options.gpib.bus = RouteTo(adapter);
  const std::string list = ListDevices(options).Text();
  for (const char* address : {"1", "2", "5"}) {
    EXPECT_THAT(list, testing::HasSubstr(std::string("  Instrument at address ") + address +
                                         ", route prologix:" + adapter.Device() + ": maker,model,0,1.0\n"));
  }
  const Lines lines = adapter.Lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "++savecfg 0"), 2) << "one that was lost, and one that was heard";
}

}  // namespace
}  // namespace orvane::test
