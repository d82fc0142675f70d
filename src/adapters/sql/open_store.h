#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "adapters/sql/sql_record_store.h"

namespace orvane {

/// "sqlite:PATH": the folder is made if it is not there. "postgresql:CONNINFO": "host=... dbname=..." or
/// "//user@host/dbname", as the server's own programs take it.
/// @throws StoreFault for a text that is neither, and for a store that cannot be opened.
[[nodiscard]] std::unique_ptr<RecordStore> OpenStore(std::string_view text, const StoreUse& use = {});

/// Empty for a text that OpenStore takes to be a store's, or what is wrong with it as a sentence.
[[nodiscard]] std::string FaultOfStoreText(std::string_view text);

/// Where the records go that a store does not take: the folder "spool" beside a store on this disk, in `fallback` for
/// any other.
[[nodiscard]] std::string SpoolFolderOf(std::string_view text, const std::string& fallback);

}  // namespace orvane
