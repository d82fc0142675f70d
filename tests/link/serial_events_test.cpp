#include "link/link_rig.h"

namespace orvane::test {
namespace {

struct EventText {
  int code;
  std::string event;
  std::string error;
};

class SerialEvents : public testing::TestWithParam<EventText> {};

TEST_P(SerialEvents, AreKeptInWords) {
  LinkRig rig;
  rig.link.OnComm(GetParam().code);
  EXPECT_EQ(rig.state.CommEventText, GetParam().event);
  EXPECT_EQ(rig.state.CommErrorText, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, SerialEvents,
    testing::Values(EventText{1, "", ""}, EventText{3, "CTS Change Indicated", ""},
                    EventText{4, "DSR Change Indicated", ""}, EventText{5, "CD Change Indicated", ""},
                    EventText{6, "Ringing", ""}, EventText{7, "EOF Indicated", ""},
                    EventText{1001, "", "Stop Signal Received"}, EventText{1002, "", "CTS time over"},
                    EventText{1003, "", "DSR time over"}, EventText{1004, "", "frame error"},
                    EventText{1005, "", "Undefined Error"}, EventText{1006, "", "parity error"},
                    EventText{1007, "", "Carrier Wave Indicate time over"},
                    EventText{1008, "", "Receive buffer error"}, EventText{1009, "", "parity error"},
                    EventText{1010, "", "Transmit buffer is full"}, EventText{1011, "", "DCB search error"},
                    EventText{0, "", "Undefined Error"}, EventText{8, "", "Undefined Error"}));

TEST(SerialEvents, NoErrorStopsAnExchange) {
  LinkRig rig;
  rig.loop.PostAt(std::chrono::milliseconds(1), [&] { rig.link.OnComm(1004); });
  rig.Later(std::chrono::milliseconds(2), "02 14 00 20 00 00 00 20 02");
  rig.link.RunTargetCommand("ti");
  EXPECT_EQ(rig.link.Status(), 0);
  EXPECT_EQ(DoubtsBetween({}, rig.tally), "Exchanges with the Target: 1 with an error of the line");
}

TEST(SerialEvents, AChangeOfAModemLineIsNoError) {
  LinkRig rig;
  rig.link.OnComm(3);
  EXPECT_EQ(DoubtsBetween({}, rig.tally), "");
}

TEST(SerialEvents, AReceiveEventWithoutBytesIsNothing) {
  LinkRig rig;
  rig.link.BuildAndSendFrame(32, 0, {}, 32);
  rig.link.OnComm(kCommReceive);
  EXPECT_EQ(rig.loop.Now(), TimePoint{0});
  EXPECT_EQ(rig.state.ReplySpin, 0);
}

}  // namespace
}  // namespace orvane::test
