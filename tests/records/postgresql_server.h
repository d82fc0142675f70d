#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "support/scratch_folder.h"

namespace orvane::test {

/// A server of PostgreSQL in a folder of its own, reached by a socket there and by nothing else. It ends with the
/// program that started it.
class PostgresqlServer {
 public:
  /// The folder of the server's programs; empty when this machine has none.
  [[nodiscard]] static std::string Programs();

  PostgresqlServer();
  PostgresqlServer(const PostgresqlServer&) = delete;
  PostgresqlServer& operator=(const PostgresqlServer&) = delete;
  ~PostgresqlServer();

  void Start();
  /// At once, connections and all.
  void Stop();

  /// An empty database, as libpq is told of it.
  [[nodiscard]] std::string NewDatabase();
  /// What the server's own shell prints for these words, values with | between them.
  [[nodiscard]] std::string Ask(const std::string& conninfo, const std::string& words) const;

 private:
  [[nodiscard]] bool Answers() const;

  ScratchFolder folder_;
  pid_t process_ = -1;
  int databases_ = 0;
};

/// Runs a program to its end. @return what it printed, standard error included; `status` is its exit status.
[[nodiscard]] std::string OutputOf(const std::vector<std::string>& command, int* status = nullptr);

}  // namespace orvane::test
