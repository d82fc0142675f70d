#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/gpib/gpib_routes.h"
#include "adapters/scripted_gateway.h"

namespace orvane::test {
using namespace std::chrono_literals;

inline constexpr std::uint32_t kCreateLink = 10;
inline constexpr std::uint32_t kWrite = 11;
inline constexpr std::uint32_t kRead = 12;
inline constexpr std::uint32_t kClear = 15;
inline constexpr std::uint32_t kLocal = 17;
inline constexpr std::uint32_t kDestroyLink = 23;
inline constexpr std::uint32_t kPieces = 4096;

/// Where words of a call stand: the arguments begin behind number, kind, RPC version, program, version, procedure and
/// two empty credentials.
inline constexpr std::size_t kProcedure = 5;
inline constexpr std::size_t kArguments = 10;

using Calls = std::vector<Words>;

inline Words ArgumentsOf(const Words& call) { return {call.begin() + kArguments, call.end()}; }

/// Link 7 is made and its device cleared.
inline void MakeLink(GatewayConnection& client, Calls* calls = nullptr, std::uint32_t longestPiece = kPieces) {
  for (const Words& result : {Words{0, 7, 0, longestPiece}, Words{0}}) {
    const auto call = client.NextCall();
    if (calls != nullptr && call) calls->push_back(*call);
    client.Answer(result);
  }
}

inline void TakeMessage(GatewayConnection& client) {
  const auto call = client.NextCall();
  if (call) client.Answer({0, call->at(kArguments + 4)});
}

/// Takes the line and answers with this, ended.
inline void AnswerMessage(GatewayConnection& client, const std::string& reply) {
  TakeMessage(client);
  if (client.NextCall()) client.Answer({0, 4}, reply);
}

/// Takes the time that a message needs to fail.
inline std::chrono::milliseconds TimeOf(const std::function<void()>& message) {
  const auto start = std::chrono::steady_clock::now();
  message();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

/// A session on the route of a gateway that is played.
class Vxi11 : public testing::Test {
 protected:
  void Play(std::vector<ScriptedGateway::Script> scripts) { gateway_.emplace(std::move(scripts)); }
  /// As Configure does it, by the route of the whole bus.
  std::unique_ptr<GpibSession> Open(const GpibAddress& address = {0, 5, 0}) {
    GpibRoutes routes;
    routes.bus = GatewayRoute{"127.0.0.1", gateway_->Port()};
    bus_.emplace(routes);
    return bus_->Open(address);
  }
  static std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
    try {
      message();
    } catch (const GpibError& error) {
      return error;
    }
    return std::nullopt;
  }
  void ExpectAbsent(const std::function<void()>& message, const std::string& what) const {
    Expect(ErrorOf(message), 0x8000, 2, what);
  }
  void ExpectTimeOut(const std::function<void()>& message, const std::string& what) const {
    Expect(ErrorOf(message), 0xC000, 6, what);
  }

  std::optional<ScriptedGateway> gateway_;
  std::optional<RoutedGpibBus> bus_;

 private:
  void Expect(const std::optional<GpibError>& error, int ibsta, int iberr, const std::string& what) const {
    ASSERT_TRUE(error.has_value()) << what;
    EXPECT_EQ(error->ibsta, ibsta) << error->what();
    EXPECT_EQ(error->iberr, iberr) << error->what();
    const std::string name = "Instrument at address 5, route vxi11:127.0.0.1:" + std::to_string(gateway_->Port());
    EXPECT_EQ(error->what(), name + ",gpib0,5: " + what);
  }
};

}  // namespace orvane::test
