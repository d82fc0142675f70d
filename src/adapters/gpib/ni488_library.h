#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace orvane {

/// The system has no usable GPIB library. The text is one sentence that says why.
class Ni488Missing : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What the library says of its last call.
struct Ni488Status {
  int ibsta = 0;
  int iberr = 0;   ///< Holds for a failed call only.
  int ibcntl = 0;  ///< Bytes that were moved.

  [[nodiscard]] bool Failed() const;
  [[nodiscard]] bool TimedOut() const;
  /// The instrument marked the end of its message.
  [[nodiscard]] bool End() const;
  /// "ibsta &HC100, iberr 6 (the transfer was aborted)".
  [[nodiscard]] std::string Text() const;
};

/// The calls of NI-488.2 that the station makes, found at run time in the library that the system has, if it has one.
/// Prototypes after the published interface. Counts are taken as int, which holds where a library counts in long.
struct Ni488Library {
  /// Once found it stays loaded, since such a library may have threads of its own.
  /// @throws Ni488Missing
  [[nodiscard]] static Ni488Library Load(const std::string& name);

  /// What the library says of the call that was just made.
  [[nodiscard]] Ni488Status Status() const { return {ThreadIbsta(), ThreadIberr(), ThreadIbcntl()}; }

  int (*ibdev)(int board, int primary, int secondary, int timeOutCode, int endWithLastByte,
               int endOfString) = nullptr;
  int (*ibwrt)(int device, const void* bytes, std::size_t count) = nullptr;
  int (*ibrd)(int device, void* bytes, std::size_t count) = nullptr;
  int (*ibtmo)(int device, int timeOutCode) = nullptr;
  int (*ibclr)(int device) = nullptr;
  int (*ibloc)(int device) = nullptr;
  int (*ibonl)(int device, int online) = nullptr;
  int (*ibln)(int device, int primary, int secondary, short* listens) = nullptr;
  int (*ThreadIbsta)() = nullptr;
  int (*ThreadIberr)() = nullptr;
  int (*ThreadIbcntl)() = nullptr;
};

}  // namespace orvane
