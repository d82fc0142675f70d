// The program orvane-desk from outside: its command line, and what becomes of its stations when it ends.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "program/programs.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
namespace fs = std::filesystem;

/// Whether some process was started with these words among its own.
bool AnyProcessWith(const std::string& given) {
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::ifstream file(entry.path() / "cmdline", std::ios::binary);
    const std::string words{std::istreambuf_iterator<char>(file), {}};
    if (words.find(given) != std::string::npos) return true;
  }
  return false;
}

template <class Come>
bool Comes(const Come& come) {
  const auto deadline = std::chrono::steady_clock::now() + 60s;
  while (!come()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(10ms);
  }
  return true;
}

class DeskProgram : public testing::Test {
 protected:
  std::string Profile(const std::string& name) const {
    const std::string path = folder_ / (name + ".toml");
    Fill(path, "station = \"" + name + "\"\nheadless = true\nbench = \"virtual\"\nrecords = \"none\"\ntrace = \"" +
                   (folder_ / name) + ".trace\"\n");
    return path;
  }
  static Arguments Desk(Arguments words) {
    words.insert(words.begin(), ORVANE_DESK_PROGRAM);
    return words;
  }

  TempFolder folder_;
  Variable screen_{"QT_QPA_PLATFORM", "offscreen"};
};

TEST_F(DeskProgram, WithoutAProfileOrWithTooManyIsABadOption) {
  Child none(Desk({}));
  const Child::End end = none.WaitForEnd();
  EXPECT_EQ(end.status, 64);
  EXPECT_EQ(end.errors, "orvane-desk: It takes the profiles of one to eight stations, and was given none.\n");
  Child many(Desk(Arguments(9, "profile.toml")));
  EXPECT_EQ(many.WaitForEnd().status, 64);
}

TEST_F(DeskProgram, EndsWithItsStationsByASignal) {
  Child desk(Desk({Profile("A"), Profile("B")}));
  ASSERT_TRUE(Comes([&] { return fs::exists(folder_ / "A.trace") && fs::exists(folder_ / "B.trace"); }));
  desk.Terminate();
  const Child::End end = desk.WaitForEnd();
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_FALSE(AnyProcessWith(folder_.Path().string()));
}

TEST_F(DeskProgram, OneThatIsKilledLeavesNoStationBehind) {
  Child desk(Desk({Profile("A")}));
  ASSERT_TRUE(Comes([&] { return fs::exists(folder_ / "A.trace"); }));
  desk.Kill();
  EXPECT_TRUE(Comes([&] { return !AnyProcessWith(folder_.Path().string()); }));
}

TEST_F(DeskProgram, SaysOnStandardErrorWhatItsStationsSayThere) {
  Fill(folder_ / "wrong.toml", "com9 = \"x\"\n");
  Child desk(Desk({folder_ / "wrong.toml", Profile("A")}));
  // Its words hold a null byte between the option and its value, as the system keeps them.
  const std::string wrong = std::string("--profile") + '\0' + (folder_ / "wrong.toml");
  ASSERT_TRUE(Comes([&] { return fs::exists(folder_ / "A.trace") && !AnyProcessWith(wrong); }));
  desk.Terminate();
  const Child::End end = desk.WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_THAT(end.errors,
              HasSubstr("wrong: orvane: " + (folder_ / "wrong.toml") + ":1: com9: there is no such key\n"));
}

}  // namespace
}  // namespace orvane::test
