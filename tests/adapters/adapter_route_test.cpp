// The route through a `++` adapter: what goes over its wire, and how replies come back.

#include <algorithm>
#include <chrono>
#include <thread>

#include "adapters/adapter_bus.h"

namespace orvane::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

TEST(AdapterRoute, SetsTheAdapterUpOnceAndKeepsItsMemoryFromWearing) {
  ScriptedAdapter adapter(Replies({"maker,model\r\n", "+1\n"}));
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 5, 0});
  EXPECT_EQ(adapter.Clients(), 0) << "configuring a session touches nothing";
  EXPECT_EQ(Ask(*session, "*IDN?", 10s), "maker,model\r\n");
  EXPECT_EQ(Ask(*session, "VOLT?", 10s), "+1\n");
  const Lines lines = adapter.Lines();
  ASSERT_GT(lines.size(), 12U);
  EXPECT_THAT(Lines(lines.begin(), lines.begin() + 7),
              ElementsAre("++savecfg 0", "++mode 1", "++auto 0", "++eoi 1", "++eos 3", "++eot_enable 0", "++ifc"));
  EXPECT_THAT(BehindGreeting(lines), ElementsAre("++addr 5", "*IDN?", "++read_tmo_ms 3000", "++ver", "++read eoi",
                                                 "VOLT?", "++ver", "++read eoi"));
}

TEST(AdapterRoute, AllInstrumentsShareOneConnection) {
  ScriptedAdapter adapter(Replies({"1\n", "2\n", "3\n"}));
  auto bus = BusOn(RouteTo(adapter));
  const auto first = bus.Open({0, 1, 0});
  const auto second = bus.Open({0, 2, 96});
  EXPECT_EQ(Ask(*first, "A?"), "1\n");
  EXPECT_EQ(Ask(*second, "B?"), "2\n");
  EXPECT_EQ(Ask(*first, "C?"), "3\n");
  EXPECT_EQ(adapter.Clients(), 1);
  EXPECT_THAT(BehindGreeting(adapter.Lines()),
              ElementsAre("++addr 1", "A?", "++read_tmo_ms 3000", "++ver", "++read eoi", "++addr 2 96", "B?", "++ver",
                          "++read eoi", "++addr 1", "C?", "++ver", "++read eoi"));
}

TEST(AdapterRoute, EscapesWhatTheAdapterWouldTakeForItsOwn) {
  ScriptedAdapter adapter(Replies({"\n"}));
  auto bus = BusOn(RouteTo(adapter));
  (void)Ask(*bus.Open({0, 1, 0}), "++a\r\n\x1b+b");
  EXPECT_THAT(adapter.Lines(), Contains("\x1b+\x1b+a\x1b\r\x1b\n\x1b\x1b\x1b+b"));
}

TEST(AdapterRoute, ReadsForAsLongAsTheTimeOutWithinTheAdaptersBounds) {
  const std::pair<TimePoint, const char*> rows[] = {{10us, "++read_tmo_ms 1"},
                                                    {30ms, "++read_tmo_ms 30"},
                                                    {300ms, "++read_tmo_ms 300"},
                                                    {3s, "++read_tmo_ms 3000"},
                                                    {1000s, "++read_tmo_ms 3000"}};
  for (const auto& [timeOut, line] : rows) {
    ScriptedAdapter adapter(Replies({"1\n"}));
    auto bus = BusOn(RouteTo(adapter));
    const auto session = bus.Open({0, 1, 0});
    session->Write("A?", 5s);
    (void)ErrorOf([&] { (void)session->Read(1000, timeOut); });
    EXPECT_TRUE(adapter.Hears(line));
  }
}

TEST(AdapterRoute, AnInstrumentSlowerThanTheAdapterReadsIsAskedAgainAfterTheAdapterHasEndedItsRead) {
  int reads = 0;
  ScriptedAdapter adapter([&](ScriptedAdapter& self, const std::string& line) {
    if (line == "++read eoi" && ++reads == 2) self.Send("slow\n");
    return false;
  });
  auto bus = BusOn(RouteTo(adapter));
  EXPECT_EQ(Ask(*bus.Open({0, 1, 0}), "A?", 20s), "slow\n");
  EXPECT_THAT(BehindGreeting(adapter.Lines()),
              ElementsAre("++addr 1", "A?", "++read_tmo_ms 3000", "++ver", "++read eoi", "++ver", "++read eoi"));
}

/// How a reply may come, and what it is.
struct Reply {
  const char* why;
  std::vector<std::string> pieces;
  std::string read;
};

