#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "base/failure.h"

// Made once, in json_rpc.cpp: every file that uses it would compile its own otherwise.
extern template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace orvane {

/// Objects keep the order in which they were filled.
using Json = nlohmann::ordered_json;

/// Error codes of the automation port; the first four are JSON-RPC's own.
enum class RpcError : int {
  NoJson = -32700,
  InvalidRequest = -32600,
  NoSuchMethod = -32601,
  InvalidParams = -32602,
  NoSuchControl = -32001,
  ControlDisabled = -32002,
  ActDoesNotFit = -32003,
  NothingOpen = -32004,
  Stopped = -32005,
  BoxOpen = -32006,
  TooManyWait = -32007,
};

class RpcFailure : public TextFailure {
 public:
  RpcFailure(RpcError error, std::string text) : TextFailure(std::move(text)), code(error) {}
  RpcError code;
};

/// A JSON-RPC 2.0 request: one JSON object a line. Parameters go by name.
struct RpcRequest {
  /// Null until an id was found; the id of a line that is no sound request.
  Json id;
  /// A request without an id is carried out and not answered.
  bool wantsAnswer = true;
  std::string method;
  Json params = Json::object();
};

/// @throws RpcFailure; what was found of `request` by then is in it.
void ParseRequest(std::string_view line, RpcRequest& request);

/// Lines to send, without line end. Bytes that are no UTF-8 are replaced.
[[nodiscard]] std::string ResultLine(const Json& id, const Json& result);
[[nodiscard]] std::string ErrorLine(const Json& id, RpcError error, std::string_view text);
[[nodiscard]] std::string NotificationLine(std::string_view method, const Json& params);

/// A parameter by name. @throws RpcFailure when it is missing or of another type.
[[nodiscard]] std::string TextParam(const Json& params, const char* name);
[[nodiscard]] std::int64_t IntegerParam(const Json& params, const char* name);
[[nodiscard]] bool FlagParam(const Json& params, const char* name);

}  // namespace orvane
