#include "records/store_test.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace orvane::test {

PostgresqlServer* Server() {
  static const auto server = PostgresqlServer::Programs().empty() ? nullptr : std::make_unique<PostgresqlServer>();
  return server.get();
}

void StoreTest::SetUp() {
  if (OnSqlite()) {
    text_ = "sqlite:" + folder_.Path("records.sqlite");
    return;
  }
  if (Server() == nullptr) GTEST_SKIP() << "This machine has no server of PostgreSQL 15.";
  text_ = "postgresql:" + Server()->NewDatabase();
}

std::string StoreTest::Ask(const std::string& words) const {
  const std::string place = text_.substr(text_.find(':') + 1);
  if (!OnSqlite()) return Server()->Ask(place, words);
  return OutputOf({"/usr/bin/sqlite3", "-batch", "-cmd", ".timeout 10000", place, words});
}

std::string StoreTest::FaultOf(const std::function<void()>& done) {
  try {
    done();
  } catch (const StoreFault& fault) {
    return fault.what();
  }
  return "";
}

int StatusOf(const std::function<void()>& done) {
  try {
    done();
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}

// It leaves without the parent's ends: those are the parent's to do.
pid_t Forked(const std::function<void()>& done) {
  const pid_t process = ::fork();
  if (process == 0) ::_exit(StatusOf(done));
  return process;
}

int EndOf(pid_t process) {
  int ending = 0;
  ::waitpid(process, &ending, 0);
  return WIFSIGNALED(ending) ? -WTERMSIG(ending) : WEXITSTATUS(ending);
}

}  // namespace orvane::test
