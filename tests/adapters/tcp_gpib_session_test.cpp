#include "adapters/gpib/tcp_gpib_session.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <thread>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/loopback_instrument.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;
using test::Instrument;
using testing::HasSubstr;

constexpr int kErr = 0x8000;
constexpr int kErrTimo = 0xC000;
constexpr int kEnol = 2;
constexpr int kEabo = 6;

GpibRoutes RouteTo(const Instrument& instrument) {
  GpibRoutes routes;
  routes.instruments[1] = TcpRoute{"127.0.0.1", instrument.Port()};
  return routes;
}

class TcpRouteTest : public testing::Test {
 protected:
  /// As Configure does it.
  std::unique_ptr<GpibSession> Open() { return RoutedGpibBus(RouteTo(instrument_)).Open({0, 1, 0}); }

  static std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
    try {
      message();
    } catch (const GpibError& error) {
      return error;
    }
    return std::nullopt;
  }
  void ExpectError(const std::optional<GpibError>& error, int ibsta, int iberr, const std::string& what) const {
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->ibsta, ibsta);
    EXPECT_EQ(error->iberr, iberr);
    EXPECT_THAT(
        error->what(),
        HasSubstr("Instrument at address 1, route tcp:127.0.0.1:" + std::to_string(instrument_.Port()) + ": "));
    EXPECT_THAT(error->what(), HasSubstr(what));
  }

  Instrument instrument_;
};

TEST_F(TcpRouteTest, SendsTheTextAndOneLineFeedAndReadsOneMessageWithItsOwn) {
  const auto session = Open();
  session->Write("*IDN?", 1s);
  instrument_.Accept();
  EXPECT_EQ(instrument_.Received(), "*IDN?\n");
  instrument_.Reply("maker,model,0,1.0\n");
  EXPECT_EQ(session->Read(1000, 1s), "maker,model,0,1.0\n");
}

TEST_F(TcpRouteTest, ReadsNoMoreThanTheReadSizeAndTheRestWithTheNextRead) {
  const auto session = Open();
  session->Write("READ?", 1s);
  instrument_.Accept();
  instrument_.Reply("abcdefgh\n");
  EXPECT_EQ(session->Read(5, 1s), "abcde");
  EXPECT_EQ(session->Read(5, 1s), "fgh\n");
}

TEST_F(TcpRouteTest, WhatIsLeftOfAReplyThatWasTooLongIsNotTheNextOnes) {
  const auto session = Open();
  session->Write("FIRST?", 1s);
  instrument_.Accept();
  instrument_.Reply("abcde");
  EXPECT_EQ(session->Read(5, 1s), "abcde");
  session->Write("SECOND?", 1s);
  instrument_.Reply("fgh\nsecond\n");
  EXPECT_EQ(session->Read(1000, 1s), "second\n");
}

TEST_F(TcpRouteTest, ARestThatCameBetweenTwoMessagesIsOverWithThem) {
  const auto session = Open();
  session->Write("FIRST?", 1s);
  instrument_.Accept();
  instrument_.Reply("abcde");
  EXPECT_EQ(session->Read(5, 1s), "abcde");
  session->Write("A", 1s);
  instrument_.Reply("fgh\n");
  session->Write("B", 1s);
  session->Write("SECOND?", 1s);
  instrument_.Reply("second\n");
  EXPECT_EQ(session->Read(1000, 1s), "second\n");
}

TEST_F(TcpRouteTest, WhatCameBesidesAReplyIsNotTheNextOnes) {
  // Behind the reply's line end, and when the next message has gone out.
  const std::pair<const char*, const char*> rows[] = {{"2\n", ""}, {"2\n3\n", ""}, {"2", "\n"}, {"2\n3", "4\n"}};
  for (const auto& [besides, later] : rows) {
    const auto session = Open();
    session->Write("FIRST?", 1s);
    instrument_.Accept();
    instrument_.Reply("1\n" + std::string(besides));
    EXPECT_EQ(session->Read(1000, 1s), "1\n");
    session->Write("SECOND?", 1s);
    instrument_.Reply(later + std::string("second\n"));
    EXPECT_EQ(session->Read(1000, 1s), "second\n") << besides;
  }
}

TEST_F(TcpRouteTest, AHostThatDoesNotTakeTheConnectionUpIsAbsentWithinTheTimeOut) {
  instrument_.TakeNoMore();
  const auto session = Open();
  const auto start = std::chrono::steady_clock::now();
  ExpectError(ErrorOf([&] { session->Write("*IDN?", 100ms); }), kErr, kEnol, "no connection within 100 ms.");
  EXPECT_LT(std::chrono::steady_clock::now() - start, 1s) << "the system itself tries for two minutes";
}

TEST_F(TcpRouteTest, ReadsOneOfTwoMessagesThatCameTogether) {
  const auto session = Open();
  session->Write("READ?", 1s);
  instrument_.Accept();
  instrument_.Reply("1\n2\n");
  EXPECT_EQ(session->Read(1000, 1s), "1\n");
  EXPECT_EQ(session->Read(1000, 1s), "2\n");
}

