// The VXI-11 route: what goes over its wire, and how replies come back.

#include "adapters/gpib/byte_stream.h"
#include "adapters/vxi11_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;

TEST_F(Vxi11, AFirstMessageMakesALinkClearsTheDeviceAndGoesOutWithAnEnd) {
  Calls calls;
  Play({[&](GatewayConnection& client) {
    MakeLink(client, &calls);
    const auto call = client.NextCall();
    ASSERT_TRUE(call.has_value());
    calls.push_back(*call);
    client.Answer({0, 5});
  }});
  Open()->Write("*IDN?", 1s);
  gateway_->Join();

  ASSERT_EQ(calls.size(), 3U);
  const auto lessXidAndTimes = [](Words call, std::initializer_list<std::size_t> times) {
    for (const std::size_t time : times) {
      EXPECT_GT(call.at(time), 0U);
      EXPECT_LE(call.at(time), 1000U);
      call[time] = 0;
    }
    return Words(call.begin() + 1, call.end());
  };
  // "gpib0,5": 7 bytes and one to fill the word.
  EXPECT_EQ(lessXidAndTimes(calls[0], {12}),
            (Words{0, 2, 0x0607AF, 1, kCreateLink, 0, 0, 0, 0, 0, 0, 0, 7, 0x67706962, 0x302C3500}));
  EXPECT_EQ(lessXidAndTimes(calls[1], {12, 13}), (Words{0, 2, 0x0607AF, 1, kClear, 0, 0, 0, 0, 7, 1, 0, 0}));
  // Waits for a lock (0x01), ends the message (0x08).
  EXPECT_EQ(lessXidAndTimes(calls[2], {11, 12}),
            (Words{0, 2, 0x0607AF, 1, kWrite, 0, 0, 0, 0, 7, 0, 0, 0x09, 5, 0x2A49444E, 0x3F000000}));
}

TEST_F(Vxi11, AddressesAreNamesOfTheGatewaysDevices) {
  const std::pair<GpibAddress, Words> rows[] = {
      {{0, 5, 0}, {7, 0x67706962, 0x302C3500}},                 // gpib0,5
      {{0, 12, 97}, {10, 0x67706962, 0x302C3132, 0x2C310000}},  // gpib0,12,1
      {{1, 3, 96}, {9, 0x67706962, 0x312C332C, 0x30000000}},    // gpib1,3,0
      {{0, 5, 1}, {11, 0x67706962, 0x302C352C, 0x2D393500}},    // gpib0,5,-95: not the device gpib0,5
  };
  for (const auto& [address, name] : rows) {
    Calls calls;
    Play({[&](GatewayConnection& client) {
      MakeLink(client, &calls);
      TakeMessage(client);
    }});
    Open(address)->Write("x", 1s);
    gateway_->Join();
    EXPECT_EQ(Words(calls.at(0).begin() + kArguments + 3, calls.at(0).end()), name);
  }
}

TEST_F(Vxi11, ALongMessageGoesOutInPiecesAsTheGatewayTakesThemAndOnlyTheLastOneEnds) {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> flagsAndSizes;
  Play({[&](GatewayConnection& client) {
    MakeLink(client, nullptr, 4);
    while (const auto call = client.NextCall()) {
      flagsAndSizes.emplace_back(call->at(kArguments + 3), call->at(kArguments + 4));
      client.Answer({0, call->at(kArguments + 4)});
    }
  }});
  {
    const auto session = Open();
    session->Write("123456789", 1s);
    session->Write("12345678", 1s);
    session->Write("", 1s);
  }
  gateway_->Join();
  EXPECT_THAT(flagsAndSizes, ElementsAre(std::pair(1, 4), std::pair(1, 4), std::pair(9, 1), std::pair(1, 4),
                                         std::pair(9, 4), std::pair(9, 0)));
}

