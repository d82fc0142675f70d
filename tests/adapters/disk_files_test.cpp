#include "adapters/disk_files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/failure.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

constexpr std::uint64_t kMost = 1000;

class Disk : public testing::Test {
 protected:
  [[nodiscard]] std::string Path(const std::string& name) const { return folder_.Path(name); }
  std::string ReadAll(const std::string& path) { return ReadWhole(*files_.OpenForReading(path, kMost)); }
  static std::string FailureOf(const std::function<void()>& act) {
    try {
      act();
    } catch (const StationFailure& failure) {
      return failure.what();
    }
    return "no failure";
  }

  ScratchFolder folder_;
  DiskFiles files_{"/data/first", "/data/second"};
};

TEST_F(Disk, ReadsBytesAndFewerAtTheEnd) {
  folder_.Put("a.dat", std::string("\0\xFFhello", 7));
  const auto file = files_.OpenForReading(Path("a.dat"), kMost);
  EXPECT_EQ(file->Size(), 7U);
  EXPECT_EQ(file->Read(0, 3), std::string("\0\xFFh", 3));
  EXPECT_EQ(file->Read(5, 10), "lo");
  EXPECT_EQ(file->Read(50, 10), "");
}

TEST_F(Disk, ReadingNeverCreates) {
  EXPECT_EQ(FailureOf([&] { ReadAll(Path("none.epm")); }), "No such file or directory: " + Path("none.epm"));
  EXPECT_FALSE(files_.Exists(Path("none.epm")));
}

TEST_F(Disk, AFileBeyondItsBoundIsRefusedHoweverLittleOfItIsThere) {
  folder_.Put("a", std::string(kMost, 'x'));
  EXPECT_EQ(ReadAll(Path("a")).size(), kMost);
  folder_.Put("b", std::string(kMost + 1, 'x'));
  EXPECT_EQ(FailureOf([&] { ReadAll(Path("b")); }), "File too large: " + Path("b"));
  fs::resize_file(Path("b"), std::uintmax_t{64} << 30);
  EXPECT_EQ(FailureOf([&] { ReadAll(Path("b")); }), "File too large: " + Path("b"));
}

TEST_F(Disk, WhatIsNoRegularFileIsNotRead) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(FailureOf([&] { ReadAll(folder_.Path()); }), "Is a directory: " + folder_.Path());
  for (const std::string& path : {Path("pipe"), std::string("/dev/zero"), std::string("/dev/null")}) {
    EXPECT_EQ(FailureOf([&] { ReadAll(path); }), "Not a regular file: " + path);
  }
}

TEST_F(Disk, ADeviceIsNotEvenOpened) {
  // The name of a terminal pair's end: its opening would show at the other.
  const int line = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_TRUE(line >= 0 && ::grantpt(line) == 0 && ::unlockpt(line) == 0);
  const std::string device = ::ptsname(line);
  EXPECT_EQ(FailureOf([&] { ReadAll(device); }), "Not a regular file: " + device);
  EXPECT_EQ(FailureOf([&] { (void)files_.OpenForAppending(device); }), "Not a regular file: " + device);
  EXPECT_NE(FailureOf([&] { WriteWhole(files_, device, OldFile::IsOverlaid, "x"); }), "no failure");
  // Until an end was open once, the other is not hung up.
  pollfd state{line, POLLHUP, 0};
  EXPECT_EQ(::poll(&state, 1, 0), 0);
  ::close(line);
}

TEST_F(Disk, AFileOfTheSystemThatHasNoEndIsEmpty) { EXPECT_EQ(ReadAll("/proc/self/mem"), ""); }

TEST_F(Disk, APathThatCannotBeLookedUpCountsAsNotThere) {
  fs::create_symlink("loop", Path("loop"));
  folder_.Put("file", "x");
  fs::create_directory(Path("locked"));
  folder_.Put("locked/a", "x");
  EXPECT_TRUE(files_.Exists(Path("locked/a")));
  fs::permissions(Path("locked"), fs::perms::none);
  for (const std::string& name : {std::string(300, 'n'), std::string("loop"), std::string("file/a"),
                                  std::string(5000, 'p'), std::string("a\0b", 3)}) {
    EXPECT_FALSE(files_.Exists(Path(name))) << name;
    EXPECT_NE(FailureOf([&] { (void)files_.OpenForAppending(Path(name)); }), "no failure");
  }
  // Nothing is locked to root.
  if (::geteuid() != 0) {
    EXPECT_FALSE(files_.Exists(Path("locked/a")));
  }
  fs::permissions(Path("locked"), fs::perms::owner_all);
}

TEST_F(Disk, ANameIsNeverCutAtAZero) {
  folder_.Put("a", "x");
  const std::string name = Path("a") + std::string("\0.epm", 5);
  EXPECT_THAT(FailureOf([&] { ReadAll(name); }), HasSubstr("Invalid argument"));
  EXPECT_THAT(FailureOf([&] { WriteWhole(files_, name, OldFile::Goes, "y"); }), HasSubstr("Invalid argument"));
  EXPECT_EQ(folder_.ContentOf("a"), "x");
}

TEST_F(Disk, AGrowingFileGrowsFromWhatItHas) {
  folder_.Put("a.LOG", "old ");
  std::string bytes = "new";
  const auto log = files_.OpenForAppending(Path("a.LOG"));
  log->Append(bytes);
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(folder_.ContentOf("a.LOG"), "old new");
  folder_.Put("a.LOG", "");  // Emptied by somebody else: no gap of zeros.
  bytes = "more";
  log->Append(bytes);
  EXPECT_EQ(folder_.ContentOf("a.LOG"), "more");
}

TEST_F(Disk, NothingButAFileGrows) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  for (const std::string& path : {Path("pipe"), std::string("/dev/null"), folder_.Path(), Path("none/a.LOG")}) {
    EXPECT_NE(FailureOf([&] { (void)files_.OpenForAppending(path); }), "no failure") << path;
  }
}

TEST_F(Disk, InstalledFilesHaveTwoPlaces) {
  EXPECT_EQ(files_.SystemPath("TI532.epm"), "/data/first/TI532.epm");
  EXPECT_EQ(files_.TempPath("TI532.epm"), "/data/second/TI532.epm");
}

}  // namespace
}  // namespace orvane::test