TEST_F(TcpRouteTest, AReplyMayComeByteByByte) {
  const auto session = Open();
  session->Write("READ?", 1s);
  instrument_.Accept();
  std::thread dribble([this] {
    for (const char byte : std::string("+3.1E+001\r\n")) {
      instrument_.Reply(std::string(1, byte));
      std::this_thread::sleep_for(1ms);
    }
  });
  EXPECT_EQ(session->Read(1000, 2s), "+3.1E+001\r\n");
  dribble.join();
}

TEST_F(TcpRouteTest, ATextLargerThanTheSocketsBufferGoesOutWhole) {
  const auto session = Open();
  const std::string text(8'000'000, 'x');
  std::size_t received = 0;
  std::thread reader([&] {
    instrument_.Accept();
    while (received < text.size() + 1) received += instrument_.Received().size();
  });
  session->Write(text, 5s);
  reader.join();
  EXPECT_EQ(received, text.size() + 1);
}

TEST_F(TcpRouteTest, ConfiguringAnAbsentInstrumentDoesNotFailButItsFirstMessageDoes) {
  instrument_.Leave();
  const auto session = Open();
  ExpectError(ErrorOf([&] { session->Write("*IDN?", 1s); }), kErr, kEnol, "Connection refused");
}

TEST_F(TcpRouteTest, AHostThatNobodyKnowsIsAbsent) {
  TcpGpibSession session(7, "tcp:no-such-host.invalid:5025", "no-such-host.invalid", 5025);
  const auto error = ErrorOf([&] { session.Write("*IDN?", 1s); });
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->ibsta, kErr);
  EXPECT_EQ(error->iberr, kEnol);
  EXPECT_THAT(error->what(), HasSubstr("Instrument at address 7, route tcp:no-such-host.invalid:5025: unknown host"));
}

TEST_F(TcpRouteTest, AnInstrumentThatDoesNotAnswerIsATimeOut) {
  const auto session = Open();
  session->Write("READ?", 1s);
  const auto start = std::chrono::steady_clock::now();
  ExpectError(ErrorOf([&] { (void)session->Read(1000, 30ms); }), kErrTimo, kEabo, "no reply within 30 ms");
  EXPECT_GE(std::chrono::steady_clock::now() - start, 30ms);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
}

TEST_F(TcpRouteTest, AReplyThatNeverEndsIsATimeOut) {
  const auto session = Open();
  session->Write("READ?", 1s);
  instrument_.Accept();
  instrument_.Reply("+3.1");
  ExpectError(ErrorOf([&] { (void)session->Read(1000, 30ms); }), kErrTimo, kEabo, "no line end");
}

TEST_F(TcpRouteTest, AnInstrumentThatTakesNothingIsATimeOut) {
  const auto session = Open();
  ExpectError(ErrorOf([&] { session->Write(std::string(50'000'000, 'x'), 50ms); }), kErrTimo, kEabo,
              "took no bytes within 50 ms");
}

TEST_F(TcpRouteTest, AReplyThatComesTooLateIsNeverTakenForTheNextOnes) {
  auto session = Open();
  session->Write("FIRST?", 1s);
  EXPECT_TRUE(ErrorOf([&] { (void)session->Read(1000, 10ms); }));
  instrument_.Accept();
  instrument_.Reply("first\n");

  ExpectError(ErrorOf([&] { session->Write("SECOND?", 1s); }), kErr, kEnol, "Initialize the instrument again.");

  session = Open();
  session->Write("SECOND?", 1s);
  instrument_.Accept();
  instrument_.Reply("second\n");
  EXPECT_EQ(session->Read(1000, 1s), "second\n");
}

TEST_F(TcpRouteTest, AConnectionThatClosesInsideAReplyIsNoReply) {
  const auto session = Open();
  session->Write("READ?", 1s);
  instrument_.Accept();
  EXPECT_EQ(instrument_.Received(), "READ?\n");
  instrument_.Reply("+3.1");
  instrument_.HangUp();
  ExpectError(ErrorOf([&] { (void)session->Read(1000, 1s); }), kErr, kEnol, "in the middle of its reply");
}

TEST_F(TcpRouteTest, AnInstrumentThatHasGoneIsNoticedByTheNextWrite) {
  const auto session = Open();
  session->Write("*RST", 1s);
  instrument_.Accept();
  EXPECT_EQ(instrument_.Received(), "*RST\n");
  instrument_.HangUp();
  ExpectError(ErrorOf([&] { session->Write("*IDN?", 1s); }), kErr, kEnol, "closed the connection");
}

TEST_F(TcpRouteTest, AnAddressWithoutARouteOfItsOwnIsReachedByTheBus) {
  GpibRoutes routes = RouteTo(instrument_);
  routes.bus = PrologixTcpRoute{"no-such-host.invalid"};
  RoutedGpibBus bus(routes);
  const auto session = bus.Open({0, 2, 0});
  const auto error = ErrorOf([&] { session->Write("*IDN?", 1s); });
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->iberr, kEnol);
  EXPECT_THAT(error->what(),
              HasSubstr("Instrument at address 2, route prologix:no-such-host.invalid:1234: unknown host"));
}

}  // namespace
}  // namespace orvane
