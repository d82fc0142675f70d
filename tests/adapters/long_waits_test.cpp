// Instruments that keep the station waiting: who is told of it, and that nothing else is different.

#include "adapters/gpib/long_waits.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/loopback_instrument.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

/// The station at one instrument on the loopback, which answers when the test says so.
class LongWaitsTest : public testing::Test {
 protected:
  LongWaitsTest() {
    waits_.onWait = [this] {
      ++told_;
      if (glance_) glance_(told_);
    };
  }
  void Ask() {
    session_->Write("*IDN?", 60s);
    instrument_.Accept();
    ASSERT_EQ(instrument_.Received(), "*IDN?\n");
  }

  Instrument instrument_;
  LongWaits waits_;
  RoutedGpibBus bus_{{.instruments = {{1, TcpRoute{"127.0.0.1", instrument_.Port()}}}}, &waits_};
  WaitedBus waited_{bus_, waits_};
  std::unique_ptr<GpibSession> session_ = waited_.Open({0, 1, 0});
  int told_ = 0;
  std::function<void(int)> glance_;
};

TEST_F(LongWaitsTest, AReplyThatIsThereIsNoWait) {
  Ask();
  instrument_.Reply("maker\n");
  EXPECT_EQ(session_->Read(1000, 60s), "maker\n");
  EXPECT_EQ(told_, 0);
}

/// A session that notes who locks it.
class LockedSession final : public GpibSession {
 public:
  explicit LockedSession(std::string& said) : said_(said) {}
  void Write(std::string_view /*text*/, TimePoint /*timeOut*/) override {}
  [[nodiscard]] std::string Read(std::size_t /*size*/, TimePoint /*timeOut*/) override { return ""; }
  void Local() override {}
  [[nodiscard]] bool TryLock() override {
    said_ += "lock ";
    return false;
  }
  void Unlock() override { said_ += "unlock"; }

 private:
  std::string& said_;
};

class LockedBus final : public GpibBus {
 public:
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& /*address*/) override {
    return std::make_unique<LockedSession>(said);
  }
  [[nodiscard]] std::string RouteOf(const GpibAddress& /*address*/) const override { return ""; }
  std::string said;
};

TEST(WaitedBus, LeavesTheLocksOfARouteToTheRoute) {
  LockedBus bus;
  LongWaits waits;
  WaitedBus waited(bus, waits);
  const auto session = waited.Open({0, 1, 0});
  EXPECT_FALSE(session->TryLock());
  session->Unlock();
  EXPECT_EQ(bus.said, "lock unlock");
}

TEST_F(LongWaitsTest, AWaitThatLastsIsToldAgainAndAgainUntilTheReplyComes) {
  Ask();
  glance_ = [this](int told) {
    const auto wait = waits_.UnderWay();
    ASSERT_TRUE(wait.has_value());
    EXPECT_EQ(wait->address, 1);
    EXPECT_GE(wait->lasts, LongWaits::kUntold);
    EXPECT_EQ(wait->limit, 60s);
    if (told == 3) instrument_.Reply("maker\n");
  };
  EXPECT_EQ(session_->Read(1000, 60s), "maker\n");
  EXPECT_EQ(told_, 3);
  EXPECT_FALSE(waits_.UnderWay().has_value());
}

TEST_F(LongWaitsTest, WhoeverIsToldMayTakeLongAndTheReplyIsInTimeAllTheSame) {
  Ask();
  static constexpr auto kTimeOut = 1s;
  glance_ = [this](int) {
    instrument_.Reply("maker\n");
    std::this_thread::sleep_for(kTimeOut);
  };
  EXPECT_EQ(session_->Read(1000, kTimeOut), "maker\n");
  EXPECT_EQ(told_, 1);
}

TEST_F(LongWaitsTest, TheTimeOutIsTheMessagesOwn) {
  Ask();
  try {
    (void)session_->Read(1000, 500ms);
    ADD_FAILURE() << "nobody answered";
  } catch (const GpibError& error) {
    EXPECT_EQ(error.iberr, 6);
    EXPECT_NE(error.Text().find("no reply within 500 ms."), std::string::npos) << error.Text();
  }
  EXPECT_GE(told_, 1);
  EXPECT_FALSE(waits_.UnderWay().has_value());
}

TEST_F(LongWaitsTest, AConnectionThatIsNotTakenUpIsAWaitToo) {
  instrument_.TakeNoMore();
  EXPECT_THROW(session_->Write("*IDN?", 1s), GpibError);
  EXPECT_GE(told_, 1);
}

TEST_F(LongWaitsTest, ASleepIsToldAsWell) {
  {
    const LongWaits::Message message(waits_, 2, 1s);
    waits_.Sleep(300ms);
  }
  EXPECT_GE(told_, 1);
  EXPECT_LE(told_, 8) << "not before its time, and with a pause behind each";
}

TEST_F(LongWaitsTest, NobodyIsToldBetweenMessages) {
  std::this_thread::sleep_for(LongWaits::kUntold);
  waits_.Glance();
  EXPECT_EQ(told_, 0);
}

}  // namespace
}  // namespace orvane::test
