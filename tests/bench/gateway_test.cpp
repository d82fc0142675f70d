#include <gtest/gtest.h>

#include "bench/bench.h"
#include "bench/wires/gateway_core.h"

/// The gateway's core channel, without a wire: arguments and results as they stand in a call.
namespace orvane::bench::test {
namespace {

using Words = std::vector<std::uint32_t>;

// Procedures and flags, by the protocol's documents.
constexpr std::uint32_t kCreateLink = 10;
constexpr std::uint32_t kWrite = 11;
constexpr std::uint32_t kRead = 12;
constexpr std::uint32_t kReadStatus = 13;
constexpr std::uint32_t kTrigger = 14;
constexpr std::uint32_t kClear = 15;
constexpr std::uint32_t kRemote = 16;
constexpr std::uint32_t kLocal = 17;
constexpr std::uint32_t kLock = 18;
constexpr std::uint32_t kUnlock = 19;
constexpr std::uint32_t kEnableSrq = 20;
constexpr std::uint32_t kDocmd = 22;
constexpr std::uint32_t kDestroyLink = 23;
constexpr std::uint32_t kCreateIntrChan = 25;
constexpr std::uint32_t kDestroyIntrChan = 26;
constexpr std::uint32_t kWait = 0x01;
constexpr std::uint32_t kEnd = 0x08;
constexpr std::uint32_t kTermChar = 0x80;
constexpr std::uint32_t kLong = 60000;

std::string BytesOf(const Words& words) {
  std::string bytes;
  for (const std::uint32_t word : words) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) bytes += static_cast<char>(word >> shift & 0xFFU);
  }
  return bytes;
}

std::string Opaque(const std::string& data) {
  return BytesOf({static_cast<std::uint32_t>(data.size())}) + data + std::string((4 - data.size() % 4) % 4, '\0');
}

/// What came of a call: result words, and data behind them; or that it waits.
struct Outcome {
  bool waits = false;
  Words words;
  std::string data;
};

class GatewayTest : public testing::Test {
 protected:
  explicit GatewayTest(const std::vector<std::string>& faults = {})
      : bench_([&] {
          BenchOptions options;
          for (const std::string& fault : faults) SetBenchOption(options, "fault=" + fault);
          return options;
        }()) {
    core_.SetAbortPort(4711);
  }

  RpcOutcome Call(std::uint32_t procedure, const std::string& arguments, int caller = 1,
                  Reactor::Time arrived = Reactor::Now()) {
    return core_.Answer({procedure, arguments, caller, arrived});
  }
  /// @param words of the result ahead of its data
  Outcome Ask(std::uint32_t procedure, const std::string& arguments, std::size_t words = 1, int caller = 1,
              Reactor::Time arrived = Reactor::Now()) {
    const RpcOutcome outcome = Call(procedure, arguments, caller, arrived);
    if (std::holds_alternative<RpcLater>(outcome)) return {true, {}, {}};
    const std::string bytes = std::get<RpcResult>(outcome).bytes;
    Outcome answer;
    for (std::size_t i = 0; i < words * 4; i += 4) {
      std::uint32_t word = 0;
      for (std::size_t k = i; k < i + 4; ++k) word = word << 8U | static_cast<std::uint8_t>(bytes.at(k));
      answer.words.push_back(word);
    }
    if (bytes.size() > words * 4) {
      answer.data = bytes.substr(words * 4 + 4, static_cast<std::uint8_t>(bytes.at(words * 4 + 3)));
    }
    return answer;
  }
  std::uint32_t Error(std::uint32_t procedure, const std::string& arguments) {
    const Outcome outcome = Ask(procedure, arguments);
    return outcome.waits ? 99999 : outcome.words[0];
  }
  std::uint32_t Link(const std::string& device, int caller = 1) {
    const Outcome link = Ask(kCreateLink, BytesOf({0, 0, 0}) + Opaque(device), 4, caller);
    EXPECT_EQ(link.words[0], 0U) << device;
    EXPECT_EQ(link.words[2], 4711U);
    EXPECT_GE(link.words[3], 1024U);
    return link.words[1];
  }
  std::uint32_t Write(std::uint32_t link, const std::string& data, std::uint32_t flags = kEnd) {
    return Error(kWrite, BytesOf({link, kLong, 0, flags}) + Opaque(data));
  }
  Outcome Read(std::uint32_t link, std::uint32_t size = 1000, std::uint32_t flags = 0, char termChar = 0) {
    return Ask(kRead, BytesOf({link, size, kLong, 0, flags, static_cast<std::uint32_t>(termChar)}), 2);
  }
  static std::string Generic(std::uint32_t link, std::uint32_t flags = 0, std::uint32_t lockMs = 0) {
    return BytesOf({link, flags, lockMs, kLong});
  }

