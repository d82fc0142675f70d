#include "adapters/sql/run_writer.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvane::test {
namespace {

TEST(RunWriter, LivesAsLongAsItsProcess) {
  const WriterMark here = CurrentWriter();
  EXPECT_EQ(here.process, ::getpid());
  EXPECT_NE(here.host, "");
  EXPECT_GT(here.started, 0);
  EXPECT_TRUE(WriterMayLive(here));
  EXPECT_EQ(CurrentWriter(), here);
}

TEST(RunWriter, IsNoMoreWhenItsProcessWasKilledAlsoWhereNobodyHasAskedForItsEnd) {
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    const std::int64_t started = CurrentWriter().started;
    if (::write(pipe[1], &started, sizeof started) != sizeof started) ::_exit(1);
    ::pause();
  }
  WriterMark writer = CurrentWriter();
  writer.process = child;
  ASSERT_EQ(::read(pipe[0], &writer.started, sizeof writer.started), static_cast<ssize_t>(sizeof writer.started));
  EXPECT_TRUE(WriterMayLive(writer));
  ::kill(child, SIGKILL);
  siginfo_t facts{};
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &facts, WEXITED | WNOWAIT), 0);
  EXPECT_FALSE(WriterMayLive(writer)) << "a zombie writes nothing";
  ::waitpid(child, nullptr, 0);
  EXPECT_FALSE(WriterMayLive(writer));
  ::close(pipe[0]);
  ::close(pipe[1]);
}

TEST(RunWriter, IsKnownFromAnotherProcessOfItsNumber) {
  WriterMark other = CurrentWriter();
  other.started -= 1;
  EXPECT_FALSE(WriterMayLive(other));
  other = CurrentWriter();
  other.boot = "00000000-0000-0000-0000-000000000000 pid:[1]";
  EXPECT_FALSE(WriterMayLive(other)) << "the host was started anew";
}

TEST(RunWriter, IsNotJudgedOnAnotherHostNorAmongProcessesThatAreNotSeen) {
  WriterMark other = CurrentWriter();
  other.started -= 1;
  other.host += "-2";
  EXPECT_TRUE(WriterMayLive(other));
  other = CurrentWriter();
  other.started -= 1;
  other.boot += "1";
  EXPECT_TRUE(WriterMayLive(other));
}

}  // namespace
}  // namespace orvane::test
