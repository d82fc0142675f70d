#include "adapters/qt_serial_control.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

#include "adapters/pty.h"
#include "adapters/qt_test.h"
#include "base/failure.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class SerialLine : public test::QtTest {
 protected:
  void Connect(const std::string& com1) {
    control_.emplace(loop_, ComDevices{com1, "/nonexistent/com2", "", ""});
    control_->setup.settings = "115200,N,8,1";
    control_->setup.rThreshold = 1;
    control_->onComm = [this](int event) {
      if (event == kCommReceive) received_ += control_->Input();
    };
  }

  std::string FailureOf(const std::function<void()>& act) {
    try {
      act();
    } catch (const StationFailure& failure) {
      return failure.what();
    }
    return "no failure";
  }
  std::string FailureOfOpen() {
    return FailureOf([this] { control_->Open(); });
  }

  std::optional<QtSerialControl> control_;
  std::string received_;
};

TEST_F(SerialLine, CarriesBytesBothWaysAndRaisesAReceiveEventFromTheLoop) {
  const test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  EXPECT_TRUE(control_->PortOpen());

  const std::string frame("\x02\x14\x00\xFF", 4);
  control_->Output(frame);
  EXPECT_EQ(pty.Received(frame.size()), frame);

  ASSERT_TRUE(pty.Send(frame));
  EXPECT_EQ(received_, "");
  EXPECT_TRUE(YieldUntil([&] { return received_.size() == 4; }));
  EXPECT_EQ(received_, frame);
}

TEST_F(SerialLine, EveryByteRaisesAReceiveEventOfItsOwnTime) {
  const test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  for (const char* all : {"1", "12", "123"}) {
    ASSERT_TRUE(pty.Send({std::string_view(all).end() - 1, 1}));
    EXPECT_TRUE(YieldUntil([&] { return received_ == all; })) << received_;
  }
}

TEST_F(SerialLine, WithoutAThresholdBytesRaiseNoEventAndCanBeTaken) {
  const test::Pty pty;
  Connect(pty.Device());
  control_->setup.rThreshold = 0;
  control_->Open();
  ASSERT_TRUE(pty.Send("12"));
  std::string taken;
  EXPECT_TRUE(YieldUntil([&] {
    taken += control_->Input();
    loop_.Yield(loop_.Now() + 1ms);
    return taken == "12";
  }));
  EXPECT_EQ(received_, "");
}

