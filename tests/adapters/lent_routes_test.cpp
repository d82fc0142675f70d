// What a route does with an instrument that is lent to others between two operations: its lock, and that it lets go.

#include <gmock/gmock.h>

#include "adapters/adapter_bus.h"
#include "adapters/loopback_instrument.h"
#include "adapters/vxi11_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t kLock = 18;
constexpr std::uint32_t kUnlock = 19;
constexpr std::uint32_t kLockedByAnother = 11;
constexpr std::uint32_t kNotSupported = 8;

/// Answers that many calls as the gateway of link 7 does, and notes which they were.
void Serve(GatewayConnection& client, std::vector<std::uint32_t>& procedures, std::vector<Words> results) {
  for (const Words& result : results) {
    const auto call = client.NextCall();
    if (!call) return;
    procedures.push_back(call->at(kProcedure));
    client.Answer(result);
  }
}

const Words kLink{0, 7, 0, kPieces};
const Words kDone{0};
const Words kFiveBytes{0, 5};

TEST_F(Vxi11, ALentInstrumentIsLockedAheadOfItsClearAndLetGoWithItsLink) {
  std::vector<std::uint32_t> first;
  std::vector<std::uint32_t> second;
  Play({[&](GatewayConnection& client) {
          Serve(client, first, {kLink, kDone, kDone, kFiveBytes, kDone, kDone});
          client.AwaitHangUp();
        },
        [&](GatewayConnection& client) {
          Serve(client, second, {kLink, kDone, kDone, kFiveBytes});
        }});
  const auto session = Open();
  EXPECT_TRUE(session->TryLock());
  session->Write("*IDN?", 1s);
  session->Unlock();
  EXPECT_TRUE(session->TryLock());
  session->Write("*IDN?", 1s);
  gateway_->Join();
  EXPECT_THAT(first, ElementsAre(kCreateLink, kLock, kClear, kWrite, kUnlock, kDestroyLink));
  EXPECT_THAT(second, ElementsAre(kCreateLink, kLock, kClear, kWrite));
}

TEST_F(Vxi11, ALockThatAnotherHasIsAskedForAgainAndNeverWaitedFor) {
  std::vector<std::uint32_t> procedures;
  Words asked;
  Play({[&](GatewayConnection& client) {
    Serve(client, procedures, {kLink});
    if (const auto call = client.NextCall()) asked = ArgumentsOf(*call);
    client.Answer({kLockedByAnother});
    Serve(client, procedures, {{kLockedByAnother}, kDone});
  }});
  const auto session = Open();
  EXPECT_FALSE(session->TryLock());
  EXPECT_FALSE(session->TryLock());
  EXPECT_TRUE(session->TryLock());
  gateway_->Join();
  EXPECT_THAT(asked, ElementsAre(7U, 0U, 0U)) << "link, no flag to wait, no time-out";
  EXPECT_THAT(procedures, ElementsAre(kCreateLink, kLock, kLock)) << "nothing was cleared";
}

TEST_F(Vxi11, AServerWithoutLocksLeavesThemToTheStations) {
  std::vector<std::uint32_t> procedures;
  Play({[&](GatewayConnection& client) { Serve(client, procedures, {kLink, {kNotSupported}}); }});
  EXPECT_TRUE(Open()->TryLock());
}

TEST_F(Vxi11, ALockThatFailsIsTheInstrumentsFailure) {
  std::vector<std::uint32_t> procedures;
  Play({[&](GatewayConnection& client) { Serve(client, procedures, {kLink, {4}}); }});
  const auto session = Open();
  ExpectAbsent([&] { (void)session->TryLock(); }, "the gateway reports error 4, the link is gone.");
}

TEST(LentRoutes, ARawSocketIsLetGoAndNothingThatLayThereIsTakenForAnAnswer) {
  Instrument instrument;
  GpibRoutes routes;
  routes.instruments[5] = TcpRoute{"127.0.0.1", instrument.Port()};
  RoutedGpibBus bus(routes);
  const auto session = bus.Open({0, 5, 0});
  EXPECT_TRUE(session->TryLock());
  session->Write("A?", 5s);
  instrument.Accept();
  instrument.Reply("1 and more\n");
  EXPECT_EQ(session->Read(1, 5s), "1");
  session->Unlock();
  EXPECT_EQ(instrument.Received(), "A?\n");
  EXPECT_EQ(instrument.Received(), "") << "it has hung up";

  session->Write("B?", 5s);
  instrument.Accept();
  instrument.Reply("2\n");
  EXPECT_EQ(session->Read(10, 5s), "2\n");
}

TEST(LentRoutes, AnAdapterIsLetGoBehindTheLastOfItsSessions) {
  ScriptedAdapter adapter(Replies({"1\n", "2\n", "3\n"}));
  auto bus = BusOn(RouteTo(adapter));
  const auto first = bus.Open({0, 1, 0});
  const auto second = bus.Open({0, 2, 0});
  EXPECT_EQ(Ask(*first, "A?"), "1\n");
  first->Unlock();
  EXPECT_EQ(Ask(*second, "B?"), "2\n");
  EXPECT_EQ(adapter.Clients(), 1);
  second->Unlock();
  EXPECT_TRUE(first->TryLock());
  EXPECT_EQ(Ask(*first, "C?"), "3\n");
  EXPECT_EQ(adapter.Clients(), 2) << "a connection of its own";
}

}  // namespace
}  // namespace orvane::test
