#include <chrono>

#include "adapters/native_gpib_rig.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using NativeGpibTest = NativeGpibRig;

TEST_F(NativeGpibTest, WritesTheTextAsItIsWithEoiAndReadsOneMessage) {
  const auto session = bus_.Open({0, 1, 0});
  session->Write("*IDN?", 10s);
  EXPECT_EQ(session->Read(1000, 10s), "*IDN?\n");
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 1 0 13 1 0", "ibwrt 1 *IDN?", "ibrd 1 1000"));
}

TEST_F(NativeGpibTest, ConfiguringCallsNothingAndAReleaseGoesBackToLocalAndClosesTheDevice) {
  const auto session = bus_.Open({0, 2, 0});
  EXPECT_THAT(Calls(), IsEmpty());
  session->Local();
  EXPECT_THAT(Calls(), IsEmpty());
  session->Write("VOLT 4.5", 1s);
  EXPECT_EQ(OpenDevices(), 1);
  session->Local();
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 2 0 11 1 0", "ibwrt 2 VOLT 4.5", "ibloc 2", "ibonl 2 0"));
  EXPECT_EQ(OpenDevices(), 0);
}

TEST_F(NativeGpibTest, ADeviceIsClosedWithItsSessionAndAfterAFailedFarewell) {
  bus_.Open({0, 2, 0})->Write("VOLT 4.5", 1s);
  EXPECT_EQ(OpenDevices(), 0);
  StandInWith("ibloc@1=8000:2");
  const auto session = bus_.Open({0, 2, 0});
  session->Write("VOLT 4.5", 1s);
  ExpectError(ErrorOf([&] { session->Local(); }), kErr, kEnol,
              "Instrument at address 2, route native: not back to local (ibloc: ibsta &H8100, iberr 2 (nobody "
              "listens)).");
  EXPECT_EQ(OpenDevices(), 0);
}

TEST_F(NativeGpibTest, TheSecondaryAddressGoesToTheLibraryAsItIs) {
  bus_.Open({0, 9, 96})->Write("A", 1s);
  bus_.Open({0, 9, 126})->Write("A", 1s);
  EXPECT_THAT(Calls(), testing::IsSupersetOf({"ibdev 0 9 96 11 1 0", "ibdev 0 9 126 11 1 0"}));
}

TEST_F(NativeGpibTest, EveryTimeOutHasTheLibrarysOwnCode) {
  for (Integer code = 0; code <= 15; ++code) {
    bus_.Open({0, 1, 0})->Write("A", GpibTimeOutOf(code));
    EXPECT_THAT(Calls(), testing::Contains("ibdev 0 1 0 " + std::to_string(code) + " 1 0"));
  }
}

TEST_F(NativeGpibTest, ATimeOutThatChangesIsToldTheLibraryOnce) {
  const auto session = bus_.Open({0, 1, 0});
  session->Write("A", 10s);
  session->Write("B", 300ms);
  session->Write("C", 300ms);
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 1 0 13 1 0", "ibwrt 1 A", "ibtmo 1 10", "ibwrt 1 B", "ibwrt 1 C"));
}

TEST_F(NativeGpibTest, ReadsNoMoreThanTheReadSizeAndTheRestWithTheNextRead) {
  const auto session = bus_.Open({0, 1, 0});
  session->Write("READ?", 1s);
  EXPECT_EQ(session->Read(0, 1s), "");
  EXPECT_EQ(session->Read(4, 1s), "READ");
  EXPECT_EQ(session->Read(4, 1s), "?\n");
}

TEST_F(NativeGpibTest, AReadThatStopsShortOfTheMessagesEndIsGoneOnWith) {
  StandInWith("ibrd@1=cut:3 ibrd@2=cut:1");
  const auto session = bus_.Open({0, 1, 0});
  session->Write("ABCDEF?", 1s);
  EXPECT_EQ(session->Read(6, 1s), "ABCDEF");
  EXPECT_THAT(Calls(), testing::IsSupersetOf({"ibrd 1 6", "ibrd 1 3", "ibrd 1 2"}));
}

TEST_F(NativeGpibTest, FindsWhoListensAndSpeaksToNobody) {
  EXPECT_THAT(bus_.Listeners(0), ElementsAre(1, 2, 9));
  const auto calls = Calls();
  ASSERT_EQ(calls.size(), 33U);
  EXPECT_EQ(calls[0], "ibdev 0 1 0 11 1 0");
  EXPECT_EQ(calls[1], "ibln 1 0 -1");
  EXPECT_EQ(calls[31], "ibln 1 30 -1");
  EXPECT_EQ(calls[32], "ibonl 1 0");
}

}  // namespace
}  // namespace orvane::test
