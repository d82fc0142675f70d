// What a serial device tells beside bytes. A pseudo-terminal tells none of it, so the decoding is tested by itself.

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "adapters/serial/device_holder.h"
#include "adapters/serial/line_counts.h"
#include "adapters/serial/line_settings.h"
#include "adapters/serial/marked_bytes.h"

namespace orvane {
namespace {

using namespace std::string_literals;

struct MarkRow {
  std::string marked;
  std::string bytes;
  int damaged;
  int breaks;
};

const MarkRow kMarkRows[] = {
    {"\x02\x14"s, "\x02\x14"s, 0, 0},         {"\xFF\xFF"s, "\xFF"s, 0, 0},
    {"\xFF\x00\x41"s, "\x41"s, 1, 0},         {"\xFF\x00\x00"s, "\x00"s, 0, 1},
    {"\xFF\x00\xFF\x07"s, "\xFF\x07"s, 1, 0}, {"a\xFF\xFF\xFF\x00\x62\x00"s, "a\xFF\x62\x00"s, 1, 0},
    {"\xFF\x41"s, "\xFF\x41"s, 0, 0},
};

TEST(MarkedBytes, ComeOutAsOnTheLineAndTheMarksAreCounted) {
  for (const MarkRow& row : kMarkRows) {
    MarkedBytes marks;
    EXPECT_EQ(marks.Take(row.marked), row.bytes);
    EXPECT_EQ(marks.Damaged(), row.damaged);
    EXPECT_EQ(marks.Breaks(), row.breaks);
  }
}

TEST(MarkedBytes, MayBeCutAnywhere) {
  for (const MarkRow& row : kMarkRows) {
    MarkedBytes marks;
    std::string bytes;
    for (const char byte : row.marked) bytes += marks.Take({&byte, 1});
    EXPECT_EQ(bytes, row.bytes);
    EXPECT_EQ(marks.Damaged() + marks.Breaks(), row.damaged + row.breaks);
  }
}

TEST(LineCounts, EachKindThatDiffersIsOneEventChangesOfTheLineFirst) {
  EXPECT_EQ(EventsBetween({}, {}), std::vector<int>());
  EXPECT_EQ(EventsBetween({.cts = 1, .frame = 7}, {.cts = 1, .frame = 7}), std::vector<int>());
  EXPECT_EQ(EventsBetween({.frame = 7}, {.cts = 3, .frame = 9}), (std::vector<int>{3, 1004}));
  const LineCounts one{.cts = 1,
                       .dsr = 1,
                       .carrier = 1,
                       .ring = 1,
                       .breaks = 1,
                       .frame = 1,
                       .overrun = 1,
                       .bufferOverrun = 1,
                       .parity = 1};
  EXPECT_EQ(EventsBetween({}, one), (std::vector<int>{3, 4, 5, 6, 1001, 1004, 1006, 1008, 1009}));
}

TEST(LineCounts, AModemLineThatDiffersIsAChangeAndARingCountsAsItEnds) {
  LineCounts counts;
  CountChanges(0, TIOCM_CTS | TIOCM_CD | TIOCM_RI, counts);
  EXPECT_EQ(EventsBetween({}, counts), (std::vector<int>{3, 5}));
  counts = {};
  CountChanges(TIOCM_RI | TIOCM_CTS | TIOCM_DSR, TIOCM_CTS, counts);
  EXPECT_EQ(EventsBetween({}, counts), (std::vector<int>{4, 6}));
}

TEST(LineSettings, AreSpeedParityDataAndStopBits) {
  const auto usual = ParseLineSettings("115200,N,8,1");
  ASSERT_TRUE(usual);
  EXPECT_EQ(usual->speed, speed_t{B115200});
  EXPECT_EQ(usual->frame, tcflag_t{CS8});
  EXPECT_EQ(ParseLineSettings("9600,E,7,2")->frame, tcflag_t{CS7 | PARENB | CSTOPB});
  EXPECT_EQ(ParseLineSettings("9600,O,8,1")->frame, tcflag_t{CS8 | PARENB | PARODD});
  EXPECT_EQ(ParseLineSettings("9600,S,8,1")->frame, tcflag_t{CS8 | PARENB | CMSPAR});
}

TEST(LockFile, CountsWhileItsProcessLives) {
  const auto folder = std::filesystem::temp_directory_path() / ("orvane_locks_" + std::to_string(::getpid()));
  std::filesystem::create_directory(folder);
  const auto owner = [&](const std::string& content) {
    std::ofstream(folder / "LCK..ttyUSB7") << content;
    return LockFileOwner("/dev/ttyUSB7", folder);
  };
  EXPECT_EQ(LockFileOwner("/dev/ttyUSB8", folder), 0);
  const int self = ::getpid();
  EXPECT_EQ(owner("      " + std::to_string(self) + "\n"), self);
  EXPECT_EQ(owner(std::to_string(self) + "\nminicom\nbench7\n"), self);
  EXPECT_EQ(owner("2147483647\n"), 0) << "no such process";
  EXPECT_EQ(owner("minicom\n"), 0);
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace orvane
