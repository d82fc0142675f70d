// A line from a client of the automation port. A sound request must say what a plain reading of the JSON says; any
// other must be refused with one of the codes that lines have. Its answer must be JSON again, with the request's
// id.

#include <algorithm>

#include "app/automation/json_rpc.h"
#include "require.h"

namespace {

using namespace orvane;
using fuzz::Require;

/// A member of the message, or null.
Json Member(const Json& message, const char* name) {
  return message.is_object() && message.contains(name) ? message[name] : Json();
}

/// What a line must be refused with; 0 for a sound one.
int CodeOf(const Json& message) {
  if (message.is_discarded()) return -32700;
  if (!message.is_object()) return -32600;
  const Json id = Member(message, "id");
  if (id.is_object() || id.is_array() || id.is_boolean()) return -32600;
  return Member(message, "jsonrpc") == "2.0" && Member(message, "method").is_string() ? 0 : -32600;
}

template <class Value>
void CheckParam(const Json& params, const Json& plain, Value (*take)(const Json&, const char*), bool fits) {
  Value value{};
  const bool taken = fuzz::Done<RpcFailure>([&] { value = take(params, "a"); });
  Require(taken == fits && (!taken || value == plain), "a parameter is taken for another");
}

void CheckParams(const Json& params) {
  if (!params.is_object()) return;
  const Json plain = Member(params, "a");
  const bool fitsSigned = plain.is_number_integer() &&
                          !(plain.is_number_unsigned() && plain.get<std::uint64_t>() > std::uint64_t{INT64_MAX});
  CheckParam<std::string>(params, plain, &TextParam, plain.is_string());
  CheckParam<std::int64_t>(params, plain, &IntegerParam, fitsSigned);
  CheckParam<bool>(params, plain, &FlagParam, plain.is_boolean());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  RpcRequest request;
  int code = 0;
  try {
    ParseRequest(line, request);
  } catch (const RpcFailure& failure) {
    code = static_cast<int>(failure.code);
  }
  // Most inputs are no JSON, and to read them again costs more than all else: one of four is.
  if (code == static_cast<int>(RpcError::NoJson) && size % 4 != 0) return 0;
  // Of a plain reading; what nests as deep as no request does is read otherwise.
  constexpr std::ptrdiff_t kDeep = 8;
  const auto opened = std::count_if(line.begin(), line.end(), [](char c) { return c == '[' || c == '{'; });
  const Json message = opened <= kDeep ? Json::parse(line, nullptr, false) : Json();

  constexpr std::size_t kTold = 16;
  const std::string answer = code == 0 ? ResultLine(request.id, request.params)
                                       : ErrorLine(request.id, RpcError::NoJson, line.substr(0, kTold));
  Require(Json::parse(answer)["id"] == request.id, "an answer has another id");
  if (opened > kDeep) return 0;
  Require(code == CodeOf(message), "refused for another reason, or not refused");
  if (code != 0) return 0;
  Require(request.id == Member(message, "id") && request.wantsAnswer == message.contains("id"), "another id");
  Require(request.method == Member(message, "method"), "another method");
  Require(request.params == (message.contains("params") ? message["params"] : Json::object()), "other parameters");
  CheckParams(request.params);
  return 0;
}
