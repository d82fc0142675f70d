#include <signal.h>
#include <unistd.h>

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

// Wherever a writer is killed, of a record there is all or nothing, and whatever it said to be there stays.
TEST_P(StoreWritersOf, AKilledWriterLeavesWholeRecordsOnly) {
  constexpr int kKills = 50;
  constexpr int kMost = 100'000;
  Open();
  std::mt19937 chance(7);
  int next = 0;
  int inTheMiddle = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    int said[2];
    ASSERT_EQ(::pipe(said), 0);
    const int first = next;
    const pid_t writer = Forked([&] {
      const auto store = Open({.patienceMs = 60'000});
      for (int number = first; number < kMost; ++number) {
        store->Begin(TypicalRecord(number).identity, {});
        store->Finish(TypicalRecord(number));
        if (::write(said[1], "x", 1) != 1) return;
      }
    });
    ::close(said[1]);
    char byte = 0;
    ASSERT_EQ(::read(said[0], &byte, 1), 1) << "the first record is there";
    std::this_thread::sleep_for(std::chrono::microseconds(chance() % 15'000));
    ASSERT_EQ(::kill(writer, SIGKILL), 0);
    EXPECT_EQ(EndOf(writer), -SIGKILL);
    int finished = 1;
    while (::read(said[0], &byte, 1) == 1) ++finished;
    ::close(said[0]);
    const auto store = Open({.patienceMs = 60'000});
    for (int number = first; number < first + finished; ++number) {
      ASSERT_EQ(store->Load(IdOf(number)), TypicalRecord(number)) << number;
    }
    next = first + finished;
    if (const auto last = store->Load(IdOf(next))) {
      ++inTheMiddle;
      if (last->end) {
        EXPECT_EQ(*last, TypicalRecord(next)) << "committed, and killed ahead of saying so";
      } else {
        EXPECT_EQ(*last, RunRecord{TypicalRecord(next).identity});
      }
    }
    next += 1;
    ASSERT_EQ(store->Load(IdOf(next)), std::nullopt);
  }
  EXPECT_THAT(Open()->CheckStore(), IsEmpty());
  EXPECT_GT(inTheMiddle, kKills / 5) << "most kills are to strike a record that is being written";
}

}  // namespace
}  // namespace orvane::test
