// What comes of a message when the gateway, or the instrument behind it, fails.

#include "adapters/vxi11_rig.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(Vxi11, ErrorsOfTheProtocolAreToldAsTheyAre) {
  const std::pair<std::uint32_t, const char*> rows[] = {
      {3, "the gateway reports error 3, the device is not accessible."},
      {9, "the gateway reports error 9, there are no resources left."},
      {11, "the gateway reports error 11, the device is locked by another client."},
      {77, "the gateway reports error 77."},
  };
  for (const auto& [error, what] : rows) {
    Play({[error = error](GatewayConnection& client) {
      if (client.NextCall()) client.Answer({error, 0, 0, 0});
    }});
    const auto session = Open();
    ExpectAbsent([&] { session->Write("*IDN?", 1s); }, what);
  }
}

TEST_F(Vxi11, ErrorsOfAMessageEndTheSession) {
  const std::pair<std::uint32_t, const char*> rows[] = {
      {4, "the gateway reports error 4, the link is gone."},
      {17, "the gateway reports error 17, input or output failed at the device."},
      {23, "the gateway reports error 23, the operation was aborted."},
  };
  for (const auto& [error, what] : rows) {
    Play({[error = error](GatewayConnection& client) {
      MakeLink(client);
      if (client.NextCall()) client.Answer({error, 0});
      client.AwaitHangUp();
    }});
    const auto session = Open();
    ExpectAbsent([&] { session->Write("*IDN?", 1s); }, what);
    gateway_->Join();
    ExpectAbsent([&] { session->Write("*IDN?", 1s); },
                 "the connection has ended (" + std::string(what) + ") Initialize the instrument again.");
  }
}

TEST_F(Vxi11, TimeOutsThatTheGatewayReportsAreTimeOuts) {
  Play({[](GatewayConnection& client) {
    MakeLink(client);
    TakeMessage(client);
    if (client.NextCall()) client.Answer({15, 0, 0});
  }});
  const auto session = Open();
  session->Write("READ?", 1s);
  ExpectTimeOut([&] { (void)session->Read(1000, 1s); }, "no reply within 1 s.");

  Play({[](GatewayConnection& client) {
    MakeLink(client);
    if (client.NextCall()) client.Answer({15, 0});
  }});
  const auto other = Open();
  ExpectTimeOut([&] { other->Write("READ?", 1s); }, "the instrument did not take all bytes within 1 s.");
}

/// What a gateway does with the first call, and what comes of it.
struct BadGateway {
  ScriptedGateway::Script play;
  const char* what;
};

