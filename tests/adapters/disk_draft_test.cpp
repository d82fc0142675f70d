// Files that take the place of others.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "adapters/disk_files.h"
#include "base/failure.h"
#include "support/faulty_disk.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using testing::ElementsAre;
using Kind = FaultyDisk::Fault::Kind;
namespace fs = std::filesystem;

class DraftOnDisk : public testing::Test {
 protected:
  [[nodiscard]] std::string Path(const std::string& name = "a.epm") const { return folder_.Path(name); }
  /// The failure's text, or "".
  std::string Save(OldFile old, const std::string& content, const std::string& name = "a.epm") {
    std::string text;
    PassOver([&] { WriteWhole(files_, Path(name), old, content); },
             [&](const StationFailure& failure) { text = failure.what(); });
    return text;
  }
  [[nodiscard]] mode_t ModeOf(const std::string& name) const {
    struct stat facts {};
    EXPECT_EQ(::lstat(Path(name).c_str(), &facts), 0);
    return facts.st_mode & 07777;
  }

  ScratchFolder folder_;
  FaultyDisk* disk_ = new FaultyDisk;
  DiskFiles files_{"/data/first", "/data/second", std::unique_ptr<DiskCalls>(disk_)};
};

TEST_F(DraftOnDisk, TakesThePlaceOfTheOldFileWhole) {
  EXPECT_EQ(Save(OldFile::IsOverlaid, "new"), "");
  EXPECT_EQ(folder_.ContentOf("a.epm"), "new");
  folder_.Put("a.epm", "0123456789");
  EXPECT_EQ(Save(OldFile::IsOverlaid, "abc"), "");
  EXPECT_EQ(folder_.ContentOf("a.epm"), "abc3456789") << "the old tail stays";
  EXPECT_EQ(Save(OldFile::IsOverlaid, "0123456789xyz"), "");
  EXPECT_EQ(folder_.ContentOf("a.epm"), "0123456789xyz");
  EXPECT_EQ(Save(OldFile::Goes, "new"), "");
  EXPECT_EQ(folder_.ContentOf("a.epm"), "new");
  EXPECT_THAT(folder_.Names(), ElementsAre("a.epm"));
}

TEST_F(DraftOnDisk, ThatIsNeverFinishedLeavesEverythingAsItWas) {
  folder_.Put("a.epm", "old");
  {
    const auto draft = files_.BeginDraft(Path(), OldFile::Goes);
    EXPECT_EQ(folder_.ContentOf("a.epm"), "old");
  }
  EXPECT_EQ(folder_.ContentOf("a.epm"), "old");
  EXPECT_THAT(folder_.Names(), ElementsAre("a.epm"));
}

TEST_F(DraftOnDisk, IsOnTheDiskBeforeItTakesTheNameAndTheNameBehindThat) {
  folder_.Put("a.epm", "a longer old file");
  disk_->Set({});
  EXPECT_EQ(Save(OldFile::IsOverlaid, "new"), "");
  std::vector<std::string> order;
  for (const std::string& call : disk_->Calls()) {
    if (call == "write" || call == "sync" || call == "rename") order.push_back(call);
  }
  EXPECT_THAT(order, ElementsAre("write", "write", "sync", "rename", "sync"));
}

TEST_F(DraftOnDisk, WhoseDiskFailsLeavesTheOldFileAndNothingElse) {
  for (const OldFile old : {OldFile::Goes, OldFile::IsOverlaid}) {
    for (const Kind kind : {Kind::Fails, Kind::ShortAndFull}) {
      for (int at = 1;; ++at) {
        folder_.Put("a.epm", "of yesterday");
        disk_->Set({kind, at, EIO});
        const std::string failure = Save(old, "new");
        const bool struck = disk_->Struck();
        const auto calls = disk_->Calls();
        disk_->Set({});
        const std::string content = folder_.ContentOf("a.epm");
        const std::string whole = old == OldFile::Goes ? "new" : "newyesterday";
        SCOPED_TRACE(calls.at(std::min<std::size_t>(static_cast<std::size_t>(at), calls.size()) - 1) + " " +
                     std::to_string(at) + " " + content + " " + failure);
        EXPECT_TRUE(content == "of yesterday" || content == whole);
        if (failure.empty()) {
          EXPECT_EQ(content, whole);
        } else {
          EXPECT_EQ(failure, "Input/output error: " + Path());
        }
        EXPECT_THAT(folder_.Names(), ElementsAre("a.epm"));
        if (!struck) break;
      }
    }
  }
}

