#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "adapters/sql/sqlite_place.h"
#include "records/store_test.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class SqliteFaults : public StoreTest {
 protected:
  [[nodiscard]] std::string Path() const { return folder_.Path("records.sqlite"); }
  /// The fault of a store there and of a record put into it.
  [[nodiscard]] std::string FaultOfFinish() {
    return FaultOf([&] { Open({.patienceMs = 100})->Finish(SmallRecord(1)); });
  }
};
INSTANTIATE_TEST_SUITE_P(On, SqliteFaults, testing::Values("Sqlite"), NameOfEngine);

TEST_P(SqliteFaults, AStoreThatSomebodyHoldsIsWaitedForAndNotForEver) {
  const auto store = Open({.patienceMs = 300});
  SqlConnection other(SqliteEngine(), SqlitePlace(Path(), false, 0), 0, [](SqlConnection&) {});
  {
    const SqlTransaction held(other);
    const auto began = std::chrono::steady_clock::now();
    const std::string fault = FaultOf([&] { store->Finish(SmallRecord(1)); });
    EXPECT_EQ(fault, "The store " + Path() + " is held by another program: database is locked.");
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(250)) << "it was waited for";
    EXPECT_THAT(store->List({}), IsEmpty()) << "what reads need not wait";
  }
  EXPECT_TRUE(store->Finish(SmallRecord(1)));
  EXPECT_EQ(store->Load(IdOf(1)), SmallRecord(1));
}

TEST_P(SqliteFaults, AFileThatMayNotBeWrittenToSaysSo) {
  if (::geteuid() == 0) {
    // Nothing is forbidden to a superuser.
    const pid_t ordinary = Forked([&] {
      Open();
      ::chmod(Path().c_str(), 0444);
      ::chmod(folder_.Path().c_str(), 0777);
      if (::setgid(65534) != 0 || ::setuid(65534) != 0) throw StoreFault("still a superuser");
      EXPECT_THAT(FaultOfFinish(), StartsWith("The store " + Path() + " may not be written to: "));
      if (HasFailure()) throw StoreFault("another fault");
    });
    EXPECT_EQ(EndOf(ordinary), 0);
    return;
  }
  Open();
  ::chmod(Path().c_str(), 0444);
  EXPECT_THAT(FaultOfFinish(), StartsWith("The store " + Path() + " may not be written to: "));
}

TEST_P(SqliteFaults, AnEmptyFileBecomesAStore) {
  folder_.Put("records.sqlite", "");
  EXPECT_EQ(FaultOfFinish(), "");
  EXPECT_EQ(Open()->Load(IdOf(1)), SmallRecord(1));
}

TEST_P(SqliteFaults, WhatIsNoStoreIsLeftAsItIs) {
  const std::string text =
      "This is somebody's text, which is longer than a head of a database: " + std::string(200, '.');
  folder_.Put("records.sqlite", text);
  EXPECT_THAT(FaultOfFinish(), StartsWith("The store " + Path() + " is damaged, or no store: "));
  EXPECT_EQ(folder_.ContentOf("records.sqlite"), text);
  fs::remove(Path());
  static_cast<void>(Ask("CREATE TABLE addresses (name TEXT)"));
  EXPECT_EQ(FaultOfFinish(), "The store " + Path() + " is a database of something else.");
  EXPECT_EQ(Ask("SELECT group_concat(name) FROM sqlite_master"), "addresses");
}

TEST_P(SqliteFaults, DamageInTheMiddleIsSaidAndTakesNoRecordForAnother) {
  {
    const auto store = Open();
    for (int number = 0; number < 20; ++number) ASSERT_TRUE(store->Finish(SmallRecord(number)));
  }
  std::string bytes = folder_.ContentOf("records.sqlite");
  constexpr std::size_t kHead = 2 * 4096;
  ASSERT_GT(bytes.size(), 3 * kHead);
  bytes.replace(kHead, bytes.size() - kHead - 4096, bytes.size() - kHead - 4096, '\x5A');
  folder_.Put("records.sqlite", bytes);
  EXPECT_THAT(FaultOfFinish(), StartsWith("The store " + Path() + " is damaged, or no store: "));
  for (int number = 0; number < 20; ++number) {
    EXPECT_THAT(FaultOf([&] {
                  if (Open()->Load(IdOf(number)) != SmallRecord(number))
                    throw StoreFault("is damaged: another record");
                }),
                HasSubstr("is damaged"));
  }
}

