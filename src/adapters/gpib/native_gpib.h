#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/gpib/call_thread.h"
#include "adapters/gpib/ni488_library.h"
#include "platform/gpib.h"

namespace orvane {

/// The instruments behind the system's own GPIB board, by way of its NI-488.2 style library.
///
/// The library is looked for at the first message that needs it, and again at the next one as long as there is none.
/// How long a call lasts is the library's word alone, bounded by the time-out that it is given. One that hangs beyond
/// that holds the station. Where somebody is told of waits, all calls are made on a thread of their own.
class NativeGpib {
 public:
  static constexpr const char* kSystemsOwn = "libgpib.so.0";

  /// @param waits whom the waits of the sessions are told; null for nobody.
  explicit NativeGpib(std::string library = kSystemsOwn, const LongWaits* waits = nullptr)
      : name_(std::move(library)), waits_(waits) {}

  /// Nothing is called before the first message. The session must not outlive this object.
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address);

  /// Primary addresses 0 to 30 at which somebody listens, with whatever secondary address. No instrument is spoken
  /// to.
  /// @throws GpibError
  [[nodiscard]] std::vector<int> Listeners(Integer board);

  /// Lets `message` call the library.
  void Do(const std::function<void()>& message);

  /// @throws Ni488Missing
  [[nodiscard]] const Ni488Library& Library();

  /// Instruments whose last exchange came to no good end and that took no device clear since: a late reply of theirs
  /// may still come.
  [[nodiscard]] bool OwesClear(const GpibAddress& address) const;
  void SetOwesClear(const GpibAddress& address, bool owes);

 private:
  std::string name_;
  std::optional<Ni488Library> library_;
  std::vector<GpibAddress> unclear_;
  const LongWaits* waits_;
  std::optional<CallThread> thread_;
};

}  // namespace orvane
