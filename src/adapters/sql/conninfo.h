#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// How a server of PostgreSQL is reached, by libpq's own words: "host", "dbname", ...
/// Source: PostgreSQL 15 documentation, 34.1.1 Connection Strings.
using Conninfo = std::map<std::string, std::string>;

/// Of "host=/tmp dbname='my records'", or of the part of a URI behind its scheme
/// ("//user:password@host:5432/dbname?key=value"). No value for a text that is neither.
[[nodiscard]] std::optional<Conninfo> ConninfoOf(std::string_view text);

/// As it may be said to anybody: without a password.
[[nodiscard]] std::string NameOf(const Conninfo& conninfo);

/// A value as it stands behind its "=".
[[nodiscard]] std::string QuotedValue(std::string_view value);

/// A server that does not answer is not waited for without end, unless the words say how long themselves.
void BoundWaiting(Conninfo& conninfo, int patienceMs);

}  // namespace orvane