TEST_F(SerialLine, WhatCameBeforeItWasOpenedIsNoReply) {
  const test::Pty pty;
  // Somebody has it open, or the system would not keep bytes at all.
  const int other = ::open(pty.Device().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_TRUE(pty.Send("stale"));
  pollfd arrived{other, POLLIN, 0};
  ASSERT_EQ(::poll(&arrived, 1, 5000), 1);
  Connect(pty.Device());
  control_->Open();
  ASSERT_TRUE(pty.Send("fresh"));
  EXPECT_TRUE(YieldUntil([&] { return received_.ends_with("fresh"); }));
  EXPECT_EQ(received_, "fresh");
  ::close(other);
}

TEST_F(SerialLine, OutputHasHandedOutEveryByteWhenItReturns) {
  const test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  const std::string frame(53, 'x');
  control_->Output(frame.substr(0, 2));
  control_->Output(frame.substr(2));
  EXPECT_EQ(pty.Received(frame.size()), frame);
}

TEST_F(SerialLine, BytesWithAnotherOutputBehindThemReachTheDeviceTogetherWithIt) {
  const test::Pty pty;
  Connect(pty.Device());
  EXPECT_EQ(FailureOf([&] { control_->OutputWithNext("ti"); }), "The serial port is not open.");
  control_->Open();
  control_->OutputWithNext("\x02\x14");
  EXPECT_EQ(pty.ReceivedSoFar(), "");
  control_->Output("body");
  EXPECT_EQ(pty.Received(6),
            "\x02\x14"
            "body");
  control_->Output("next");
  EXPECT_EQ(pty.Received(4), "next") << "what went out with another output is not sent again";

  control_->OutputWithNext("\x02\x14");
  control_->Close();
  control_->Open();
  control_->Output("after");
  EXPECT_EQ(pty.Received(5), "after");
}

TEST_F(SerialLine, APortClosedRaisesNothingMore) {
  const test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  ASSERT_TRUE(pty.Send("late"));
  control_->Close();
  EXPECT_FALSE(control_->PortOpen());
  EXPECT_FALSE(YieldUntil([&] { return !received_.empty(); }, 20ms));
  EXPECT_EQ(control_->Input(), "");
}

TEST_F(SerialLine, NamesTheDeviceThatIsMissing) {
  Connect("/nonexistent/ttyUSB7");
  EXPECT_EQ(FailureOfOpen(), "COM1 (/nonexistent/ttyUSB7): there is no such device.");
  EXPECT_FALSE(control_->PortOpen());
}

TEST_F(SerialLine, OpensTheDeviceOfThePortThatIsSetUp) {
  Connect("/dev/null");
  control_->setup.commPort = 2;
  EXPECT_THAT(FailureOfOpen(), HasSubstr("COM2 (/nonexistent/com2)"));
  control_->setup.commPort = 5;
  EXPECT_THAT(FailureOfOpen(), HasSubstr("COM5"));
}

TEST_F(SerialLine, RefusesADeviceThatAnotherProgramHolds) {
  const test::Pty pty;
  Connect(pty.Device());
  QtSerialControl other(loop_, ComDevices{pty.Device(), "", "", ""});
  other.setup.settings = "115200,N,8,1";
  other.Open();
  EXPECT_THAT(FailureOfOpen(), HasSubstr("in use by another program"));
  other.Close();
  control_->Open();
  EXPECT_TRUE(control_->PortOpen());
}

TEST_F(SerialLine, NamesWhoeverHoldsTheDevice) {
  const test::Pty pty;
  Connect(pty.Device());
  QtSerialControl other(loop_, ComDevices{pty.Device(), "", "", ""});
  other.setup.settings = "115200,N,8,1";
  other.Open();
  EXPECT_EQ(FailureOfOpen(), "COM1 (" + pty.Device() +
                                 "): the device is in use by another program: adapters_tests (process " +
                                 std::to_string(::getpid()) + ").");
}

TEST_F(SerialLine, ByWhateverNameADeviceIsCalledItIsOneDevice) {
  const test::Pty pty;
  const auto link = std::filesystem::temp_directory_path() / ("orvane_by_id_" + std::to_string(::getpid()));
  std::filesystem::create_symlink(pty.Device(), link);
  Connect(link);
  control_->Open();
  QtSerialControl other(loop_, ComDevices{pty.Device(), "", "", ""});
  other.setup.settings = "115200,N,8,1";
  EXPECT_THROW(other.Open(), StationFailure);
  std::filesystem::remove(link);
}

TEST_F(SerialLine, ATerminalThatARegularFileOrANullDeviceStandsForIsNone) {
  const auto file = std::filesystem::temp_directory_path() / ("orvane_file_" + std::to_string(::getpid()));
  std::ofstream(file) << "text";
  for (const std::string& path : {file.string(), std::string("/dev/null")}) {
    Connect(path);
    EXPECT_EQ(FailureOfOpen(), "COM1 (" + path + "): the device is no serial line.");
  }
  std::filesystem::remove(file);
}

/// While it lives, this process has an ordinary user's rights; nothing changes when it has no others.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    if (::geteuid() == 0 && (::setegid(kNobody) != 0 || ::seteuid(kNobody) != 0)) std::abort();
  }
  ~OrdinaryUser() {
    if (::getuid() == 0 && (::seteuid(0) != 0 || ::setegid(0) != 0)) std::abort();
  }

 private:
  static constexpr unsigned kNobody = 65534;
};

TEST_F(SerialLine, AForbiddenDeviceIsToldWithWhoMayUseIt) {
  struct Row {
    const char* group;
    mode_t mode;
    std::string why;
  };
  if (::geteuid() != 0) GTEST_SKIP() << "only a superuser gives devices away";
  for (const Row& row : {Row{"dialout", 0660, "permission denied. Is the user in the group \"dialout\"?"},
                         Row{"tty", 0660, "permission denied. Is the user in the group \"tty\"?"},
                         Row{"tty", 0600, "permission denied. Only its owner \"root\" might use it, no group."}}) {
    const test::Pty pty;
    const group* owner = ::getgrnam(row.group);
    ASSERT_NE(owner, nullptr);
    ASSERT_EQ(::chown(pty.Device().c_str(), 0, owner->gr_gid), 0);
    ASSERT_EQ(::chmod(pty.Device().c_str(), row.mode), 0);
    Connect(pty.Device());
    const OrdinaryUser user;
    EXPECT_EQ(FailureOfOpen(), "COM1 (" + pty.Device() + "): " + row.why);
  }
}