TEST_F(Vxi11, AGatewayThatIsNoneIsAbsent) {
  const auto sends = [](const std::function<std::string(GatewayConnection&)>& bytes) {
    return [bytes](GatewayConnection& client) {
      if (client.NextCall()) client.Send(bytes(client));
      client.AwaitHangUp();
    };
  };
  const auto header = [&](const Words& words) {
    return sends([words](GatewayConnection& client) { return client.ReplyHeader(words); });
  };
  const BadGateway rows[] = {
      {[](GatewayConnection& client) { (void)client.NextCall(); }, "the gateway closed the connection."},
      {[](GatewayConnection& client) {
         if (client.NextCall()) client.Send(client.Reply({0, 7, 0, kPieces}).substr(0, 30));
       },
       "the gateway closed the connection in the middle of its reply."},
      {sends([](GatewayConnection&) { return std::string("HTTP/1.1 400 Bad Request\r\n\r\n"); }),
       "the gateway answered more than it was asked for."},
      {sends([](GatewayConnection&) {
         return BytesOf({0x80000008, 1, 2});
       }),
       "the gateway sent something that is no answer."},
      {sends([](GatewayConnection&) { return BytesOf({0xFFFFFFFF}); }),
       "the gateway answered more than it was asked for."},
      {sends([](GatewayConnection&) {
         return BytesOf({0x80000028, 99, 1, 0, 0, 0, 0, 0, 7, 0, 4096});
       }),
       "the gateway sent something that is no answer."},
      {sends([](GatewayConnection& client) {
         return client.Reply({0, 7});
       }),
       "the gateway sent something that is no answer."},
      {sends([](GatewayConnection& client) {
         return client.Reply({0, 7, 0, kPieces}) + "x";
       }),
       "the gateway sent something that is no answer."},
      {header({1, 0, 0, 0, 1}), "the gateway does not serve this protocol."},
      {header({1, 0, 0, 0, 2, 2, 3}), "the gateway serves another version of this protocol."},
      {header({1, 0, 0, 0, 3}), "the gateway does not know this call."},
      {header({1, 0, 0, 0, 4}), "the gateway does not understand this call."},
      {header({1, 0, 0, 0, 5}), "the gateway could not carry out this call."},
      {header({1, 0, 0, 0, 0x2B333333}), "the gateway could not carry out this call."},
      {header({1, 1, 0, 3, 3}), "the gateway speaks another version of RPC."},
      {header({1, 1, 1, 5}), "the gateway asks for credentials."},
      {sends([](GatewayConnection& client) {
         return client.Reply({0, 7, 0, 0});
       }),
       "the gateway takes no bytes."},
  };
  for (const BadGateway& row : rows) {
    Play({row.play});
    const auto session = Open();
    ExpectAbsent([&] { session->Write("*IDN?", 3s); }, row.what);
    gateway_->Join();
  }
}

TEST_F(Vxi11, AnswersInFragmentsAreWhole) {
  Play({[](GatewayConnection& client) {
    if (client.NextCall()) {
      const std::string reply = client.Reply({0, 7, 0, kPieces});
      client.Send(BytesOf({10}) + reply.substr(4, 10) +
                  BytesOf({0x80000000U | static_cast<std::uint32_t>(reply.size() - 14)}) + reply.substr(14));
    }
    if (client.NextCall()) client.Answer({0});
    TakeMessage(client);
  }});
  Open()->Write("*RST", 1s);
}

TEST_F(Vxi11, AnAnswerThatEndsBehindItsFirstFragmentIsNotFinished) {
  Play({[](GatewayConnection& client) {
    if (client.NextCall()) client.Send(BytesOf({4, 1}));
    client.AwaitHangUp();
  }});
  const auto error = ErrorOf([&] { Open()->Write("*RST", 100ms); });
  ASSERT_TRUE(error.has_value());
  EXPECT_THAT(error->what(), HasSubstr("the gateway did not finish its answer within 100 ms."));
}

TEST_F(Vxi11, MoreBytesThanWereAskedForAreNoReply) {
  Play({[](GatewayConnection& client) {
    MakeLink(client);
    TakeMessage(client);
    if (client.NextCall()) client.Answer({0, 4}, "12345678");
    client.AwaitHangUp();
  }});
  const auto session = Open();
  session->Write("READ?", 1s);
  ExpectAbsent([&] { (void)session->Read(4, 1s); }, "the gateway answered more than it was asked for.");
}

TEST_F(Vxi11, FewerBytesTakenThanSentAreAFault) {
  Play({[](GatewayConnection& client) {
    MakeLink(client);
    if (client.NextCall()) client.Answer({0, 3});
    client.AwaitHangUp();
  }});
  const auto session = Open();
  ExpectAbsent([&] { session->Write("*RST", 1s); }, "the gateway did not take all bytes.");
}

/// Whether a bit of the answer to a read, counted from the first one of its mark, says nothing that the station
/// needs.
bool SaysNothing(std::size_t bit) {
  const std::size_t word = bit / 32;
  const std::size_t inWord = 31 - bit % 32;
  return word == 4                      // the kind of the server's credentials
         || (word == 8 && inWord != 2)  // other reasons than an end
         // A length within the same word: nobody can tell the fill from data.
         || (word == 9 && inWord < 2);
}

