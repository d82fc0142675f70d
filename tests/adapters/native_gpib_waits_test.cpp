// The system's GPIB library keeps the station waiting within its own calls.

#include <chrono>

#include "adapters/gpib/long_waits.h"
#include "adapters/loopback_instrument.h"
#include "adapters/native_gpib_rig.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class NativeGpibWaits : public NativeGpibRig {
 protected:
  NativeGpibWaits() {
    ::setenv("GPIB_STAND_IN", ("1=127.0.0.1:" + std::to_string(instrument_.Port())).c_str(), 1);
    StandInWith("");
    waits_.onWait = [this] {
      if (++told_ == 3) instrument_.Reply("maker\n");
    };
  }

  /// The native route as a bus.
  struct Bus final : GpibBus {
    explicit Bus(const LongWaits& waits) : native(GPIB_STAND_IN_FILE, &waits) {}
    [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override {
      return native.Open(address);
    }
    NativeGpib native;
  };

  Instrument instrument_;
  LongWaits waits_;
  Bus native_{waits_};
  WaitedBus waited_{native_, waits_};
  int told_ = 0;
};

TEST_F(NativeGpibWaits, AReadThatLastsIsToldAndItsReplyTaken) {
  {
    const auto session = waited_.Open({0, 1, 0});
    session->Write("*IDN?", 30s);
    instrument_.Accept();
    EXPECT_EQ(session->Read(1000, 30s), "maker\n");
    EXPECT_EQ(told_, 3);
    EXPECT_EQ(OpenDevices(), 1);
  }
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 1 0 14 1 0", "ibwrt 1 *IDN?", "ibrd 1 1000", "ibonl 1 0"));
  EXPECT_EQ(OpenDevices(), 0);
}

TEST_F(NativeGpibWaits, AFailureSaysTheSameAsEver) {
  StandInWith("ibrd@1=C100:6");
  const auto session = waited_.Open({0, 1, 0});
  session->Write("*IDN?", 30s);
  ExpectError(
      ErrorOf([&] { (void)session->Read(1000, 30s); }), kErrTimo, kEabo,
      "Instrument at address 1, route native: no reply within 30 s (ibrd: ibsta &HC100, iberr 6 (the transfer "
      "was aborted)).");
}

}  // namespace
}  // namespace orvane::test