  Bench bench_;
  GatewayCore core_{
      {{{"gpib0,1", "inst0"}, bench_.testSet}, {{"gpib0,2"}, bench_.supply}, {{"gpib0,5"}, bench_.load}}};
};

TEST_F(GatewayTest, EachNameIsAnInstrumentAndAnyOtherIsNotAccessible) {
  const std::pair<const char*, const char*> rows[] = {
      {"gpib0,1", "TEST SET"}, {"inst0", "TEST SET"}, {"gpib0,2", "SUPPLY"}, {"gpib0,5", "LOAD"}};
  for (const auto& [device, name] : rows) {
    const std::uint32_t link = Link(device);
    EXPECT_EQ(Write(link, "*IDN?"), 0U);
    EXPECT_EQ(Read(link).data, std::string("ORVANE,VIRTUAL ") + name + ",0,1.0\n");
  }
  for (const char* device : {"gpib0,9", "inst1", "GPIB0,1", ""}) {
    EXPECT_EQ(Ask(kCreateLink, BytesOf({0, 0, 0}) + Opaque(device), 4).words[0], 3U) << device;
  }
}

TEST_F(GatewayTest, AMessageWaitsForItsEnd) {
  const std::uint32_t link = Link("gpib0,2");
  EXPECT_EQ(Write(link, "VOLT 3", 0), 0U);
  EXPECT_EQ(Write(link, ".5;VO", 0), 0U);
  EXPECT_EQ(bench_.supply.Counters().commands, 0);
  EXPECT_EQ(Write(link, "LT?\n"), 0U);
  EXPECT_EQ(bench_.supply.Counters().commands, 1);
  EXPECT_EQ(Read(link).data, "+3.50000E+000\n");
}

TEST_F(GatewayTest, AReadSaysWhyItHasEnded) {
  const std::uint32_t link = Link("gpib0,2");
  Write(link, "VOLT 3;VOLT?;OUTP?");
  struct Row {
    std::uint32_t size;
    std::uint32_t flags;
    char termChar;
    const char* data;
    std::uint32_t reason;
  };
  const Row rows[] = {
      {3, 0, 0, "+3.", 1},                  // the size
      {100, kTermChar, '+', "00000E+", 2},  // the character
      {3, kTermChar, '0', "0", 2},          // the character, within the size
      {1, kTermChar, '0', "0", 3},          // both
      {100, kTermChar, '!', "0;0\n", 4},    // the end, with no such character
  };
  for (const Row& row : rows) {
    const Outcome read = Read(link, row.size, row.flags, row.termChar);
    EXPECT_EQ(read.words, (Words{0, row.reason})) << row.data;
    EXPECT_EQ(read.data, row.data);
  }
}

TEST_F(GatewayTest, AnAnswerThatNobodyReadIsInterruptedByTheNextMessage) {
  const std::uint32_t link = Link("gpib0,2");
  Write(link, "*IDN?");
  EXPECT_EQ(Read(link, 5).data, "ORVAN");
  Write(link, "SYST:ERR?");
  EXPECT_EQ(Read(link).data, "-410,\"Query INTERRUPTED\"\n");
}

TEST_F(GatewayTest, TheStatusByteTellsAWaitingAnswerAndAClearDropsIt) {
  const std::uint32_t link = Link("gpib0,5");
  EXPECT_EQ(Ask(kReadStatus, Generic(link), 2).words, (Words{0, 0}));
  Write(link, "*IDN?");
  EXPECT_EQ(Ask(kReadStatus, Generic(link), 2).words, (Words{0, 16}));
  Write(link, "RES", 0);
  EXPECT_EQ(Error(kClear, Generic(link)), 0U);
  EXPECT_EQ(Ask(kReadStatus, Generic(link), 2).words, (Words{0, 0}));
  Write(link, "SYST:ERR?");
  EXPECT_EQ(Read(link).data, "+0,\"No error\"\n") << "neither the answer nor the begun message is left";
}