TEST_F(DraftOnDisk, OfAProcessThatIsKilledHindersNoLaterOne) {
  const auto killedAt = [&](int at, Kind kind) {
    const pid_t child = ::fork();
    if (child == 0) {
      disk_->Set({kind, at});
      Save(OldFile::Goes, "new content");
      ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == FaultyDisk::kKilledStatus;
  };
  for (const Kind kind : {Kind::Killed, Kind::KilledHalf}) {
    for (int at = 1;; ++at) {
      folder_.Put("a.epm", "old");
      if (!killedAt(at, kind)) break;
      const std::string content = folder_.ContentOf("a.epm");
      EXPECT_TRUE(content == "old" || content == "new content") << at << ": " << content;
      EXPECT_EQ(Save(OldFile::Goes, "next"), "") << at;
      EXPECT_EQ(folder_.ContentOf("a.epm"), "next");
    }
  }
  for (const std::string& name : folder_.Names()) {
    EXPECT_TRUE(name == "a.epm" || name.rfind(".orvane-", 0) == 0) << name;
  }
}

TEST_F(DraftOnDisk, FindsANameAlsoWhereAKilledProcessOfItsNumberLeftSome) {
  folder_.Put(".orvane-" + std::to_string(::getpid()) + "-1", "half a file");
  EXPECT_EQ(Save(OldFile::Goes, "new"), "");
  EXPECT_EQ(folder_.ContentOf("a.epm"), "new");
  EXPECT_EQ(folder_.ContentOf(".orvane-" + std::to_string(::getpid()) + "-1"), "half a file");
}

TEST_F(DraftOnDisk, NothingButAFileIsReplaced) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  fs::create_directory(Path("folder"));
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(Path("socket").size(), sizeof address.sun_path);
  Path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  fs::create_symlink("/dev/null", Path("device"));
  for (const OldFile old : {OldFile::Goes, OldFile::IsOverlaid}) {
    EXPECT_EQ(Save(old, "x", "folder"), "Is a directory: " + Path("folder"));
    for (const char* name : {"pipe", "socket", "device"}) {
      EXPECT_EQ(Save(old, "x", name), "Not a regular file: " + Path(name));
    }
  }
  ::close(socket);
  EXPECT_TRUE(fs::is_fifo(Path("pipe")));
  EXPECT_TRUE(fs::is_socket(Path("socket")));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_THAT(folder_.Names(), ElementsAre("device", "folder", "pipe", "socket"));
}

TEST_F(DraftOnDisk, WhatCameToStandThereMeanwhileIsNotReplacedEither) {
  const auto draft = files_.BeginDraft(Path(), OldFile::Goes);
  ASSERT_EQ(::mkfifo(Path().c_str(), 0600), 0);
  EXPECT_THROW(draft->Finish("x"), StationFailure);
  EXPECT_TRUE(fs::is_fifo(Path()));
}

TEST_F(DraftOnDisk, ALinkStaysAndWhatItPointsToIsReplaced) {
  fs::create_directory(Path("real"));
  folder_.Put("real/unit.epm", "0123456789");
  fs::create_symlink("real/unit.epm", Path());
  EXPECT_EQ(Save(OldFile::IsOverlaid, "abc"), "");
  EXPECT_TRUE(fs::is_symlink(Path()));
  EXPECT_EQ(folder_.ContentOf("real/unit.epm"), "abc3456789");
  EXPECT_EQ(Save(OldFile::Goes, "new"), "");
  EXPECT_TRUE(fs::is_symlink(Path()));
  EXPECT_EQ(folder_.ContentOf("real/unit.epm"), "new");
  fs::remove(Path("real/unit.epm"));
  EXPECT_EQ(Save(OldFile::Goes, "new"), "File exists: " + Path()) << "a link to nothing";
  EXPECT_TRUE(fs::is_symlink(Path()));
}

