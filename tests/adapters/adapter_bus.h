#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/scripted_adapter.h"

namespace orvane::test {

using namespace std::chrono_literals;

inline constexpr int kErr = 0x8000;
inline constexpr int kErrTimo = 0xC000;
inline constexpr int kEnol = 2;
inline constexpr int kEabo = 6;

using Lines = std::vector<std::string>;

/// Answers the first read with the first reply, and so on; what is over it does not answer.
inline ScriptedAdapter::Script Replies(std::vector<std::string> replies) {
  return [replies, next = std::size_t{0}](ScriptedAdapter& self, const std::string& line) mutable {
    if (line == "++read eoi" && next < replies.size()) self.Send(replies[next++]);
    return false;
  };
}

inline BusRoute RouteTo(const ScriptedAdapter& adapter) {
  if (adapter.Port() == 0) return PrologixSerialRoute{adapter.Device()};
  return PrologixTcpRoute{"127.0.0.1", adapter.Port()};
}

inline RoutedGpibBus BusOn(const BusRoute& route) { return RoutedGpibBus(GpibRoutes{route, {}}); }

inline std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
  try {
    message();
  } catch (const GpibError& error) {
    return error;
  }
  return std::nullopt;
}

inline void ExpectError(const std::optional<GpibError>& error, int ibsta, int iberr, const std::string& what) {
  ASSERT_TRUE(error.has_value()) << "no failure, but not: " << what;
  EXPECT_EQ(error->ibsta, ibsta);
  EXPECT_EQ(error->iberr, iberr);
  EXPECT_THAT(error->what(), testing::HasSubstr(what));
}

inline std::string Ask(GpibSession& session, const std::string& question, TimePoint readWithin = 5s) {
  session.Write(question, 5s);
  return session.Read(1000, readWithin);
}

/// The lines behind the greeting, whose last one is `++ver`.
inline Lines BehindGreeting(const Lines& lines) {
  const auto greeting = std::find(lines.begin(), lines.end(), "++ver");
  return greeting == lines.end() ? Lines{} : Lines(greeting + 1, lines.end());
}

}  // namespace orvane::test