TEST_F(GatewayTest, ALockKeepsOtherLinksOutAsLongAsItIsHeld) {
  const std::uint32_t holder = Link("gpib0,2");
  const std::uint32_t other = Link("gpib0,2", 2);
  const std::uint32_t elsewhere = Link("gpib0,5", 2);
  EXPECT_EQ(Error(kUnlock, BytesOf({holder})), 12U) << "nothing to unlock";
  EXPECT_EQ(Error(kLock, BytesOf({holder, 0, 0})), 0U);
  EXPECT_EQ(Error(kLock, BytesOf({holder, 0, 0})), 11U) << "held already";
  EXPECT_EQ(Error(kLock, BytesOf({other, 0, 0})), 11U);
  EXPECT_EQ(Error(kUnlock, BytesOf({other})), 12U) << "somebody else's";
  EXPECT_EQ(Write(other, "VOLT 3"), 11U);
  EXPECT_EQ(Read(other).words[0], 11U);
  for (const std::uint32_t procedure : {kReadStatus, kClear, kRemote, kLocal}) {
    EXPECT_EQ(Error(procedure, Generic(other)), 11U) << procedure;
  }
  EXPECT_EQ(Ask(kCreateLink, BytesOf({0, 1, 0}) + Opaque("gpib0,2"), 4).words[0], 11U) << "a link with a lock";
  EXPECT_EQ(Write(holder, "VOLT 3"), 0U);
  EXPECT_EQ(Write(elsewhere, "RES 3"), 0U);
  EXPECT_EQ(Error(kUnlock, BytesOf({holder})), 0U);
  EXPECT_EQ(Write(other, "VOLT 3"), 0U);
}

TEST_F(GatewayTest, WhoeverMayWaitForALockGetsItWhenItIsFree) {
  for (const char* end : {"unlock", "destroy", "hang up"}) {
    const std::uint32_t holder = Link("gpib0,2", 1);
    const std::uint32_t other = Link("gpib0,2", 2);
    Error(kLock, BytesOf({holder, 0, 0}));
    EXPECT_TRUE(Ask(kLock, BytesOf({other, kWait, kLong})).waits) << end;
    const Reactor::Time longAgo = Reactor::Now() - std::chrono::milliseconds(kLong);
    EXPECT_EQ(Ask(kLock, BytesOf({other, kWait, kLong}), 1, 2, longAgo).words[0], 11U) << "the time is over";
    if (end == std::string("unlock")) Error(kUnlock, BytesOf({holder}));
    if (end == std::string("destroy")) Error(kDestroyLink, BytesOf({holder}));
    core_.Gone(1);
    EXPECT_EQ(Error(kLock, BytesOf({other, kWait, kLong})), 0U) << end;
    core_.Gone(2);
  }
}

TEST_F(GatewayTest, ALinkMayBeMadeWithItsLock) {
  const Outcome locked = Ask(kCreateLink, BytesOf({0, 1, 0}) + Opaque("gpib0,2"), 4);
  EXPECT_EQ(locked.words[0], 0U);
  const std::uint32_t other = Link("gpib0,2");
  EXPECT_EQ(Write(other, "VOLT 3"), 11U);
  EXPECT_TRUE(Ask(kCreateLink, BytesOf({0, 1, kLong}) + Opaque("gpib0,2"), 4).waits);
  EXPECT_EQ(Error(kDestroyLink, BytesOf({locked.words[1]})), 0U);
  EXPECT_EQ(Write(other, "VOLT 3"), 0U);
}

TEST_F(GatewayTest, AReadWaitsForAnAnswerUpToItsTimeOut) {
  const std::uint32_t link = Link("gpib0,2");
  const std::string read = BytesOf({link, 1000, kLong, 0, 0, 0});
  EXPECT_TRUE(Ask(kRead, read, 2).waits);
  EXPECT_EQ(Ask(kRead, read, 2, 1, Reactor::Now() - std::chrono::milliseconds(kLong)).words[0], 15U);
  Write(Link("gpib0,2"), "*IDN?");
  EXPECT_EQ(Ask(kRead, read, 2).words[0], 0U) << "whoever asked for it";
}

