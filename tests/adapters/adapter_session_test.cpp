// The route through a `++` adapter: what goes over its wire, and what comes of it when the adapter fails.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <optional>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/scripted_adapter.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr int kErr = 0x8000;
constexpr int kErrTimo = 0xC000;
constexpr int kEnol = 2;
constexpr int kEabo = 6;

using Lines = std::vector<std::string>;
using Wire = ScriptedAdapter::Wire;

/// Answers the first read with the first reply, and so on; what is over it does not answer.
ScriptedAdapter::Script Replies(std::vector<std::string> replies) {
  return [replies, next = std::size_t{0}](ScriptedAdapter& self, const std::string& line) mutable {
    if (line == "++read eoi" && next < replies.size()) self.Send(replies[next++]);
    return false;
  };
}

BusRoute RouteTo(const ScriptedAdapter& adapter) {
  if (adapter.Port() == 0) return PrologixSerialRoute{adapter.Device()};
  return PrologixTcpRoute{"127.0.0.1", adapter.Port()};
}

RoutedGpibBus BusOn(const BusRoute& route) { return RoutedGpibBus(GpibRoutes{route, {}}); }

std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
  try {
    message();
  } catch (const GpibError& error) {
    return error;
  }
  return std::nullopt;
}

void ExpectError(const std::optional<GpibError>& error, int ibsta, int iberr, const std::string& what) {
  ASSERT_TRUE(error.has_value()) << "no failure, but not: " << what;
  EXPECT_EQ(error->ibsta, ibsta);
  EXPECT_EQ(error->iberr, iberr);
  EXPECT_THAT(error->what(), HasSubstr(what));
}

std::string Ask(GpibSession& session, const std::string& question, TimePoint readWithin = 5s) {
  session.Write(question, 5s);
  return session.Read(1000, readWithin);
}

/// The lines behind the greeting, whose last one is `++ver`.
Lines BehindGreeting(const Lines& lines) {
  const auto greeting = std::find(lines.begin(), lines.end(), "++ver");
  return greeting == lines.end() ? Lines{} : Lines(greeting + 1, lines.end());
}

TEST(AdapterRoute, SetsTheAdapterUpOnceAndKeepsItsMemoryFromWearing) {
  ScriptedAdapter adapter(Replies({"maker,model\r\n", "+1\n"}));
  auto bus = BusOn(RouteTo(adapter));
  const auto session = bus.Open({0, 5, 0});
  EXPECT_EQ(adapter.Clients(), 0) << "configuring a session touches nothing";
  EXPECT_EQ(Ask(*session, "*IDN?", 10s), "maker,model\r\n");
  EXPECT_EQ(Ask(*session, "VOLT?", 10s), "+1\n");
  const Lines lines = adapter.Lines();
  ASSERT_GT(lines.size(), 13U);
  EXPECT_THAT(Lines(lines.begin(), lines.begin() + 8),
              ElementsAre("++savecfg 0", "++mode 1", "++auto 0", "++eoi 1", "++eos 3", "++eot_char 3",
                          "++eot_enable 1", "++ifc"));
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
  const std::pair<TimePoint, const char*> rows[] = {{30ms, "++read_tmo_ms 30"},
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
    if (line == "++read eoi" && ++reads == 2) self.Send("slow\n\x03");
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

TEST(AdapterRoute, AReplyIsWholeAtItsLineFeedOrItsEnd) {
  const Reply rows[] = {
      {"with its end marked", {"+1.5\r\n\x03"}, "+1.5\r\n"},
      {"by an adapter that marks no end", {"+1.5\n"}, "+1.5\n"},
      {"ended by EOI alone", {"+1.5\x03"}, "+1.5"},
      {"in pieces", {"+", "1", ".", "5", "\r", "\n", "\x03"}, "+1.5\r\n"},
      {"empty", {"\x03"}, ""},
      {"of several lines", {"1\n2\n\x03"}, "1\n2\n"},
  };
  for (const Reply& row : rows) {
    SCOPED_TRACE(row.why);
    int reads = 0;
    ScriptedAdapter adapter([&](ScriptedAdapter& self, const std::string& line) {
      if (line != "++read eoi") return false;
      if (++reads > 1) self.Send("next\n\x03");
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

TEST(AdapterRoute, ReadsNoMoreThanTheReadSizeAndTheRestOnlyUpToTheNextMessage) {
  ScriptedAdapter adapter(Replies({"abcdefgh\n\x03", "next\n\x03"}));
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
  return {
      {"half-open", 150ms, 5s, silent, kErrTimo, kEabo, "the adapter did not answer its ++ commands within 150 ms."},
      {"noAdapter", 150ms, 5s, noise, kErrTimo, kEabo,
       "did not answer its ++ commands, but sent other bytes, within 150 ms."},
      {"flood", 5s, 5s, flood, kErr, kEnol, "what answers there is no ++ adapter."},
      {"refuses", 5s, 5s, At("++savecfg 0", &ScriptedAdapter::HangUp), kErr, kEnol,
       "the adapter closed the connection"},
      {"noReply", 5s, 500ms, {}, kErrTimo, kEabo, "no reply within 500 ms."},
      {"noEnd", 5s, 500ms, At("++read eoi", [](auto& self) { self.Send("+1.5"); }), kErrTimo, kEabo,
       "no end behind the reply's first bytes within 500 ms."},
      {"tooLong", 5s, 5s, At("++read eoi", [](auto& self) { self.Send(std::string(3'000'000, 'x')); }), kErr, kEnol,
       "the reply has no end, more than 1 MiB came."},
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
    const auto error = ErrorOf([&] {
      session->Write("A?", fault.writeWithin);
      (void)session->Read(1000, fault.readWithin);
    });
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
            self.Send("reply " + std::to_string(reads) + "\n\x03");
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

std::string SerialFailure(const std::string& device) {
  auto bus = BusOn(PrologixSerialRoute{device});
  const auto session = bus.Open({0, 1, 0});
  const auto error = ErrorOf([&] { session->Write("*IDN?", 1s); });
  EXPECT_EQ(error ? error->iberr : 0, kEnol);
  const std::string prefix = "Instrument at address 1, route prologix:" + device + ": ";
  const std::string text = error ? error->what() : "";
  EXPECT_TRUE(text.starts_with(prefix)) << text;
  return text.substr(std::min(prefix.size(), text.size()));
}

TEST(AdapterDevice, ThatIsNoneOrInUseIsToldWithTheCause) {
  EXPECT_EQ(SerialFailure("/dev/no-such-device"), "there is no such device.");
  EXPECT_EQ(SerialFailure("/dev/null"), "the device is no serial line.");
  EXPECT_EQ(SerialFailure("/dev"), "Is a directory.");
  const Pty line;
  const int other = ::open(line.Device().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
  EXPECT_EQ(SerialFailure(line.Device()), "the device is in use by another program.");
  ::close(other);
}

TEST(AdapterDevice, ThatIsPulledOutIsGone) {
  ScriptedAdapter adapter(At("++read eoi", &ScriptedAdapter::HangUp), Wire::kTerminal);
  auto bus = BusOn(RouteTo(adapter));
  auto session = bus.Open({0, 1, 0});
  ExpectError(ErrorOf([&] { (void)Ask(*session, "A?"); }), kErr, kEnol, "the device is gone");
  session = bus.Open({0, 1, 0});
  ExpectError(ErrorOf([&] { (void)Ask(*session, "A?"); }), kErr, kEnol, "there is no such device.");
}

}  // namespace
}  // namespace orvane::test
