// What a driver that counts tells of its line, and one that refuses to. A pseudo-terminal counts nothing, so this
// program answers the two questions in the system's place.

#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <optional>

#include "adapters/pty.h"
#include "adapters/qt_serial_control.h"
#include "adapters/qt_test.h"

namespace {

/// What the driver of every line of this program says: no value where it refuses.
struct Driver {
  std::optional<serial_icounter_struct> counts;
  std::optional<int> modemLines;
  int questions = 0;
};
Driver* driver = nullptr;

template <class Answer>
int Told(const std::optional<Answer>& answer, void* place) {
  ++driver->questions;
  if (!answer) {
    errno = ENOTTY;
    return -1;
  }
  *static_cast<Answer*>(place) = *answer;
  return 0;
}

}  // namespace

extern "C" int ioctl(int descriptor, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  void* const place = va_arg(arguments, void*);
  va_end(arguments);
  if (driver != nullptr && request == TIOCGICOUNT) return Told(driver->counts, place);
  if (driver != nullptr && request == TIOCMGET) return Told(driver->modemLines, place);
  return static_cast<int>(::syscall(SYS_ioctl, descriptor, request, place));
}

namespace orvane {
namespace {

class SerialCounts : public test::QtTest {
 protected:
  SerialCounts() { driver = &driver_; }
  ~SerialCounts() override { driver = nullptr; }

  void Open() {
    control_.setup.settings = "115200,N,8,1";
    control_.setup.rThreshold = 1;
    control_.onComm = [this](int event) {
      events_.push_back(event);
      if (event == kCommReceive) received_ += control_.Input();
    };
    control_.Open();
  }
  void Exchange() {
    received_.clear();
    control_.OutputWithNext("\x02\x14");
    control_.Output("ti");
    ASSERT_TRUE(pty_.Send("reply"));
    EXPECT_TRUE(YieldUntil([&] { return received_ == "reply"; }));
  }

  Driver driver_;
  test::Pty pty_;
  QtSerialControl control_{loop_, ComDevices{pty_.Device(), "", "", ""}};
  std::vector<int> events_;
  std::string received_;
};

TEST_F(SerialCounts, ADriverThatRefusesToTellIsAskedOnce) {
  Open();
  const int asked = driver_.questions;
  EXPECT_EQ(asked, 2) << "its lines and its counters";
  for (int i = 0; i < 3; ++i) Exchange();
  EXPECT_EQ(driver_.questions, asked);
}

TEST_F(SerialCounts, WhatADriverCountsIsToldAheadOfTheBytesOwnEvent) {
  driver_.counts.emplace();
  Open();
  Exchange();
  EXPECT_EQ(events_, (std::vector<int>{kCommReceive}));
  control_.Output("ti");
  ++driver_.counts->frame;
  ASSERT_TRUE(pty_.Send("damaged"));
  EXPECT_TRUE(YieldUntil([&] { return events_.size() == 3; }));
  EXPECT_EQ(events_, (std::vector<int>{kCommReceive, kCommFrameError, kCommReceive}));
}

TEST_F(SerialCounts, WhatHappensBetweenTheBytesIsToldWhenACommandGoesOut) {
  driver_.counts.emplace();
  Open();
  ++driver_.counts->brk;
  Exchange();
  EXPECT_EQ(events_, (std::vector<int>{kCommBreak, kCommReceive}));
}

TEST_F(SerialCounts, OfADriverThatTellsItsModemLinesOnlyTheirChangesAreTold) {
  driver_.modemLines = TIOCM_CTS;
  Open();
  Exchange();
  EXPECT_EQ(events_, (std::vector<int>{kCommReceive}));
  driver_.modemLines = TIOCM_DSR;
  Exchange();
  EXPECT_EQ(events_, (std::vector<int>{kCommReceive, kCommCtsChange, kCommDsrChange, kCommReceive}));
}

}  // namespace
}  // namespace orvane