TEST_F(GatewayTest, AnAbortEndsWhatItsLinkWaitsInAndNothingElse) {
  const std::uint32_t link = Link("gpib0,2");
  bool told = false;
  GatewayAbort abort(core_, [&] { told = true; });
  const auto aborted = [&](std::uint32_t which) {
    return std::get<RpcResult>(abort.Answer({1, BytesOf({which}), 9, {}})).bytes;
  };
  EXPECT_EQ(aborted(link), BytesOf({0}));
  const std::string read = BytesOf({link, 1000, kLong, 0, 0, 0});
  EXPECT_TRUE(Ask(kRead, read, 2).waits) << "nothing was under way";
  EXPECT_EQ(aborted(link), BytesOf({0}));
  EXPECT_TRUE(told);
  EXPECT_EQ(Ask(kRead, read, 2).words[0], 23U);
  EXPECT_TRUE(Ask(kRead, read, 2).waits);
  EXPECT_EQ(aborted(link + 1), BytesOf({4}));
  EXPECT_TRUE(std::holds_alternative<RpcNoSuchProcedure>(abort.Answer({2, {}, 9, {}})));
}

TEST_F(GatewayTest, WhatTheInstrumentsDoNotHaveIsNotSupported) {
  const std::uint32_t link = Link("gpib0,2");
  EXPECT_EQ(Error(kTrigger, Generic(link)), 8U);
  EXPECT_EQ(Error(kEnableSrq, BytesOf({link, 1}) + Opaque("handle")), 8U);
  EXPECT_EQ(Error(kDocmd, BytesOf({link, 0, kLong, 0, 1, 0, 1}) + Opaque("")), 8U);
  EXPECT_EQ(Error(kCreateIntrChan, BytesOf({0x7F000001, 4000, 0x0607B1, 1, 0})), 8U);
  EXPECT_EQ(Error(kDestroyIntrChan, {}), 6U);
  EXPECT_EQ(Error(kRemote, Generic(link)), 0U);
  EXPECT_EQ(Error(kLocal, Generic(link)), 0U);
}

TEST_F(GatewayTest, ALinkThatIsNoneIsTold) {
  const std::uint32_t link = Link("gpib0,2");
  EXPECT_EQ(Error(kDestroyLink, BytesOf({link})), 0U);
  EXPECT_EQ(Write(link, "VOLT 3"), 4U);
  EXPECT_EQ(Read(link).words[0], 4U);
  for (const std::uint32_t procedure : {kReadStatus, kClear, kRemote, kLocal}) {
    EXPECT_EQ(Error(procedure, Generic(link)), 4U) << procedure;
  }
  EXPECT_EQ(Error(kLock, BytesOf({link, 0, 0})), 4U);
  EXPECT_EQ(Error(kUnlock, BytesOf({link})), 4U);
  EXPECT_EQ(Error(kDestroyLink, BytesOf({link})), 4U);
}

TEST_F(GatewayTest, ArgumentsAndProceduresThatAreNoneAreTold) {
  EXPECT_TRUE(std::holds_alternative<RpcNoSuchProcedure>(Call(21, {})));
  EXPECT_TRUE(std::holds_alternative<RpcBadArguments>(Call(kCreateLink, BytesOf({0, 0, 0, 0xFFFFFFFF}))));
  EXPECT_TRUE(std::holds_alternative<RpcBadArguments>(Call(kWrite, BytesOf({1, 0, 0, 8, 5}) + "abc")));
  EXPECT_TRUE(std::holds_alternative<RpcBadArguments>(Call(kUnlock, "abc")));
}

TEST_F(GatewayTest, AMessageWithoutEndIsRefusedBeforeItFillsTheMemory) {
  const std::uint32_t link = Link("gpib0,2");
  std::uint32_t error = 0;
  for (int i = 0; i < 100 && error == 0; ++i) error = Write(link, std::string(4096, 'x'), 0);
  EXPECT_EQ(error, 9U);
}

class GatewayWithFaults : public GatewayTest {
 protected:
  GatewayWithFaults() : GatewayTest({"supply-absent@2", "load-absent"}) {}
};

TEST_F(GatewayWithFaults, AnInstrumentThatIsGoneIsAnErrorOfItsLink) {
  EXPECT_EQ(Ask(kCreateLink, BytesOf({0, 0, 0}) + Opaque("gpib0,5"), 4).words[0], 3U);
  const std::uint32_t link = Link("gpib0,2");
  EXPECT_EQ(Write(link, "VOLT 3"), 0U);
  EXPECT_EQ(Write(link, "VOLT 3"), 17U);
  EXPECT_EQ(Read(link).words[0], 17U);
  for (const std::uint32_t procedure : {kReadStatus, kClear, kRemote, kLocal}) {
    EXPECT_EQ(Error(procedure, Generic(link)), 17U) << procedure;
  }
}

}  // namespace
}  // namespace orvane::bench::test
