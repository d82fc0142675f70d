// What comes of a message when the `++` adapter, or the instrument behind it, fails.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "adapters/adapter_bus.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using Wire = ScriptedAdapter::Wire;

// Faults. Each is met by the first message or by the first read, ends the session, and is over with the next one.

/// What the adapter does to one line, or instead of it, and how that fails.
struct Fault {
  const char* name;
  TimePoint writeWithin;
  TimePoint readWithin;
  ScriptedAdapter::Script script;
  int ibsta;
  int iberr;
  const char* what;
};

ScriptedAdapter::Script At(const std::string& when, std::function<void(ScriptedAdapter&)> act) {
  return [when, act = std::move(act)](ScriptedAdapter& self, const std::string& line) {
    if (line == when) act(self);
    return line == when;
  };
}

std::vector<Fault> Faults() {
  const auto silent = [](ScriptedAdapter&, const std::string&) { return true; };
  const auto noise = [](ScriptedAdapter& self, const std::string&) {
    self.Send("login: ");
    return true;
  };
  const auto flood = [](ScriptedAdapter& self, const std::string&) {
    self.Send(std::string(200'000, '?'));
    return true;
  };
  const auto endless = [asked = false](ScriptedAdapter& self, const std::string& line) mutable {
    asked = asked || line == "A?";
    if (!asked || line != "++ver") return false;
    self.Send(std::string(3'000'000, 'x'));
    return true;
  };
  return {
      {"half-open", 150ms, 5s, silent, kErrTimo, kEabo, "the adapter did not answer its ++ commands within 150 ms."},
      {"noAdapter", 150ms, 5s, noise, kErrTimo, kEabo,
       "did not answer its ++ commands, but sent other bytes, within 150 ms."},
      {"flood", 5s, 5s, flood, kErr, kEnol, "what answers there is no ++ adapter."},
      {"refuses", 5s, 5s, At("++savecfg 0", &ScriptedAdapter::HangUp), kErr, kEnol,
       "the adapter closed the connection"},
      {"noReply", 5s, 500ms, {}, kErrTimo, kEabo, "no reply within 500 ms."},
      {"noEnd", 5s, 500ms, At("++read eoi", [](auto& self) { self.Send("+1.5"); }), kErrTimo, kEabo,
       "no line end behind the reply's first bytes within 500 ms."},
      {"tooLong", 5s, 5s, At("++read eoi", [](auto& self) { self.Send(std::string(3'000'000, 'x')); }), kErr, kEnol,
       "the reply has no end, more than 1 MiB came."},
      {"endless", 5s, 5s, endless, kErr, kEnol, "the adapter sends without an end."},
      {"closesInMidReply", 5s, 5s,
       At("++read eoi",
          [](auto& self) {
            self.Send("+1.5");
            self.HangUp();
          }),
       kErr, kEnol, "the adapter closed the connection in the middle of its reply."},
      {"closes", 5s, 5s, At("++read eoi", &ScriptedAdapter::HangUp), kErr, kEnol,
       "the adapter closed the connection"},
  };
}

TEST(AdapterFault, IsNumberedAndToldInTimeAndOverWithTheNextSession) {
  for (const Fault& fault : Faults()) {
    SCOPED_TRACE(fault.name);
    std::atomic<bool> faulty = true;
    ScriptedAdapter adapter([&](ScriptedAdapter& self, const std::string& line) {
      if (faulty) return fault.script && fault.script(self, line);
      if (line == "++read eoi") self.Send("good\n");
      return false;
    });
    auto bus = BusOn(RouteTo(adapter));
    auto session = bus.Open({0, 5, 0});
    const auto start = std::chrono::steady_clock::now();
    const auto error = ErrorOf([&] {
      session->Write("A?", fault.writeWithin);
      (void)session->Read(1000, fault.readWithin);
    });
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
    ExpectError(error, fault.ibsta, fault.iberr, fault.what);
    EXPECT_THAT(
        error->what(),
        HasSubstr("Instrument at address 5, route prologix:127.0.0.1:" + std::to_string(adapter.Port()) + ": "));
    EXPECT_TRUE(adapter.IsAlone()) << "the route is free again";
    ExpectError(ErrorOf([&] { session->Write("B?", 150ms); }), kErr, kEnol, "Initialize the instrument again.");
    faulty = false;
    session = bus.Open({0, 5, 0});
    EXPECT_EQ(Ask(*session, "C?"), "good\n");
  }
}

TEST(AdapterFault, ADeadAdapterIsNoticedInSecondsAlsoWithoutATimeOut) {
  ScriptedAdapter adapter([](ScriptedAdapter&, const std::string&) { return true; });
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 5, 0});
  ExpectError(ErrorOf([&] { session->Write("*IDN?", GpibTimeOutOf(0)); }), kErrTimo, kEabo,
              "the adapter did not answer its ++ commands within 4 s.");
}

TEST(AdapterFault, AnAdapterThatDiesIsNoticedInSecondsAlsoWithoutATimeOut) {
  std::atomic<bool> dead = false;
  ScriptedAdapter adapter([&](ScriptedAdapter&, const std::string&) { return dead.load(); });
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 5, 0});
  session->Write("A?", 5s);
  dead = adapter.Hears("A?");
  ExpectError(ErrorOf([&] { (void)session->Read(1000, GpibTimeOutOf(0)); }), kErrTimo, kEabo,
              "the adapter did not answer within 4 s.");
}

