#include "app/automation/json_rpc.h"

#include <utility>

#include "app/shallow_json.h"

template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace orvane {
namespace {

/// No request nests as deep.
constexpr int kDeepest = 8;

std::string LineOf(const Json& message) { return message.dump(-1, ' ', false, Json::error_handler_t::replace); }

const Json& Param(const Json& params, const char* name) {
  const auto hit = params.find(name);
  if (hit == params.end()) {
    throw RpcFailure(RpcError::InvalidParams, std::string("The parameter \"") + name + "\" is missing.");
  }
  return *hit;
}

[[noreturn]] void FailType(const char* name, const char* type) {
  throw RpcFailure(RpcError::InvalidParams, std::string("The parameter \"") + name + "\" must be " + type + ".");
}

}  // namespace

void ParseRequest(std::string_view line, RpcRequest& request) {
  Json message = ShallowJson(line, kDeepest);
  if (message.is_discarded()) throw RpcFailure(RpcError::NoJson, "The line is no JSON.");
  if (!message.is_object()) throw RpcFailure(RpcError::InvalidRequest, "A request is one JSON object.");

  if (const auto id = message.find("id"); id == message.end()) {
    request.wantsAnswer = false;
  } else if (id->is_string() || id->is_number() || id->is_null()) {
    request.id = *id;
  } else {
    throw RpcFailure(RpcError::InvalidRequest, "An id is a text, a number or null.");
  }

  const auto method = message.find("method");
  const auto version = message.find("jsonrpc");
  const bool sound = version != message.end() && *version == "2.0" && method != message.end() && method->is_string();
  if (!sound) {
    request.wantsAnswer = true;
    throw RpcFailure(RpcError::InvalidRequest, "A request has \"jsonrpc\": \"2.0\" and the name of a \"method\".");
  }
  request.method = method->get<std::string>();

  if (const auto params = message.find("params"); params != message.end()) request.params = std::move(*params);
}

std::string ResultLine(const Json& id, const Json& result) {
  return LineOf(Json{{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
}

std::string ErrorLine(const Json& id, RpcError error, std::string_view text) {
  const Json details{{"code", static_cast<int>(error)}, {"message", text}};
  return LineOf(Json{{"jsonrpc", "2.0"}, {"id", id}, {"error", details}});
}

std::string NotificationLine(std::string_view method, const Json& params) {
  return LineOf(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

std::string TextParam(const Json& params, const char* name) {
  const Json& value = Param(params, name);
  if (!value.is_string()) FailType(name, "a text");
  return value.get<std::string>();
}

std::int64_t IntegerParam(const Json& params, const char* name) {
  const Json& value = Param(params, name);
  if (!value.is_number_integer()) FailType(name, "an integer");
  constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
  if (value.is_number_unsigned() && value.get<std::uint64_t>() > kMost) FailType(name, "an integer of 64 bits");
  return value.get<std::int64_t>();
}

bool FlagParam(const Json& params, const char* name) {
  const Json& value = Param(params, name);
  if (!value.is_boolean()) FailType(name, "true or false");
  return value.get<bool>();
}

}  // namespace orvane
