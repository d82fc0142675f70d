#include "adapters/disk_files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "base/failure.h"

namespace orvane {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

class Disk : public testing::Test {
 protected:
  Disk() {
    std::string pattern = (fs::temp_directory_path() / "orvane_disk_XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
  }
  ~Disk() override { fs::remove_all(folder_); }

  [[nodiscard]] std::string Path(const char* name) const { return (folder_ / name).string(); }
  void Put(const char* name, const std::string& content) const { std::ofstream(Path(name)) << content; }
  [[nodiscard]] std::string ContentOf(const char* name) const {
    std::ostringstream content;
    content << std::ifstream(Path(name)).rdbuf();
    return content.str();
  }
  static std::string FailureOf(const std::function<void()>& act) {
    try {
      act();
    } catch (const StationFailure& failure) {
      return failure.what();
    }
    return "no failure";
  }

  fs::path folder_;
  DiskFiles files_{"/data/first", "/data/second"};
};

TEST_F(Disk, ReadsBytesAndFewerAtTheEnd) {
  Put("a.dat", std::string("\0\xFFhello", 7));
  const auto file = files_.OpenForReading(Path("a.dat"));
  EXPECT_EQ(file->Size(), 7U);
  EXPECT_EQ(file->Read(0, 3), std::string("\0\xFFh", 3));
  EXPECT_EQ(file->Read(5, 10), "lo");
  EXPECT_EQ(file->Read(50, 10), "");
}

TEST_F(Disk, ReadingNeverCreates) {
  EXPECT_EQ(FailureOf([&] { (void)files_.OpenForReading(Path("none.epm")); }),
            "No such file or directory: " + Path("none.epm"));
  EXPECT_FALSE(files_.Exists(Path("none.epm")));
}

TEST_F(Disk, WritingOverAFileNeverCutsIt) {
  Put("a.epm", "0123456789");
  {
    const auto file = files_.OpenForWriting(Path("a.epm"));
    file->Write(0, "abc");
    file->Write(12, "x");
  }
  EXPECT_EQ(ContentOf("a.epm"), std::string("abc3456789\0\0x", 13));
}

TEST_F(Disk, WritingCreatesTheFile) {
  files_.OpenForWriting(Path("new.epm"))->Write(0, "content");
  EXPECT_EQ(ContentOf("new.epm"), "content");
}

TEST_F(Disk, DeletesFilesAndNothingElse) {
  Put("a.epm", "x");
  files_.Delete(Path("a.epm"));
  EXPECT_FALSE(files_.Exists(Path("a.epm")));
  EXPECT_EQ(FailureOf([&] { files_.Delete(Path("a.epm")); }), "No such file or directory: " + Path("a.epm"));
  EXPECT_THAT(FailureOf([&] { files_.Delete(folder_.string()); }), HasSubstr(folder_.string()));
  EXPECT_TRUE(fs::exists(folder_));
}

TEST_F(Disk, AFolderIsNoFile) {
  EXPECT_EQ(FailureOf([&] { (void)files_.OpenForReading(folder_.string()); }), "Is a directory: " + folder_.string());
  EXPECT_EQ(FailureOf([&] { (void)files_.OpenForWriting(folder_.string()); }), "Is a directory: " + folder_.string());
}

TEST_F(Disk, AFolderThatIsMissingIsNamed) {
  EXPECT_EQ(FailureOf([&] { (void)files_.OpenForWriting(Path("none/a.epm")); }),
            "No such file or directory: " + Path("none/a.epm"));
  EXPECT_EQ(FailureOf([&] { (void)files_.OpenForWriting(""); }), "No such file or directory: ");
}

TEST_F(Disk, ANameIsNeverCutAtAZero) {
  Put("a", "x");
  const std::string name = Path("a") + std::string("\0.epm", 5);
  EXPECT_THAT(FailureOf([&] { (void)files_.OpenForReading(name); }), HasSubstr("Invalid argument"));
  EXPECT_THAT(FailureOf([&] { files_.Delete(name); }), HasSubstr("Invalid argument"));
  EXPECT_TRUE(files_.Exists(Path("a")));
}

TEST_F(Disk, APipeWithoutAWriterDoesNotHang) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_THAT(FailureOf([&] { (void)files_.OpenForReading(Path("pipe"))->Read(0, 1); }), HasSubstr("Illegal seek"));
}

/// Files of this process cannot grow beyond a size, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{size, old_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &old_);
    (void)std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit old_{};
  void (*handler_)(int);
};

TEST_F(Disk, AFileThatCouldNotBeWrittenWholeIsTakenAwayAgain) {
  const FullDisk full(4);
  EXPECT_EQ(FailureOf([&] { files_.OpenForWriting(Path("new.epm"))->Write(0, "123456"); }),
            "File too large: " + Path("new.epm"));
  EXPECT_FALSE(files_.Exists(Path("new.epm")));
}

TEST_F(Disk, AFileThatWasThereStaysWhenItCannotBeWritten) {
  Put("old.epm", "old");
  const FullDisk full(4);
  EXPECT_EQ(FailureOf([&] { files_.OpenForWriting(Path("old.epm"))->Write(0, "123456"); }),
            "File too large: " + Path("old.epm"));
  EXPECT_EQ(ContentOf("old.epm"), "1234");
}

TEST_F(Disk, InstalledFilesHaveTwoPlaces) {
  EXPECT_EQ(files_.SystemPath("TI532.epm"), "/data/first/TI532.epm");
  EXPECT_EQ(files_.TempPath("TI532.epm"), "/data/second/TI532.epm");
}

}  // namespace
}  // namespace orvane
