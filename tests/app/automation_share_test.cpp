// Many requests at a time: how deep they nest, what they may cost, and what stays with the client.

#include "app/port_rig.h"

namespace orvane::test {
namespace {

class BusyPort : public Port {
 protected:
  /// So many requests, as one piece of bytes.
  static std::string Flood(int count, const std::string& method, const Json& params) {
    std::string lines;
    for (int id = 1; id <= count; ++id) lines += RequestLine(id, method, params) + "\n";
    return lines;
  }
  /// An operation of so many exchanges: each waits for its reply and works on it.
  void Exchanges(int count) {
    for (int i = 0; i < count; ++i) {
      bool came = false;
      loop_.PostAt(loop_.Now() + 5ms, [&] { came = true; });
      while (!came) loop_.Yield(loop_.Now() + 1s);
      loop_.Block(1ms);
    }
  }
  [[nodiscard]] std::size_t Answered() const {
    return static_cast<std::size_t>(
        std::count_if(sent_.begin(), sent_.end(), [](const Json& message) { return message.contains("id"); }));
  }
  static const Json kRun;
  static const Json kState;
};
const Json BusyPort::kRun{{"control", "frmTest.cmdRun"}};
const Json BusyPort::kState{{"name", "TMStatus"}};

TEST_F(BusyPort, SixtyFourRequestsMayWaitInsideOneAnotherAndTheNextIsRefusedAtOnce) {
  constexpr int kMost = 64;
  constexpr int kTooMany = -32007;
  int waiting = 0;
  int deepest = 0;
  int stopped = 0;
  panel_.cmdStop.onClick = [&] { ++stopped; };
  operation_ = [&] {
    deepest = std::max(deepest, ++waiting);
    if (waiting < kMost) {
      WaitFor(1s);
    } else {
      // Nothing more may wait; what does not wait is served, the stop of a run among it.
      EXPECT_EQ(ErrorOf("click", kRun), kTooMany);
      EXPECT_EQ(ErrorOf("set", {{"control", "frmTest.txtLoss"}, {"text", "9"}}), kTooMany);
      EXPECT_EQ(ErrorOf("controls", {{"panel", "frmOther"}}), kTooMany) << "its load may wait";
      EXPECT_EQ(ErrorOf("get", {{"control", "frmTest.txtLoss"}}), 0);
      EXPECT_EQ(ErrorOf("state", kState), 0);
      EXPECT_EQ(ErrorOf("panels"), 0);
      EXPECT_EQ(ErrorOf("answer", {{"id", 7}, {"button", "OK"}}), -32004);
      EXPECT_EQ(ErrorOf("click", {{"control", "frmTest.cmdStop"}}), 0);
    }
    --waiting;
  };
  port_.Feed(Flood(900, "click", kRun));
  loop_.RunDry();
  EXPECT_EQ(deepest, kMost);
  EXPECT_EQ(stopped, 1);
  EXPECT_EQ(panel_.txtLoss.Text(), "0.5");
  EXPECT_EQ(AnswerTo(1)["result"], Json::object());
  EXPECT_EQ(ErrorOf("click", {{"control", "frmTest.cmdStop"}}), 0) << "nothing waits any more";
}

TEST_F(BusyPort, AFloodMakesAnOperationNoLongerThanAFifth) {
  constexpr int kRequests = 3000;
  constexpr TimePoint kAlone = 6ms * 200;
  stateCost_ = 1ms;
  operation_ = [&] { Exchanges(200); };
  loop_.PostAt(1ms, [&] { port_.Feed(Flood(kRequests, "state", kState)); });
  Operator(nest_).Click(panel_.cmdRun);
  EXPECT_LE(loop_.Now(), kAlone * 6 / 5);
  EXPECT_GT(Answered(), 50U) << "they have their share";
  EXPECT_LT(Answered(), 300U);
  loop_.RunDry();
  EXPECT_EQ(Answered(), kRequests);
}

TEST_F(BusyPort, AnIdleStationServesAllAtOnce) {
  stateCost_ = 1ms;
  port_.Feed(Flood(1000, "state", kState));
  loop_.Yield(1ms);
  EXPECT_EQ(Answered(), 1000U);
  EXPECT_EQ(loop_.Now(), 1s);
}

TEST_F(BusyPort, ARequestThatWaitsPaysForItsWorkAndNotForItsWait) {
  TimePoint served{0};
  panel_.chkLNA.onClick = [&] { WaitFor(10s); };
  panel_.cmdStop.onClick = [&] { served = loop_.Now(); };
  operation_ = [&] { WaitFor(30s); };
  AskLater(1s, 1, "click", {{"control", "frmTest.chkLNA"}});
  AskLater(12s, 2, "click", {{"control", "frmTest.cmdStop"}});
  Ask("click", kRun);
  EXPECT_EQ(served, 12s);
}

TEST_F(BusyPort, OneThatBlocksForLongDoesNotMakeTheNextWaitForMinutes) {
  TimePoint served{0};
  panel_.chkLNA.onClick = [&] { loop_.Block(100s); };
  panel_.cmdStop.onClick = [&] { served = loop_.Now(); };
  operation_ = [&] { WaitFor(300s); };
  AskLater(1s, 1, "click", {{"control", "frmTest.chkLNA"}});
  AskLater(1s, 2, "click", {{"control", "frmTest.cmdStop"}});
  Ask("click", kRun);
  EXPECT_EQ(served, 102s);
}

TEST_F(BusyPort, NothingIsServedWhileTheBytesOfAReplyComeInButNotForLong) {
  operation_ = [&] {
    replyComing_ = true;
    port_.Feed(Flood(1, "get", {{"control", "frmTest.txtLoss"}}));
    WaitFor(20ms);
    EXPECT_EQ(Answered(), 0U);
    replyComing_ = false;
    WaitFor(2ms);
    EXPECT_EQ(Answered(), 1U);
    replyComing_ = true;
    port_.Feed(Flood(1, "get", {{"control", "frmTest.txtLoss"}}));
    WaitFor(150ms);
    EXPECT_EQ(Answered(), 2U) << "a reply that never ends";
  };
  Operator(nest_).Click(panel_.cmdRun);
}

TEST_F(BusyPort, MoreIsTakenFromTheClientWhenAllItSentIsServed) {
  stateCost_ = 1ms;
  int rooms = 0;
  port_.onRoom = [&] { ++rooms; };
  operation_ = [&] {
    port_.Feed(Flood(100, "state", kState));
    WaitFor(500ms);
    EXPECT_EQ(rooms, 0);
    EXPECT_LT(Answered(), 100U);
    WaitFor(1s);
    EXPECT_EQ(Answered(), 100U);
    EXPECT_EQ(rooms, 1);
  };
  Operator(nest_).Click(panel_.cmdRun);
}

TEST_F(BusyPort, AClientThatEndsTheStationWithItsLastWordNeedNotBeSpared) {
  stateCost_ = 1ms;
  port_.clientEnds = [] { return true; };
  operation_ = [&] {
    port_.Feed(Flood(100, "state", kState));
    WaitFor(200ms);
    EXPECT_EQ(Answered(), 100U);
  };
  Operator(nest_).Click(panel_.cmdRun);
}

TEST_F(BusyPort, ATextGoesOutWholeWhateverStandsInIt) {
  const std::string nul("a\0b", 3);
  const Json answer = Ask("get", {{"control", nul}});
  EXPECT_EQ(answer["error"]["message"], "There is no panel \"" + nul + "\".");
  operation_ = [&] { throw StationFailure(nul + " is no number."); };
  AskLater(1ms, 1, "answer", {{"id", 1}, {"button", "OK"}});
  EXPECT_EQ(Ask("click", kRun)["error"]["message"], nul + " is no number.");
  EXPECT_EQ(Notifications("failure").at(0)["text"], nul + " is no number.");
  EXPECT_EQ(Notifications("box").at(0)["text"], nul + " is no number.");
}

}  // namespace
}  // namespace orvane::test
