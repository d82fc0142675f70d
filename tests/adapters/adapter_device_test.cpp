// A `++` adapter on a serial device: how the device is taken, and what comes of one that cannot be.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "adapters/adapter_bus.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using Wire = ScriptedAdapter::Wire;

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
  // The system keeps 15 characters of a program's name.
  EXPECT_EQ(SerialFailure(line.Device()),
            "the device is in use by another program: adapter_gpib_te (process " + std::to_string(::getpid()) + ").");
  ::close(other);
}

TEST(AdapterDevice, IsSetToItsLineAndHeldForOneProgramAlone) {
  ScriptedAdapter adapter({}, Wire::kTerminal);
  const int other = ::open(adapter.Device().c_str(), O_RDWR | O_NOCTTY);
  termios line{};
  ASSERT_EQ(::tcgetattr(other, &line), 0);
  ::cfsetspeed(&line, B9600);
  line.c_cflag |= HUPCL | CSTOPB | CRTSCTS;
  line.c_lflag |= ICANON | ECHO;
  ASSERT_EQ(::tcsetattr(other, TCSANOW, &line), 0);

  auto bus = BusOn(RouteTo(adapter));
  auto session = bus.Open({0, 5, 0});
  session->Write("*RST", 5s);
  ASSERT_EQ(::tcgetattr(other, &line), 0);
  EXPECT_EQ(::cfgetospeed(&line), speed_t{B115200});
  EXPECT_EQ(line.c_cflag & (HUPCL | CSTOPB | CRTSCTS), 0U) << "one that is closed must not restart its adapter";
  EXPECT_EQ(line.c_lflag & (ICANON | ECHO), 0U);
  EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0) << "held";
  session.reset();
  EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0) << "let go";
  ::close(other);
}

/// Fills what the other end of a pseudo-terminal has room for; what is written from then on waits.
void Fill(const Pty& line) {
  constexpr int kRoom = 4095;
  const int device = ::open(line.Device().c_str(), O_RDWR | O_NOCTTY);
  const std::string filling(kRoom, '.');
  ASSERT_EQ(::write(device, filling.data(), filling.size()), kRoom);
  const auto limit = std::chrono::steady_clock::now() + 5s;
  for (int arrived = 0; arrived < kRoom; ::ioctl(line.Master(), FIONREAD, &arrived)) {
    ASSERT_LT(std::chrono::steady_clock::now(), limit) << arrived;
  }
  ::close(device);
}

TEST(AdapterDevice, ThatTakesNothingIsLetGoWithWhatItDidNotTake) {
  const Pty line;
  Fill(line);
  auto bus = BusOn(PrologixSerialRoute{line.Device()});
  const auto session = bus.Open({0, 5, 0});
  ExpectError(ErrorOf([&] { session->Write("*IDN?", 100ms); }), kErrTimo, kEabo, "did not answer its ++ commands");
  EXPECT_THAT(line.ReceivedSoFar(), Not(HasSubstr("++")));
}

TEST(AdapterDevice, ThatIsPulledOutIsGone) {
  ScriptedAdapter adapter(
      [](ScriptedAdapter& self, const std::string& line) {
        if (line == "++read eoi") self.HangUp();
        return line == "++read eoi";
      },
      Wire::kTerminal);
  auto bus = BusOn(RouteTo(adapter));
  auto session = bus.Open({0, 1, 0});
  ExpectError(ErrorOf([&] { (void)Ask(*session, "A?"); }), kErr, kEnol, "the device is gone");
  session = bus.Open({0, 1, 0});
  ExpectError(ErrorOf([&] { (void)Ask(*session, "A?"); }), kErr, kEnol, "there is no such device.");
}

}  // namespace
}  // namespace orvane::test