TEST(AdapterFault, AnAdapterThatIsAbsentRefuses) {
  std::optional<ScriptedAdapter> adapter(std::in_place);
  const BusRoute route = RouteTo(*adapter);
  adapter.reset();
  auto bus = BusOn(route);
  const auto session = bus.Open({0, 5, 0});
  ExpectError(ErrorOf([&] { session->Write("*IDN?", 1s); }), kErr, kEnol, "no connection: Connection refused.");
}

TEST(AdapterFault, AnAdapterThatLeavesBetweenMessagesIsConnectedToAnew) {
  ScriptedAdapter adapter([](ScriptedAdapter& self, const std::string& line) {
    if (line == "++read eoi") self.Send("reply\n");
    if (line == "LEAVE") self.HangUp();
    return false;
  });
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 5, 0});
  EXPECT_EQ(Ask(*session, "A?"), "reply\n");
  session->Write("LEAVE", 5s);
  EXPECT_TRUE(adapter.IsAlone());
  EXPECT_EQ(Ask(*session, "B?"), "reply\n");
  EXPECT_EQ(adapter.Clients(), 2);
  const Lines lines = adapter.Lines();
  const auto again = std::find(lines.begin(), lines.end(), "B?");
  EXPECT_EQ(*(again - 1), "++addr 5") << "a new connection begins at another address";
  EXPECT_EQ(
      std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.starts_with("++read_tmo_ms"); }),
      2)
      << "and with a time-out of its own";
}

TEST(AdapterFault, OfOneInstrumentIsNoneOfAnother) {
  // The instrument at address 5 never has a reply.
  ScriptedAdapter adapter([address = std::string()](ScriptedAdapter& self, const std::string& line) mutable {
    if (line.starts_with("++addr ")) address = line.substr(7);
    if (line == "++read eoi" && address != "5") self.Send("reply of " + address + "\n");
    return false;
  });
  auto bus = BusOn(RouteTo(adapter));
  const auto silent = bus.Open({0, 5, 0});
  const auto other = bus.Open({0, 2, 0});
  EXPECT_EQ(Ask(*other, "A?"), "reply of 2\n");
  ExpectError(ErrorOf([&] { (void)Ask(*silent, "B?", 50ms); }), kErrTimo, kEabo, "within 50 ms.");
  EXPECT_EQ(Ask(*other, "C?"), "reply of 2\n");
}

class LateReply : public testing::TestWithParam<Wire> {};
INSTANTIATE_TEST_SUITE_P(Wires, LateReply, testing::Values(Wire::kTcp, Wire::kTerminal));

/// An adapter that still waits for the instrument hears nothing; then the reply comes, and all that was asked
/// meanwhile is answered behind it.
TEST_P(LateReply, IsNeverTakenForTheNextOnes) {
  constexpr auto kLateBy = 300ms;
  for (const char* late : {"late\n\x03", "7\n", "late without an end"}) {
    SCOPED_TRACE(late);
    int reads = 0;
    ScriptedAdapter adapter(
        [&](ScriptedAdapter& self, const std::string& line) {
          if (line != "++read eoi") return false;
          if (++reads == 1) {
            std::this_thread::sleep_for(kLateBy);
            self.Send(late);
          } else {
            self.Send("reply " + std::to_string(reads) + "\n");
          }
          return true;
        },
        GetParam());
    auto bus = BusOn(RouteTo(adapter));
    auto session = bus.Open({0, 5, 0});
    ExpectError(ErrorOf([&] { (void)Ask(*session, "FIRST?", 100ms); }), kErrTimo, kEabo, "within 100 ms.");
    adapter.Greet(late);
    session = bus.Open({0, 5, 0});
    EXPECT_EQ(Ask(*session, "SECOND?"), "reply 2\n");
    EXPECT_EQ(Ask(*session, "THIRD?"), "reply 3\n");
  }
}

TEST_P(LateReply, IsClearedOutOfItsInstrumentAheadOfTheNextMessage) {
  int reads = 0;
  ScriptedAdapter adapter(
      [&](ScriptedAdapter& self, const std::string& line) {
        if (line == "++read eoi" && ++reads > 1) self.Send("reply\n");
        return false;
      },
      GetParam());
  auto bus = BusOn(RouteTo(adapter));
  auto session = bus.Open({0, 5, 0});
  EXPECT_TRUE(ErrorOf([&] { (void)Ask(*session, "FIRST?", 30ms); }));
  EXPECT_EQ(Ask(*bus.Open({0, 2, 0}), "OTHER?"), "reply\n");
  session = bus.Open({0, 5, 0});
  EXPECT_EQ(Ask(*session, "SECOND?"), "reply\n");
  EXPECT_EQ(Ask(*session, "THIRD?"), "reply\n");
  const Lines lines = adapter.Lines();
  ASSERT_EQ(std::count(lines.begin(), lines.end(), "++clr"), 1);
  const auto clear = std::find(lines.begin(), lines.end(), "++clr");
  EXPECT_EQ(*(clear - 1), "++addr 5");
  EXPECT_EQ(*(clear + 1), "SECOND?");
}

}  // namespace
}  // namespace orvane::test