TEST_F(Vxi11, AReplyIsReadToItsEndWhateverPiecesItComesIn) {
  std::vector<std::uint32_t> asked;
  Play({[&](GatewayConnection& client) {
    MakeLink(client);
    TakeMessage(client);
    for (const auto& [reason, piece] : {std::pair(0U, "+3.19"), std::pair(0U, "850E"), std::pair(4U, "+001\n")}) {
      const auto call = client.NextCall();
      ASSERT_TRUE(call.has_value());
      EXPECT_EQ(call->at(kProcedure), kRead);
      asked.push_back(call->at(kArguments + 1));
      client.Answer({0, reason}, piece);
    }
  }});
  const auto session = Open();
  session->Write("READ?", 1s);
  EXPECT_EQ(session->Read(1000, 1s), "+3.19850E+001\n");
  EXPECT_THAT(asked, ElementsAre(1000, 995, 991));
}

TEST_F(Vxi11, AReplyAsLongAsTheReadSizeLeavesTheRestForTheNextRead) {
  Play({[](GatewayConnection& client) {
    MakeLink(client);
    TakeMessage(client);
    if (client.NextCall()) client.Answer({0, 1}, "abcde");
    if (client.NextCall()) client.Answer({0, 4}, "fgh\n");
    if (client.NextCall()) client.Answer({0, 4, 0});
  }});
  const auto session = Open();
  session->Write("READ?", 1s);
  EXPECT_EQ(session->Read(5, 1s), "abcde");
  EXPECT_EQ(session->Read(5, 1s), "fgh\n");
  EXPECT_EQ(session->Read(5, 1s), "") << "an end and no bytes";
}

TEST_F(Vxi11, AnswersThatComeByteByByteAreWhole) {
  Play({[](GatewayConnection& client) {
    for (const Words& result : {Words{0, 7, 0, kPieces}, Words{0}, Words{0, 5}}) {
      if (client.NextCall()) client.Dribble(client.Reply(result), 1ms);
    }
    if (client.NextCall()) client.Dribble(client.Reply({0, 4}, "1\n"), 1ms);
  }});
  const auto session = Open();
  session->Write("READ?", 4s);
  EXPECT_EQ(session->Read(1000, 4s), "1\n");
}

TEST_F(Vxi11, ReleaseReturnsTheInstrumentToLocalAndLetsTheLinkGo) {
  Calls calls;
  Play({[&](GatewayConnection& client) {
    MakeLink(client);
    TakeMessage(client);
    while (const auto call = client.NextCall()) {
      calls.push_back(*call);
      client.Answer({0});
    }
  }});
  const auto session = Open();
  session->Write("*RST", 1s);
  session->Local();
  gateway_->Join();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].at(kProcedure), kLocal);
  EXPECT_EQ(calls[1].at(kProcedure), kDestroyLink);
  EXPECT_EQ(ArgumentsOf(calls[1]), Words{7});
}

TEST_F(Vxi11, ReleaseOfASessionThatSaidNothingTouchesNobody) {
  std::optional<Words> first;
  Play({[&](GatewayConnection& client) { first = client.NextCall(); }});
  Open()->Local();
  // The gateway hears one connection. Had the session made one, it would be that.
  const Words own{0x47110815};
  ByteStream another = ConnectTcp("127.0.0.1", gateway_->Port(), Deadline(5s), "the gateway");
  another.Send(BytesOf({0x80000004U}) + BytesOf(own), Deadline(5s));
  gateway_->Join();
  EXPECT_EQ(first, own);
}

TEST_F(Vxi11, AGatewayWithoutClearAndLocalIsNoFault) {
  Play({[](GatewayConnection& client) {
    if (client.NextCall()) client.Answer({0, 7, 0, kPieces});
    if (client.NextCall()) client.Answer({8});
    TakeMessage(client);
    if (client.NextCall()) client.Answer({8});
    if (client.NextCall()) client.Answer({0});
  }});
  const auto session = Open();
  session->Write("*RST", 1s);
  session->Local();
}

}  // namespace
}  // namespace orvane::test