TEST_F(Vxi11, NoBrokenBitAroundAReplyMakesAnotherReplyOfIt) {
  constexpr std::size_t kBitsAhead = std::size_t{10} * 32;
  std::size_t broken = 0;
  const auto breakBit = [&](GatewayConnection& client) {
    MakeLink(client);
    TakeMessage(client);
    if (!client.NextCall()) return;
    std::string reply = client.Reply({0, 4}, "+3.19850E+001\n");
    reply[broken / 8] = static_cast<char>(static_cast<unsigned char>(reply[broken / 8]) ^ (0x80U >> broken % 8));
    client.Send(reply);
    // What is missing now never comes.
  };
  for (; broken < kBitsAhead; ++broken) {
    Play({breakBit});
    const auto session = Open();
    session->Write("READ?", 2s);
    std::string reply;
    const auto error = ErrorOf([&] { reply = session->Read(1000, 2s); });
    if (!SaysNothing(broken)) {
      EXPECT_TRUE(error.has_value()) << "bit " << broken << ": " << reply;
    } else if (broken / 32 != 9) {
      EXPECT_EQ(reply, "+3.19850E+001\n") << "bit " << broken;
    }
    gateway_->Join();
  }
}

TEST_F(Vxi11, WhoeverNeverAnswersIsATimeOutInItsTime) {
  Play({[](GatewayConnection& client) { client.AwaitHangUp(); }});
  const auto session = Open();
  const auto took = TimeOf(
      [&] { ExpectTimeOut([&] { session->Write("*IDN?", 200ms); }, "the gateway did not answer within 200 ms."); });
  EXPECT_GE(took, 200ms);
  EXPECT_LT(took, 2s);
}

TEST_F(Vxi11, BytesThatDribbleDoNotStretchTheTimeOut) {
  Play({[](GatewayConnection& client) {
    // Each byte comes well within the time-out, all of them together would take some seconds.
    if (client.NextCall()) client.Dribble(client.Reply({0, 7, 0, kPieces}), 100ms);
  }});
  const auto session = Open();
  const auto took = TimeOf([&] {
    ExpectTimeOut([&] { session->Write("*IDN?", 300ms); }, "the gateway did not finish its answer within 300 ms.");
  });
  EXPECT_GE(took, 300ms);
  EXPECT_LT(took, 2s);
}

TEST_F(Vxi11, EmptyPiecesWithoutAnEndDoNotStretchTheTimeOut) {
  Play({[](GatewayConnection& client) {
    MakeLink(client);
    TakeMessage(client);
    while (client.NextCall()) client.Answer({0, 0, 0});
  }});
  const auto session = Open();
  session->Write("READ?", 1s);
  const auto took = TimeOf([&] { EXPECT_TRUE(ErrorOf([&] { (void)session->Read(1000, 200ms); }).has_value()); });
  EXPECT_GE(took, 200ms);
  EXPECT_LT(took, 2s);
}

TEST_F(Vxi11, AReplyAfterTheTimeOutIsNeverTheNextOnes) {
  std::vector<std::uint32_t> second;
  Play({[](GatewayConnection& client) {
          MakeLink(client);
          TakeMessage(client);
          const bool asked = client.NextCall().has_value();
          client.AwaitHangUp();
          if (asked) client.Answer({0, 4}, "old\n");
        },
        [&](GatewayConnection& client) {
          Calls calls;
          MakeLink(client, &calls);
          for (const Words& call : calls) second.push_back(call.at(kProcedure));
          AnswerMessage(client, "new\n");
        }});
  auto session = Open();
  session->Write("READ?", 1s);
  ExpectTimeOut([&] { (void)session->Read(1000, 50ms); }, "the gateway did not answer within 50 ms.");
  session = bus_->Open({0, 5, 0});
  session->Write("READ?", 1s);
  EXPECT_EQ(session->Read(1000, 1s), "new\n");
  EXPECT_THAT(second, ElementsAre(kCreateLink, kClear));
}

}  // namespace
}  // namespace orvane::test
