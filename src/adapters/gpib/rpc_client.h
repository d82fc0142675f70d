#pragma once

#include <cstdint>
#include <string>

#include "adapters/gpib/byte_stream.h"
#include "vxi11/xdr_message.h"

namespace orvane {

/// Remote procedure calls over one TCP connection (RFC 5531), each within a bound of its own: from the first byte
/// sent to the last one received, however they dribble. Failures are RouteFailures. After one the connection is of no
/// more use: what the other end still sends would answer nobody's call.
class RpcClient {
 public:
  struct Program {
    std::uint32_t number;
    std::uint32_t version;
  };

  RpcClient() = default;
  /// @param peer the other end in words: "the gateway"
  RpcClient(ByteStream stream, Program program, std::string peer);

  [[nodiscard]] bool IsOpen() const { return stream_.IsOpen(); }
  void Close() { stream_.Close(); }

  /// @param longestResult bytes of the largest result that makes sense
  template <class Arguments, class Result>
  [[nodiscard]] XdrValue<Result> Call(std::uint32_t procedure, XdrRoutine<Arguments> put,
                                      const std::type_identity_t<Arguments>& arguments, XdrRoutine<Result> take,
                                      std::size_t longestResult, const Deadline& deadline) {
    const std::string bytes = Exchange(procedure, XdrWriter().Put(put, arguments).Bytes(), longestResult, deadline);
    XdrReader reader(bytes);
    auto result = reader.Take(take);
    if (!result || !reader.Rest().empty()) FailMeaningless();
    return std::move(*result);
  }

 private:
  [[nodiscard]] std::string Exchange(std::uint32_t procedure, const std::string& arguments, std::size_t longestResult,
                                     const Deadline& deadline);
  [[nodiscard]] std::string ReceiveMessage(std::size_t longest, const Deadline& deadline);
  /// @param begun whether the answer's first bytes were received
  void AwaitBytes(std::size_t count, bool begun, const Deadline& deadline);
  [[nodiscard]] std::string ResultOf(const std::string& message) const;
  [[noreturn]] void FailMeaningless() const;

  ByteStream stream_;
  Program program_{};
  std::string peer_;
  std::string received_;
  std::uint32_t lastXid_ = 0;
};

}  // namespace orvane
