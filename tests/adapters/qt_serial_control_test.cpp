#include "adapters/qt_serial_control.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

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
  EXPECT_EQ(pty.Received(10), frame);

  ASSERT_TRUE(pty.Send(frame));
  EXPECT_EQ(received_, "");
  EXPECT_TRUE(YieldUntil([&] { return received_.size() == 4; }));
  EXPECT_EQ(received_, frame);
}

TEST_F(SerialLine, OutputHasHandedOutEveryByteWhenItReturns) {
  const test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  const std::string frame(53, 'x');
  control_->Output(frame.substr(0, 2));
  control_->Output(frame.substr(2));
  EXPECT_EQ(pty.Received(100).size(), 53U);
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

TEST_F(SerialLine, HintsAtTheGroupWhenPermissionIsMissing) {
  const auto path = std::filesystem::temp_directory_path() / ("orvane_forbidden_" + std::to_string(::getpid()));
  std::ofstream(path) << "";
  ::chmod(path.c_str(), 0);
  if (::access(path.c_str(), R_OK) == 0) {
    std::filesystem::remove(path);
    GTEST_SKIP() << "this user may read everything";
  }
  Connect(path);
  EXPECT_THAT(FailureOfOpen(), HasSubstr("dialout"));
  std::filesystem::remove(path);
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

TEST_F(SerialLine, OutputToALineThatHungUpFails) {
  test::Pty pty;
  Connect(pty.Device());
  control_->Open();
  pty.HangUp();
  EXPECT_THAT(FailureOf([&] { control_->Output("ti"); }), HasSubstr("COM1 (" + pty.Device() + "): "));
  EXPECT_FALSE(control_->PortOpen());
}

}  // namespace
}  // namespace orvane
