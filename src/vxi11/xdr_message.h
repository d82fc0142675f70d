#pragma once

#include <rpc/rpc.h>

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orvane {

/// A routine of the codec, such as xdr_Device_Error: it writes a value, reads it, or frees what reading allocated.
template <class Value>
using XdrRoutine = bool_t (*)(XDR*, Value*);

/// A value that was read, with the memory that reading it took.
template <class Value>
class XdrValue {
 public:
  explicit XdrValue(XdrRoutine<Value> routine) : routine_(routine) {}
  XdrValue(XdrValue&& other) noexcept : routine_(other.routine_), value_(std::exchange(other.value_, Value{})) {}
  XdrValue& operator=(XdrValue&&) = delete;
  XdrValue(const XdrValue&) = delete;
  XdrValue& operator=(const XdrValue&) = delete;
  ~XdrValue() {
    XDR freeing{};
    freeing.x_op = XDR_FREE;
    routine_(&freeing, &value_);
  }

  Value& operator*() { return value_; }
  Value* operator->() { return &value_; }

 private:
  XdrRoutine<Value> routine_;
  Value value_{};
};

/// One value behind the other in XDR.
class XdrWriter {
 public:
  /// @throws std::length_error for a value beyond the bounds of its definition.
  template <class Value>
  XdrWriter& Put(XdrRoutine<std::type_identity_t<Value>> routine, Value value) {
    Run(reinterpret_cast<xdrproc_t>(routine), &value);
    return *this;
  }
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
  void Run(xdrproc_t routine, void* value);

  std::string bytes_;
};

/// Reads what XdrWriter writes, from bytes of anybody.
class XdrReader {
 public:
  explicit XdrReader(std::string_view bytes);

  /// No value when the bytes are none.
  template <class Value>
  [[nodiscard]] std::optional<XdrValue<Value>> Take(XdrRoutine<Value> routine) {
    XdrValue<Value> value(routine);
    if (!routine(&stream_, &*value)) return std::nullopt;
    return value;
  }
  /// What has not been read yet.
  [[nodiscard]] std::string_view Rest();

 private:
  std::string_view bytes_;
  XDR stream_{};
};

}  // namespace orvane
