#include "adapters/gpib/vxi11_gpib_session.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <optional>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/scripted_gateway.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint32_t kCreateLink = 10;
constexpr std::uint32_t kWrite = 11;
constexpr std::uint32_t kRead = 12;
constexpr std::uint32_t kClear = 15;
constexpr std::uint32_t kLocal = 17;
constexpr std::uint32_t kDestroyLink = 23;
constexpr std::uint32_t kPieces = 4096;

/// Where words of a call stand: the arguments begin behind number, kind, RPC version, program, version, procedure and
/// two empty credentials.
constexpr std::size_t kProcedure = 5;
constexpr std::size_t kArguments = 10;

using Calls = std::vector<Words>;

Words ArgumentsOf(const Words& call) { return {call.begin() + kArguments, call.end()}; }

/// Link 7 is made and its device cleared.
void MakeLink(GatewayConnection& client, Calls* calls = nullptr, std::uint32_t longestPiece = kPieces) {
  for (const Words& result : {Words{0, 7, 0, longestPiece}, Words{0}}) {
    const auto call = client.NextCall();
    if (calls != nullptr && call) calls->push_back(*call);
    client.Answer(result);
  }
}

void TakeMessage(GatewayConnection& client) {
  const auto call = client.NextCall();
  if (call) client.Answer({0, call->at(kArguments + 4)});
}

/// Takes the line and answers with this, ended.
void AnswerMessage(GatewayConnection& client, const std::string& reply) {
  TakeMessage(client);
  if (client.NextCall()) client.Answer({0, 4}, reply);
}

class Vxi11 : public testing::Test {
 protected:
  void Play(std::vector<ScriptedGateway::Script> scripts) { gateway_.emplace(std::move(scripts)); }
  /// As Configure does it, by the route of the whole bus.
  std::unique_ptr<GpibSession> Open(const GpibAddress& address = {0, 5, 0}) {
    GpibRoutes routes;
    routes.bus = GatewayRoute{"127.0.0.1", gateway_->Port()};
    bus_.emplace(routes);
    return bus_->Open(address);
  }
  static std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
    try {
      message();
    } catch (const GpibError& error) {
      return error;
    }
    return std::nullopt;
  }
  void ExpectAbsent(const std::function<void()>& message, const std::string& what) const {
    Expect(ErrorOf(message), 0x8000, 2, what);
  }
  void ExpectTimeOut(const std::function<void()>& message, const std::string& what) const {
    Expect(ErrorOf(message), 0xC000, 6, what);
  }

  std::optional<ScriptedGateway> gateway_;
  std::optional<RoutedGpibBus> bus_;

 private:
  void Expect(const std::optional<GpibError>& error, int ibsta, int iberr, const std::string& what) const {
    ASSERT_TRUE(error.has_value()) << what;
    EXPECT_EQ(error->ibsta, ibsta) << error->what();
    EXPECT_EQ(error->iberr, iberr) << error->what();
    const std::string name = "Instrument at address 5, route vxi11:127.0.0.1:" + std::to_string(gateway_->Port());
    EXPECT_EQ(error->what(), name + ",gpib0,5: " + what);
  }
};

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
  Play({});
  Open()->Local();
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

/// Takes the time that a message needs to fail.
std::chrono::milliseconds TimeOf(const std::function<void()>& message) {
  const auto start = std::chrono::steady_clock::now();
  message();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
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

/// A host that takes no connection and refuses none: its queue of connections is full.
class BlackHole {
 public:
  BlackHole() : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
    place_.sin_family = AF_INET;
    place_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(listener_, reinterpret_cast<const sockaddr*>(&place_), sizeof place_);
    ::listen(listener_, 0);
    socklen_t size = sizeof place_;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&place_), &size);
    for (int& filler : fillers_) {
      filler = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
      ::connect(filler, reinterpret_cast<const sockaddr*>(&place_), sizeof place_);
    }
  }
  BlackHole(const BlackHole&) = delete;
  BlackHole& operator=(const BlackHole&) = delete;
  ~BlackHole() {
    for (const int filler : fillers_) ::close(filler);
    ::close(listener_);
  }
  [[nodiscard]] int Port() const { return ntohs(place_.sin_port); }

 private:
  int listener_;
  sockaddr_in place_{};
  std::array<int, 4> fillers_{};
};

class Portmapper : public Vxi11 {
 protected:
  std::string FailureOf(Vxi11Place place, int ibsta) {
    Vxi11GpibSession session(5, "vxi11:" + place.host, std::move(place));
    const auto error = ErrorOf([&] { session.Write("*IDN?", 300ms); });
    if (!error) return "none";
    EXPECT_EQ(error->ibsta, ibsta);
    return error->what();
  }
  static Vxi11Place Asking(int portmapper) { return {"127.0.0.1", {}, "inst0", "the instrument", portmapper}; }
};

TEST_F(Portmapper, IsAskedForThePortWhenNoneIsGiven) {
  Words asked;
  Play({[](GatewayConnection& client) {
    MakeLink(client);
    AnswerMessage(client, "ok\n");
  }});
  ScriptedGateway portmapper({[&](GatewayConnection& client) {
    asked = client.NextCall().value_or(Words());
    client.Answer({static_cast<std::uint32_t>(gateway_->Port())});
  }});
  Vxi11GpibSession session(5, "vxi11:127.0.0.1", Asking(portmapper.Port()));
  session.Write("*IDN?", 1s);
  EXPECT_EQ(session.Read(1000, 1s), "ok\n");
  portmapper.Join();
  // The portmapper's program in version 2, its third procedure: core channel, version 1, over TCP (6).
  EXPECT_EQ(Words(asked.begin() + 1, asked.end()), (Words{0, 2, 100000, 2, 3, 0, 0, 0, 0, 0x0607AF, 1, 6, 0}));
}

TEST_F(Portmapper, ThatKnowsNoServerIsTold) {
  ScriptedGateway portmapper({[](GatewayConnection& client) {
    if (client.NextCall()) client.Answer({0});
  }});
  EXPECT_THAT(FailureOf(Asking(portmapper.Port()), 0x8000),
              HasSubstr("the portmapper knows of no VXI-11 server there."));
}

TEST_F(Portmapper, ThatNeverAnswersIsATimeOut) {
  ScriptedGateway portmapper({[](GatewayConnection& client) { client.AwaitHangUp(); }});
  const auto took = TimeOf([&] {
    EXPECT_THAT(FailureOf(Asking(portmapper.Port()), 0xC000),
                HasSubstr("the portmapper did not answer within 300 ms."));
  });
  EXPECT_LT(took, 2s);
}

TEST_F(Portmapper, OrGatewayThatRefusesIsAbsent) {
  int port = 0;
  {
    const ScriptedGateway gone({});
    port = gone.Port();
  }
  EXPECT_THAT(FailureOf(Asking(port), 0x8000), HasSubstr("Connection refused"));
  EXPECT_THAT(FailureOf({"127.0.0.1", port, "inst0", "the instrument"}, 0x8000), HasSubstr("Connection refused"));
}

TEST_F(Portmapper, OrGatewayInABlackHoleIsAbsentInItsTime) {
  const BlackHole hole;
  for (const Vxi11Place& place :
       {Asking(hole.Port()), Vxi11Place{"127.0.0.1", hole.Port(), "inst0", "the instrument"}}) {
    const auto took = TimeOf([&] { EXPECT_THAT(FailureOf(place, 0x8000), HasSubstr("no connection within")); });
    EXPECT_GE(took, 300ms);
    EXPECT_LT(took, 2s);
  }
}

}  // namespace
}  // namespace orvane::test
