#include "adapters/serial_devices.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <functional>

#include "adapters/pty.h"
#include "adapters/serial/serial_device.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class SerialDevicesTest : public testing::Test {
 protected:
  SerialDevicesTest() { fs::create_directory(folder_); }
  ~SerialDevicesTest() override { fs::remove_all(folder_); }

  fs::path folder_ = fs::temp_directory_path() / ("orvane-serial-" + std::to_string(::getpid()));
  test::Pty line_;
};

TEST_F(SerialDevicesTest, ALineThatNobodyElseHoldsIsFreeUnderAnyOfItsNames) {
  fs::create_symlink(line_.Device(), folder_ / "usb-Target");
  EXPECT_EQ(SerialDeviceState(line_.Device()), "free");
  EXPECT_EQ(SerialDeviceState(folder_ / "usb-Target"), "free");
}

TEST_F(SerialDevicesTest, ALineThatIsOpenIsInUseByWhoeverHoldsIt) {
  const SerialDevice open(line_.Device(), {}, false);
  EXPECT_EQ(SerialDeviceState(line_.Device()),
            "in use by adapters_tests (process " + std::to_string(::getpid()) + ")");
}

TEST_F(SerialDevicesTest, WhatIsNoLineIsToldApartFromWhatIsNotThere) {
  std::ofstream(folder_ / "file") << "text";
  EXPECT_EQ(SerialDeviceState(folder_ / "file"), "no serial line");
  EXPECT_EQ(SerialDeviceState(folder_), "no serial line");
  EXPECT_EQ(SerialDeviceState("/dev/null"), "no serial line");
  EXPECT_EQ(SerialDeviceState(folder_ / "none"), "there is no such device");
  EXPECT_EQ(SerialDeviceState(folder_ / "file" / "none"), "there is no such device");
}

TEST_F(SerialDevicesTest, ALastingNameIsALinkThatLeadsToTheDevice) {
  const test::Pty other;
  fs::create_symlink(line_.Device(), folder_ / "usb-B");
  fs::create_symlink(line_.Device(), folder_ / "usb-A");
  fs::create_symlink(other.Device(), folder_ / "usb-C");
  fs::create_symlink(folder_ / "none", folder_ / "usb-D");
  EXPECT_THAT(LinksTo(line_.Device(), folder_),
              ElementsAre((folder_ / "usb-A").string(), (folder_ / "usb-B").string()));
  EXPECT_THAT(LinksTo(line_.Device(), folder_ / "none"), IsEmpty());
  EXPECT_THAT(LinksTo((folder_ / "none").string(), folder_), IsEmpty());
}

TEST(SerialDevices, AreToldOnceEach) {
  std::vector<std::string> paths;
  for (const ListedDevice& device : ListedDevices()) paths.push_back(device.path);
  EXPECT_TRUE(std::is_sorted(paths.begin(), paths.end(), std::less_equal<>()));
}

}  // namespace
}  // namespace orvane