TEST_P(SqliteFaults, AChangedByteAnywhereIsFoundOrHarmsNothing) {
  {
    const auto store = Open();
    ASSERT_TRUE(store->Finish(SmallRecord(1)));
  }
  const std::string whole = folder_.ContentOf("records.sqlite");
  int found = 0;
  for (std::size_t at = 0; at < whole.size(); at += 997) {
    std::string bytes = whole;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x10);
    folder_.Put("records.sqlite", bytes);
    for (const char* const beside : {"records.sqlite-wal", "records.sqlite-shm"}) fs::remove(folder_.Path(beside));
    try {
      const auto store = Open({.readOnly = true});
      const bool clean = store->Check(IdOf(1)).empty() && store->CheckStore().empty();
      if (clean) {
        EXPECT_EQ(store->Load(IdOf(1)), SmallRecord(1)) << at;
      } else {
        ++found;
      }
    } catch (const StoreFault&) {
      ++found;
    }
  }
  EXPECT_GT(found, 0);
}

TEST_P(SqliteFaults, WhatIsNoRegularFileIsNotOpened) {
  fs::create_directory(Path());
  EXPECT_EQ(FaultOfFinish(), "The store " + Path() + " is no regular file.");
  fs::remove(Path());
  ASSERT_EQ(::mkfifo(Path().c_str(), 0600), 0);
  EXPECT_EQ(FaultOfFinish(), "The store " + Path() + " is no regular file.");
}

TEST_P(SqliteFaults, TheFolderIsMadeWhereItCanBe) {
  const std::string text = "sqlite:" + folder_.Path("a/b/records.sqlite");
  EXPECT_TRUE(OpenStore(text)->Finish(SmallRecord(1)));
  EXPECT_EQ(OpenStore(text, {.readOnly = true})->Load(IdOf(1)), SmallRecord(1));
  folder_.Put("file", "");
  EXPECT_THAT(FaultOf([&] { static_cast<void>(OpenStore("sqlite:" + folder_.Path("file/records.sqlite"))); }),
              AllOf(HasSubstr("cannot be made: its folder: "), HasSubstr("Not a directory")));
}

TEST_P(SqliteFaults, WhatOnlyReadsMakesNothing) {
  EXPECT_EQ(FaultOf([&] { Open({.readOnly = true}); }),
            "The store " + Path() + " cannot be opened: No such file or directory.");
  folder_.Put("records.sqlite", "");
  EXPECT_EQ(FaultOf([&] { Open({.readOnly = true}); }), "The store " + Path() + " holds no records.");
  EXPECT_EQ(folder_.ContentOf("records.sqlite"), "");
  fs::remove(Path());
  Open();
  EXPECT_THAT(FaultOf([&] { Open({.readOnly = true})->Finish(SmallRecord(1)); }),
              StartsWith("The store " + Path() + " may not be written to: "));
}

// What goes on being written to a file without a name is lost.
TEST_P(SqliteFaults, AStoreWhoseFolderVanishesIsMadeAnew) {
  const std::string folder = folder_.Path("station");
  const auto store = OpenStore("sqlite:" + folder + "/records.sqlite");
  ASSERT_TRUE(store->Finish(SmallRecord(1)));
  fs::remove_all(folder);
  EXPECT_TRUE(store->Finish(SmallRecord(2)));
  EXPECT_TRUE(fs::exists(folder + "/records.sqlite"));
  EXPECT_EQ(store->Load(IdOf(1)), std::nullopt);
  EXPECT_EQ(store->Load(IdOf(2)), SmallRecord(2));
  fs::remove_all(folder);
  folder_.Put("station", "");
  EXPECT_THAT(FaultOf([&] { store->Finish(SmallRecord(3)); }), HasSubstr("cannot be made: its folder: "));
  fs::remove(folder);
  EXPECT_TRUE(store->Finish(SmallRecord(3))) << "and it is back as soon as it can be";
}

// In a process of its own, since what a process may write to a file is all that can be taken from it alone.
TEST_P(SqliteFaults, ADiskThatTakesNoMoreIsSaidAndTheStoreGoesOnWhenItDoes) {
  const pid_t station = Forked([&] {
    const auto store = Open();
    store->Finish(TypicalRecord(1));
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlim_t all = limit.rlim_cur;
    limit.rlim_cur = fs::file_size(Path() + "-wal") + 20'000;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_THAT(FaultOf([&] { store->Finish(TypicalRecord(2)); }), StartsWith("The store " + Path() + " "));
    limit.rlim_cur = all;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(store->Load(IdOf(1)), TypicalRecord(1));
    EXPECT_EQ(store->Load(IdOf(2)), std::nullopt);
    EXPECT_TRUE(store->Finish(TypicalRecord(2)));
    if (HasFailure()) throw StoreFault("see above");
  });
  EXPECT_EQ(EndOf(station), 0);
  EXPECT_EQ(Open()->Load(IdOf(2)), TypicalRecord(2));
  EXPECT_THAT(Open()->CheckStore(), IsEmpty());
}

}  // namespace
}  // namespace orvane::test