TEST_F(DraftOnDisk, KeepsTheModeOfTheOldFileAndGivesANewOneTheUsualOne) {
  const mode_t mask = ::umask(022);
  folder_.Put("a.epm", "old");
  ::chmod(Path().c_str(), 0660);
  EXPECT_EQ(Save(OldFile::Goes, "new"), "");
  EXPECT_EQ(ModeOf("a.epm"), 0660U);
  EXPECT_EQ(Save(OldFile::Goes, "new", "b.epm"), "");
  EXPECT_EQ(ModeOf("b.epm"), 0644U);
  ::umask(mask);
}

TEST_F(DraftOnDisk, KeepsTheOwnerOfTheOldFileWhereItMay) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root gives files away";
  folder_.Put("a.epm", "old");
  ASSERT_EQ(::chown(Path().c_str(), 1234, 4321), 0);
  EXPECT_EQ(Save(OldFile::Goes, "new"), "");
  struct stat facts {};
  ASSERT_EQ(::stat(Path().c_str(), &facts), 0);
  EXPECT_EQ(facts.st_uid, 1234U);
  EXPECT_EQ(facts.st_gid, 4321U);
}

TEST_F(DraftOnDisk, AFolderThatTakesNoNewFileIsTold) {
  folder_.Put("a.epm", "old");
  disk_->Set({Kind::Fails, 3, EACCES});
  ASSERT_EQ(Save(OldFile::Goes, "new"), "Permission denied: " + Path() + " (its folder takes no new file)");
  EXPECT_EQ(disk_->Calls().at(2), "open");
  disk_->Set({});
  EXPECT_EQ(folder_.ContentOf("a.epm"), "old");
  EXPECT_EQ(Save(OldFile::Goes, "new", "none/b.epm"), "No such file or directory: " + Path("none/b.epm"));
  EXPECT_EQ(Save(OldFile::Goes, "new", std::string(300, 'n')), "File name too long: " + Path(std::string(300, 'n')));
}

TEST_F(DraftOnDisk, ANameMayBeAsLongAsTheSystemAllows) {
  const std::string name(255, 'n');
  EXPECT_EQ(Save(OldFile::Goes, "new", name), "");
  EXPECT_EQ(folder_.ContentOf(name), "new");
}

TEST_F(DraftOnDisk, ATailThatNoFileOfTheStationHasIsNotCarriedOver) {
  folder_.Put("a.epm", "old");
  fs::resize_file(Path(), std::uintmax_t{64} << 30);
  EXPECT_EQ(Save(OldFile::IsOverlaid, "new"), "File too large: " + Path());
  EXPECT_EQ(fs::file_size(Path()), std::uintmax_t{64} << 30);
  EXPECT_EQ(Save(OldFile::Goes, "new"), "");
  EXPECT_EQ(folder_.ContentOf("a.epm"), "new");
}

TEST_F(DraftOnDisk, ALogThatTookHalfOfItsBytesHasTheRestStillToCome) {
  const auto log = files_.OpenForAppending(Path("a.LOG"));
  std::string bytes = "before ";
  log->Append(bytes);
  disk_->Set({Kind::ShortAndFull, 1, ENOSPC});
  bytes = "abcdefgh";
  EXPECT_THROW(log->Append(bytes), StationFailure);
  EXPECT_EQ(bytes, "efgh");
  EXPECT_EQ(folder_.ContentOf("a.LOG"), "before abcd") << "a log keeps all that it has";
  log->Append(bytes);
  EXPECT_EQ(folder_.ContentOf("a.LOG"), "before abcdefgh");
}

}  // namespace
}  // namespace orvane::test
