// The process that switches the bench off, with a test in the station's place.

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <chrono>
#include <optional>
#include <thread>

#include "adapters/loopback_instrument.h"
#include "program/wired_bench.h"
#include "safe_off/off_words.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

Arguments SafeOffFor(const std::string& supply, const std::string& load) {
  return {SAFE_OFF_PROGRAM, "--gpib", "native", "--instrument", "2=tcp:" + supply, "--instrument", "5=tcp:" + load};
}

/// One that nobody ever answers at.
std::string Nobody() { return OwnLoopbackAddress() + ":1"; }

TEST(OffProcess, DoesItWhenItIsToldAndAnswersUnderTheOrdersNumber) {
  WiredBench bench;
  bench.Say("supply", "OUTPUT ON");
  Child process(SafeOffFor(bench.Place("supply"), bench.Place("load")));
  process.Send("off 17");
  EXPECT_EQ(process.NextLine(), "17\t\t");
  EXPECT_EQ(bench.Ask("supply", "OUTPUT?"), "0");
  EXPECT_EQ(bench.Ask("load", "INPUT?"), "0");
  process.Send("farewell");
  const auto end = process.WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.errors, "");
}

TEST(OffProcess, DoesItWhenItsPipeEndsWithoutAWord) {
  WiredBench bench;
  bench.Say("supply", "OUTPUT ON");
  Child process(SafeOffFor(bench.Place("supply"), bench.Place("load")));
  process.CloseInput();
  const auto end = process.WaitForEnd();
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(bench.Ask("supply", "OUTPUT?"), "0");
  EXPECT_EQ(bench.Ask("load", "INPUT?"), "0");
}

TEST(OffProcess, LeavesTheBenchAloneBehindAFarewell) {
  WiredBench bench;
  bench.Say("supply", "OUTPUT ON");
  Child process(SafeOffFor(bench.Place("supply"), bench.Place("load")));
  process.Send("farewell");
  EXPECT_EQ(process.WaitForEnd().status, 0);
  EXPECT_EQ(bench.Ask("supply", "OUTPUT?"), "1");
}

TEST(OffProcess, SpeaksToThePlacesThatItWasToldLast) {
  WiredBench bench;
  bench.Say("supply", "OUTPUT ON");
  Child process({SAFE_OFF_PROGRAM, "--gpib", "native", "--instrument", "9=tcp:" + bench.Place("supply")});
  process.Send("places 0 3 0 0 4 0");
  process.Send("no word of this");
  process.Send("places 0 9 0 none");
  process.Send("off 1");
  EXPECT_EQ(process.NextLine(), "1\t\t") << "there is no load";
  EXPECT_EQ(bench.Ask("supply", "OUTPUT?"), "0");
}

TEST(OffProcess, TellsWhatIsNotSureOnStandardErrorWhenThereIsNobodyElse) {
  WiredBench bench;
  Child process(SafeOffFor(Nobody(), bench.Place("load")));
  process.CloseInput();
  const auto end = process.WaitForEnd();
  EXPECT_EQ(end.status, 1);
  EXPECT_EQ(
      end.errors,
      "orvane-safe-off: The supply's output could not be made sure to be off: no connection: Connection refused. "
      "Switch it off by hand.\n");
  EXPECT_EQ(bench.Ask("load", "INPUT?"), "0") << "which has a way of its own";
}

/// An instrument that answers each question in the same way.
class Stubborn {
 public:
  explicit Stubborn(std::string answer)
      : thread_([this, answer = std::move(answer)] {
          instrument_.Accept();
          for (std::string line = instrument_.Received(); !line.empty(); line = instrument_.Received()) {
            if (line.find('?') != std::string::npos) instrument_.Reply(answer);
          }
        }) {}
  Stubborn(const Stubborn&) = delete;
  Stubborn& operator=(const Stubborn&) = delete;
  ~Stubborn() { thread_.join(); }
  [[nodiscard]] std::string Place() const { return "127.0.0.1:" + std::to_string(instrument_.Port()); }

 private:
  Instrument instrument_;
  std::thread thread_;
};

TEST(OffProcess, AnOutputThatStaysOnIsTold) {
  WiredBench bench;
  const Stubborn supply("1\n");
  Child process(SafeOffFor(supply.Place(), bench.Place("load")));
  process.Send("off 1");
  EXPECT_EQ(process.NextLine(), "1\tit answers \"1\".\t");
}

TEST(OffProcess, ASilentInstrumentOnABusLeavesTheOtherItsTime) {
  for (const char* way : {"adapter", "vxi11"}) {
    SCOPED_TRACE(way);
    WiredBench bench({"--fault", "supply-silent"});
    const bool adapter = std::string(way) == "adapter";
    Child process({SAFE_OFF_PROGRAM, "--gpib", (adapter ? "prologix:" : "vxi11:") + bench.Place(way)});
    process.Send("off 1");
    const auto answer = OffAnswerOf(process.NextLine().value_or(""));
    ASSERT_TRUE(answer);
    EXPECT_THAT(answer->outcome.supply, HasSubstr("no reply within "));
    EXPECT_EQ(answer->outcome.load, "");
    EXPECT_EQ(bench.Ask("load", "INPUT?"), "0");
  }
}

TEST(OffProcess, DoesItOverEachRoute) {
  WiredBench bench;
  const Arguments routes[] = {{"--gpib", "prologix:" + bench.Place("adapter")},
                              {"--gpib", "prologix:" + bench.Place("adapter-tty")},
                              {"--gpib", "vxi11:" + bench.Place("vxi11")},
                              {"--instrument", "2=vxi11:" + bench.Place("vxi11") + ",gpib0,2", "--instrument",
                               "5=tcp:" + bench.Place("load")}};
  for (const Arguments& route : routes) {
    SCOPED_TRACE(route[1]);
    bench.Say("supply", "OUTPUT ON");
    bench.Say("load", "INPUT ON");
    Arguments command = route;
    command.insert(command.begin(), SAFE_OFF_PROGRAM);
    Child process(command);
    process.CloseInput();
    const auto end = process.WaitForEnd();
    EXPECT_EQ(end.status, 0) << end.errors;
    EXPECT_EQ(bench.Ask("supply", "OUTPUT?"), "0");
    EXPECT_EQ(bench.Ask("load", "INPUT?"), "0");
  }
}

TEST(OffProcess, IsNotEndedByWhatEndsAStation) {
  WiredBench bench;
  bench.Say("supply", "OUTPUT ON");
  Child process(SafeOffFor(bench.Place("supply"), bench.Place("load")));
  process.Send("places 0 2 0 none");
  process.Send("off 1");
  ASSERT_EQ(process.NextLine(), "1\t\t") << "it is up";
  bench.Say("supply", "OUTPUT ON");
  process.Terminate();
  process.Send("off 2");
  EXPECT_EQ(process.NextLine(), "2\t\t");
  EXPECT_EQ(bench.Ask("supply", "OUTPUT?"), "0");
}

}  // namespace
}  // namespace orvane::test
