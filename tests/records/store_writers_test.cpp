#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "records/store_test.h"

namespace orvane::test {
namespace {

using testing::IsEmpty;

class StoreWritersOf : public StoreTest {};
ON_BOTH_ENGINES(StoreWritersOf);

TEST_P(StoreWritersOf, TwentyProgramsOnOneStoreLoseNothing) {
  constexpr int kWriters = 20;
  constexpr int kRecords = 50;
  Open();
  std::vector<pid_t> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.push_back(Forked([&, writer] {
      const auto store = Open({.patienceMs = 120'000});
      for (int i = 0; i < kRecords; ++i) {
        const RunRecord record = SmallRecord(i * kWriters + writer);
        store->Begin(record.identity, {"here", "boot", writer, 1});
        if (!store->Finish(record)) throw StoreFault("left alone");
      }
    }));
  }
  for (const pid_t writer : writers) EXPECT_EQ(EndOf(writer), 0);
  const auto store = Open();
  ASSERT_EQ(store->List({}).size(), static_cast<std::size_t>(kWriters * kRecords));
  EXPECT_THAT(store->OpenRuns(), IsEmpty());
  for (int number = 0; number < kWriters * kRecords; ++number) {
    ASSERT_EQ(store->Load(IdOf(number)), SmallRecord(number)) << number;
  }
  EXPECT_THAT(store->CheckStore(), IsEmpty());
}

class KilledWriterOf : public StoreTest {
 protected:
  using Clock = std::chrono::steady_clock;

  /// Writes whole records from this number on, and says when each was begun and when it is finished.
  pid_t WriterFrom(int number) {
    EXPECT_EQ(::pipe(said_), 0);
    const pid_t writer = Forked([&, number]() mutable {
      const auto store = Open({.patienceMs = 60'000});
      while (true) {
        const RunRecord record = TypicalRecord(number++);
        store->Begin(record.identity, {});
        Say('b');
        store->Finish(record);
        Say('f');
      }
    });
    ::close(said_[1]);
    return writer;
  }
  void Say(char byte) {
    if (::write(said_[1], &byte, 1) != 1) throw StoreFault("nobody listens");
  }
  /// 0 when the writer is no more.
  char Heard() {
    char byte = 0;
    return ::read(said_[0], &byte, 1) == 1 ? byte : '\0';
  }
  /// Kills it while it finishes its second record, or just behind that. @return how many it said to have finished.
  int Kill(pid_t writer) {
    EXPECT_EQ(Heard(), 'b');
    const auto began = Clock::now();
    EXPECT_EQ(Heard(), 'f');
    const auto takes = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - began).count();
    EXPECT_EQ(Heard(), 'b');
    std::this_thread::sleep_for(std::chrono::microseconds(static_cast<long>(chance_()) % std::max(takes, 1L)));
    ::kill(writer, SIGKILL);
    EXPECT_EQ(EndOf(writer), -SIGKILL);
    int finished = 1;
    for (char byte = Heard(); byte != '\0'; byte = Heard()) finished += byte == 'f' ? 1 : 0;
    ::close(said_[0]);
    return finished;
  }

  std::mt19937 chance_{7};
  int said_[2] = {-1, -1};
};
ON_BOTH_ENGINES(KilledWriterOf);

// Wherever it is killed, of a record there is all or nothing, and whatever it said to be there stays.
TEST_P(KilledWriterOf, LeavesWholeRecordsOnly) {
  constexpr int kKills = 50;
  Open();
  int next = 0;
  int open = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    const int finished = Kill(WriterFrom(next));
    const auto store = Open({.patienceMs = 60'000});
    for (const int behind = next + finished; next < behind; ++next) {
      ASSERT_EQ(store->Load(IdOf(next)), TypicalRecord(next)) << next;
    }
    if (const auto last = store->Load(IdOf(next)); last && last->end) {
      EXPECT_EQ(*last, TypicalRecord(next)) << "finished, and killed ahead of saying so";
    } else if (last) {
      ++open;
      EXPECT_EQ(*last, RunRecord{TypicalRecord(next).identity});
    }
    ASSERT_EQ(store->Load(IdOf(++next)), std::nullopt);
  }
  EXPECT_THAT(Open()->CheckStore(), IsEmpty());
  EXPECT_GT(open, 0) << "none was killed in the middle";
}

}  // namespace
}  // namespace orvane::test
