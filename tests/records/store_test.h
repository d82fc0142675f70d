#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>
#include <memory>
#include <string>

#include "adapters/sql/open_store.h"
#include "records/postgresql_server.h"
#include "records/sample_record.h"
#include "support/scratch_folder.h"

namespace orvane::test {

/// The one application object of the test program.
struct QtApplication {
  QtApplication() {
    static int argc = 1;
    static char name[] = "records_tests";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
  }
};

/// The one server of the test program; none where the machine has no server's programs.
PostgresqlServer* Server();

/// A test of an empty store, on either engine.
class StoreTest : public testing::TestWithParam<const char*>, private QtApplication {
 protected:
  void SetUp() override;

  [[nodiscard]] bool OnSqlite() const { return std::string(GetParam()) == "Sqlite"; }
  /// As OpenStore takes it.
  [[nodiscard]] std::string Text() const { return text_; }
  std::unique_ptr<RecordStore> Open(const StoreUse& use = {}) const { return OpenStore(text_, use); }
  /// What the engine's own shell prints.
  [[nodiscard]] std::string Ask(const std::string& words) const;
  /// The fault of what is done, or nothing.
  [[nodiscard]] static std::string FaultOf(const std::function<void()>& done);

  ScratchFolder folder_;

 private:
  std::string text_;
};

/// As the engine stands in a test's name.
[[nodiscard]] inline std::string NameOfEngine(const testing::TestParamInfo<const char*>& engine) {
  return engine.param;
}

/// Ends with what it throws, in words on standard error; otherwise with 0.
[[nodiscard]] int StatusOf(const std::function<void()>& done);
/// A process of its own that does it.
[[nodiscard]] pid_t Forked(const std::function<void()>& done);
/// Its exit status, or minus the signal that ended it.
[[nodiscard]] int EndOf(pid_t process);

}  // namespace orvane::test

#define ON_BOTH_ENGINES(Suite) \
  INSTANTIATE_TEST_SUITE_P(On, Suite, testing::Values("Sqlite", "Postgresql"), ::orvane::test::NameOfEngine)
