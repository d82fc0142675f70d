// The lock of an instrument that several stations use: who has it, who is next, and what else can lie under its name.

#include "app/sharing/lock_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kRoute = "tcp:bench7:5025";

std::string FaultOf(LockFile& lock) {
  try {
    (void)lock.TryTake("A");
    return "no fault";
  } catch (const LockFault& fault) {
    return fault.what();
  }
}

class LockFileTest : public testing::Test {
 protected:
  ScratchFolder folder_;
  LockFile a_{folder_.Path(), kRoute};
  LockFile b_{folder_.Path(), kRoute};
};

TEST_F(LockFileTest, OneStationHasItAndTheOthersAreToldWhich) {
  EXPECT_TRUE(a_.TryTake("station A, process 7"));
  EXPECT_TRUE(a_.TryTake("station A, process 7")) << "it has it already";
  EXPECT_FALSE(b_.TryTake("station B, process 8"));
  EXPECT_EQ(b_.Holder(), "station A, process 7");
  a_.GiveBack();
  EXPECT_TRUE(b_.TryTake("station B, process 8"));
  EXPECT_FALSE(a_.TryTake("station A, process 7"));
  EXPECT_EQ(a_.Holder(), "station B, process 8");
}

TEST_F(LockFileTest, IsOfThatRouteAlone) {
  LockFile other(folder_.Path(), "tcp:bench7:5026");
  EXPECT_TRUE(a_.TryTake("A"));
  EXPECT_TRUE(other.TryTake("B"));
  EXPECT_THAT(folder_.Names(), ElementsAre("orvane-tcp_bench7_5025.lock", "orvane-tcp_bench7_5026.lock"));
}

TEST_F(LockFileTest, WhoWaitsComesAheadOfWhoGaveItBack) {
  LockFile c(folder_.Path(), kRoute);
  EXPECT_TRUE(a_.TryTake("A"));
  EXPECT_FALSE(b_.TryTake("B"));
  a_.GiveBack();
  EXPECT_FALSE(a_.TryTake("A")) << "B is next";
  EXPECT_FALSE(c.TryTake("C"));
  EXPECT_TRUE(b_.TryTake("B"));
}

TEST_F(LockFileTest, WhoWaitsNoLongerHoldsUpNobody) {
  EXPECT_TRUE(a_.TryTake("A"));
  EXPECT_FALSE(b_.TryTake("B"));
  b_.StopWaiting();
  a_.GiveBack();
  EXPECT_TRUE(a_.TryTake("A"));
}

TEST_F(LockFileTest, IsGoneWithTheProcessThatHeldItHoweverThatEnds) {
  std::array<int, 2> told{};
  ASSERT_EQ(::pipe(told.data()), 0);
  const pid_t holder = ::fork();
  if (holder == 0) {
    LockFile lock(folder_.Path(), kRoute);
    const char taken = lock.TryTake("the one that dies") ? 'y' : 'n';
    if (::write(told[1], &taken, 1) == 1) ::pause();
    ::_exit(0);
  }
  char taken = 0;
  ASSERT_EQ(::read(told[0], &taken, 1), 1);
  EXPECT_EQ(taken, 'y');
  EXPECT_FALSE(a_.TryTake("A"));
  EXPECT_EQ(a_.Holder(), "the one that dies");
  ::kill(holder, SIGKILL);
  ::waitpid(holder, nullptr, 0);
  EXPECT_TRUE(a_.TryTake("A"));
  for (const int end : told) ::close(end);
}

TEST_F(LockFileTest, IsEverybodysWhateverTheMaskOfItsMaker) {
  const mode_t old = ::umask(S_IRWXG | S_IRWXO);
  EXPECT_TRUE(a_.TryTake("A"));
  ::umask(old);
  struct stat facts {};
  ASSERT_EQ(::stat(a_.Path().c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777U, 0666U);
}

TEST_F(LockFileTest, TakesNothingButAPlainFileUnderItsName) {
  folder_.Put("precious", "not a lock");
  fs::create_symlink(folder_.Path("precious"), a_.Path());
  EXPECT_THAT(FaultOf(a_), HasSubstr("orvane-tcp_bench7_5025.lock: "));
  EXPECT_EQ(folder_.ContentOf("precious"), "not a lock");

  fs::remove(a_.Path());
  fs::create_hard_link(folder_.Path("precious"), a_.Path());
  EXPECT_THAT(FaultOf(a_), HasSubstr("it is no plain file"));
  EXPECT_EQ(folder_.ContentOf("precious"), "not a lock");

  fs::remove(a_.Path());
  ASSERT_EQ(::mkfifo(a_.Path().c_str(), S_IRWXU), 0);
  EXPECT_THAT(FaultOf(a_), HasSubstr("it is no plain file"));

  fs::remove(a_.Path());
  EXPECT_EQ(FaultOf(a_), "no fault");
}

TEST_F(LockFileTest, AFolderThatIsNotThereIsAFaultThatNamesTheFile) {
  LockFile lost(folder_.Path("nowhere"), kRoute);
  EXPECT_EQ(FaultOf(lost), folder_.Path("nowhere/orvane-tcp_bench7_5025.lock") + ": No such file or directory");
}

TEST_F(LockFileTest, WhatSomebodyWroteIntoItComesAsOneShortLine) {
  EXPECT_TRUE(a_.TryTake("A"));
  folder_.Put("orvane-tcp_bench7_5025.lock", "\x1b[31mred\n" + std::string(5000, 'x'));
  EXPECT_FALSE(b_.TryTake("B"));
  EXPECT_THAT(b_.Holder(), testing::StartsWith("[31mred"));
  EXPECT_LE(b_.Holder().size(), 200U);
}

TEST_F(LockFileTest, ALongNameIsCutToOneThatAFileMayHave) {
  LockFile lock(folder_.Path(), "vxi11:" + std::string(1000, 'h'));
  EXPECT_EQ(FaultOf(lock), "no fault");
}

}  // namespace
}  // namespace orvane::test