TEST(AdapterRoute, AReplyIsWholeAtItsLineFeed) {
  const Reply rows[] = {
      {"at once", {"+1.5\n"}, "+1.5\n"},
      {"in pieces", {"+", "1", ".", "5", "\r", "\n"}, "+1.5\r\n"},
      {"empty", {"\n"}, "\n"},
      {"with surplus bytes", {"+1.5\n+9.9\n"}, "+1.5\n"},
      {"with the beginning of a line", {"+1", ".5\n+9"}, "+1.5\n"},
  };
  for (const Reply& row : rows) {
    SCOPED_TRACE(row.why);
    int reads = 0;
    ScriptedAdapter adapter([&](ScriptedAdapter& self, const std::string& line) {
      if (line != "++read eoi") return false;
      if (++reads > 1) self.Send("next\n");
      for (std::size_t i = 0; i < row.pieces.size() && reads == 1; ++i) {
        self.Send(row.pieces[i]);
        std::this_thread::sleep_for(1ms);
      }
      return true;
    });
    auto bus = BusOn(RouteTo(adapter));
    const auto session = bus.Open({0, 1, 0});
    EXPECT_EQ(Ask(*session, "A?"), row.read);
    EXPECT_EQ(Ask(*session, "B?"), "next\n") << "nothing is left of the first";
  }
}

TEST(AdapterRoute, AReplyWithoutALineFeedIsNone) {
  ScriptedAdapter adapter(Replies({"+1.5"}));
  auto bus = BusOn(RouteTo(adapter));
  ExpectError(ErrorOf([&] {
                (void)Ask(*bus.Open({0, 1, 0}), "A?", 100ms);
              }),
              kErrTimo, kEabo, "no line end behind the reply's first bytes");
}

TEST(AdapterRoute, ReadsNoMoreThanTheReadSizeAndTheRestOnlyUpToTheNextMessage) {
  ScriptedAdapter adapter(Replies({"abcdefgh\n", "next\n"}));
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 1, 0});
  session->Write("A?", 5s);
  EXPECT_EQ(session->Read(3, 5s), "abc");
  EXPECT_EQ(session->Read(3, 5s), "def");
  session->Write("B?", 5s);
  EXPECT_EQ(session->Read(1000, 5s), "next\n");
}

TEST(AdapterRoute, WhatTheAdapterSaysUnaskedIsNoReply) {
  ScriptedAdapter adapter([](ScriptedAdapter& self, const std::string& line) {
    if (line == "++read eoi") {
      self.Send("reply\n");
    } else if (line.starts_with("++") && !line.starts_with("++addr") && line != "++ver") {
      self.Send("Unrecognized command\r\n");
    }
    return false;
  });
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 1, 0});
  EXPECT_EQ(Ask(*session, "A?"), "reply\n");
  EXPECT_EQ(Ask(*session, "B?"), "reply\n");
}

TEST(AdapterRoute, ReleaseReturnsTheInstrumentToLocalAndTheLastOneClosesTheConnection) {
  ScriptedAdapter adapter(Replies({"1\n", "2\n"}));
  auto bus = BusOn(RouteTo(adapter));
  auto first = bus.Open({0, 1, 0});
  auto second = bus.Open({0, 2, 0});
  (void)Ask(*first, "A?");
  first->Local();
  (void)Ask(*second, "B?");
  EXPECT_EQ(adapter.Clients(), 1);
  second->Local();
  EXPECT_TRUE(adapter.IsAlone());
  EXPECT_THAT(BehindGreeting(adapter.Lines()),
              ElementsAre("++addr 1", "A?", "++read_tmo_ms 3000", "++ver", "++read eoi", "++loc", "++addr 2", "B?",
                          "++ver", "++read eoi", "++loc"));
}

TEST(AdapterRoute, ThereIsOneBoardAndNoAddressBeyondTheBuss) {
  ScriptedAdapter adapter;
  auto bus = BusOn(RouteTo(adapter));
  const std::pair<GpibAddress, const char*> rows[] = {{{1, 5, 0}, "there is no board 1."},
                                                      {{0, 31, 0}, "primary addresses are 0 to 30."},
                                                      {{0, 5, 95}, "secondary addresses are 96 to 126."},
                                                      {{0, 5, 127}, "secondary addresses are 96 to 126."}};
  for (const auto& [address, what] : rows) {
    const auto session = bus.Open(address);
    ExpectError(ErrorOf([&] { session->Write("*IDN?", 1s); }), kErr, kEnol, what);
  }
  EXPECT_EQ(adapter.Clients(), 0);
}

TEST(AdapterRoute, AnAdapterThatIsSlowToStartIsGreetedAgainAndNothingIsLeftOfThat) {
  ScriptedAdapter adapter([pause = 1300ms](ScriptedAdapter& self, const std::string& line) mutable {
    if (line == "++savecfg 0") std::this_thread::sleep_for(std::exchange(pause, 50ms));
    if (line == "++read eoi") self.Send("reply\n");
    return false;
  });
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 5, 0});
  EXPECT_EQ(Ask(*session, "A?"), "reply\n");
  const Lines lines = adapter.Lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "++savecfg 0"), 2);
}

}  // namespace
}  // namespace orvane::test
