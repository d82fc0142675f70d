#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "records/record_store.h"

namespace orvane {

struct ListOrder {
  RunQuery query;
  bool json = false;
};
struct ShowOrder {
  std::string run;
  bool json = false;
};
struct ExportOrder {
  std::vector<std::string> runs;
  std::string to;
};
struct ImportOrder {
  std::vector<std::string> files;
};
/// How records are run again.
struct ReplayOptions {
  /// Other tables than those of the record.
  std::optional<std::string> systemFolder;
};
struct ReplayOrder {
  /// None: all of the store.
  std::vector<std::string> runs;
  ReplayOptions options;
  int jobs = 1;
};
struct VerifyOrder {
  /// None: all of the store.
  std::vector<std::string> runs;
};
struct ForwardOrder {
  std::string to;
  bool follow = false;
};

/// What the command line of `orvane-records` asks for.
struct RecordsOrder {
  /// "sqlite:PATH" or "postgresql:CONNINFO".
  std::string store;
  std::variant<ListOrder, ShowOrder, ExportOrder, ImportOrder, ReplayOrder, VerifyOrder, PruneOrder, ForwardOrder>
      verb;
};

/// The program is to end at once: `--help`, `--version`, or a fault of the options.
struct NoOrder {
  int status = 0;
  /// On standard output for status 0, else one line for standard error.
  std::string text;
};

/// `defaultStore` may be empty; then a store has to be named.
[[nodiscard]] std::variant<RecordsOrder, NoOrder> ParseRecordsOrder(int argc, const char* const* argv,
                                                                    const std::string& defaultStore);

/// Where the records of a real bench are by default: "sqlite:" and a path in the user's folder for states. Empty when
/// the user has none.
[[nodiscard]] std::string DefaultRecords();

}  // namespace orvane