TEST_F(SerialLine, CarriesEveryByteAsItIs) {
  const test::Pty pty;
  Connect(pty.Device());
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  all += "\xFF\xFF\xFF";
  control_->Open();
  control_->Output(all);
  EXPECT_EQ(pty.Received(all.size()), all);
  ASSERT_TRUE(pty.Send(all));
  EXPECT_TRUE(YieldUntil([&] { return received_.size() >= all.size(); }));
  EXPECT_EQ(received_, all);
}

TEST_F(SerialLine, LeavesTheTerminalAsItFoundIt) {
  const test::Pty pty;
  const int device = ::open(pty.Device().c_str(), O_RDWR | O_NOCTTY);
  termios before{};
  termios after{};
  ASSERT_EQ(::tcgetattr(device, &before), 0);
  Connect(pty.Device());
  control_->Open();
  control_->Close();
  ASSERT_EQ(::tcgetattr(device, &after), 0);
  ::close(device);
  EXPECT_EQ(after.c_iflag, before.c_iflag);
  EXPECT_EQ(after.c_cflag, before.c_cflag);
  EXPECT_EQ(after.c_lflag, before.c_lflag);
}

TEST_F(SerialLine, RefusesSettingsThatAreNone) {
  const test::Pty pty;
  Connect(pty.Device());
  for (const char* settings : {"", "115200", "115200,N,8", "fast,N,8,1", "115200,X,8,1", "115200,N,9,1",
                               "115200,N,8,3", "115200,N,8,1,1", "-1,N,8,1"}) {
    control_->setup.settings = settings;
    EXPECT_THAT(FailureOfOpen(), HasSubstr("invalid settings")) << settings;
  }
}

TEST_F(SerialLine, ADeviceThatVanishesClosesThePortAndTellsSo) {
  test::Pty pty;
  Connect(pty.Device());
  std::string gone;
  control_->onGone = [&](const std::string& text) { gone = text; };
  control_->Open();
  pty.HangUp();
  EXPECT_TRUE(YieldUntil([&] { return !gone.empty(); }));
  EXPECT_THAT(gone, HasSubstr("COM1 (" + pty.Device() + "): "));
  EXPECT_FALSE(control_->PortOpen());
}

TEST_F(SerialLine, ADeviceThatVanishesIsAFailureOutOfTheWaitWhenNobodyTakesIt) {
  test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  pty.HangUp();
  EXPECT_THROW(YieldUntil([&] { return !control_->PortOpen(); }), StationFailure);
  EXPECT_FALSE(control_->PortOpen());
}

TEST_F(SerialLine, TheNextOpenWorksWhenADeviceIsThereAgain) {
  test::Pty pty;
  const auto link = std::filesystem::temp_directory_path() / ("orvane_tty_" + std::to_string(::getpid()));
  std::filesystem::create_symlink(pty.Device(), link);
  Connect(link);
  control_->onGone = [](const std::string&) {};
  control_->Open();
  pty.HangUp();
  EXPECT_TRUE(YieldUntil([&] { return !control_->PortOpen(); }));

  std::filesystem::remove(link);
  EXPECT_THAT(FailureOfOpen(), HasSubstr("there is no such device"));

  const test::Pty again;
  std::filesystem::create_symlink(again.Device(), link);
  control_->Open();
  ASSERT_TRUE(again.Send("back"));
  EXPECT_TRUE(YieldUntil([&] { return received_ == "back"; }));
  std::filesystem::remove(link);
}

TEST_F(SerialLine, ALineThatHungUpTakesNoProcessorTime) {
  test::Pty pty;
  Connect(pty.Device());
  control_->onGone = [](const std::string&) {};
  control_->Open();
  pty.HangUp();
  int turns = 0;
  YieldUntil([&] { return ++turns < 0; }, 100ms);
  EXPECT_LT(turns, 50);
}

TEST_F(SerialLine, CloseDropsWhatTheDeviceDidNotTake) {
  const test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  // The system takes it all and hands the device some kilobytes; a device that takes nothing never asks for the rest.
  const std::string much(10'000, 'x');
  control_->Output(much);
  control_->Close();
  EXPECT_LT(pty.ReceivedSoFar().size(), much.size());
}

TEST_F(SerialLine, OutputToALineThatHungUpFails) {
  test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  pty.HangUp();
  control_->OutputWithNext("\x02\x14");
  EXPECT_THAT(FailureOf([&] { control_->Output("ti"); }), HasSubstr("COM1 (" + pty.Device() + "): "));
  EXPECT_FALSE(control_->PortOpen());
  EXPECT_EQ(FailureOf([&] { control_->OutputWithNext("\x02\x14"); }), "The serial port is not open.");
}

}  // namespace
}  // namespace orvane
