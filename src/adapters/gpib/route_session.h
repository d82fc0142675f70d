#pragma once

#include <stdexcept>
#include <string>

#include "adapters/gpib/deadline.h"
#include "platform/gpib.h"

namespace orvane {

/// What happened on a route, as a sentence that names no instrument: the session adds its name and the numbers.
class RouteFailure : public TextFailure {
 public:
  enum class Kind { kAbsent, kTimeOut };
  RouteFailure(Kind itsKind, const std::string& what) : TextFailure(what), kind(itsKind) {}
  Kind kind;
};

/// Absent, refuses, or has gone.
[[noreturn]] void FailAbsent(const std::string& what);
[[noreturn]] void FailTimeOut(const std::string& what);

/// What the sessions of all routes have in common. A message that fails ends the session and lets go of what its
/// route holds: a reply that comes too late could otherwise be taken for the next one's. Every message of an ended
/// session fails at once; the next Configure opens a new one.
class RouteSession : public GpibSession {
 public:
  /// Whom its waits are told; nobody before this.
  void TellWaitsTo(const LongWaits* waits) { waits_ = waits; }
  void Write(std::string_view text, TimePoint timeOut) final;
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) final;
  void Local() final;
  [[nodiscard]] bool TryLock() final;
  void Unlock() final;

 protected:
  /// @param route in the words of the command line
  RouteSession(int primary, const std::string& route);

  // One message each, which may throw a RouteFailure. Routes are opened by the first one: configuring a session
  // never touches the instrument.
  virtual void Send(std::string_view text, const Deadline& deadline) = 0;
  [[nodiscard]] virtual std::string Receive(std::size_t size, const Deadline& deadline) = 0;
  /// Returns the instrument to local, where the route knows how.
  virtual void GoLocal(const Deadline& /*deadline*/) {}
  /// Keeps the instrument's other clients away, where the route knows how. @return false: another one has it.
  [[nodiscard]] virtual bool Lock(const Deadline& /*deadline*/) { return true; }
  /// Ends that, and lets go of what the route holds until the next message.
  virtual void LetGo(const Deadline& deadline) = 0;
  /// Lets go of what the route holds. Never fails; called again, does nothing.
  virtual void HangUp() = 0;
  /// The same behind a message that failed, whose reply may still come.
  virtual void Abandon() { HangUp(); }

 private:
  template <class Message>
  auto Guarded(const Message& message);

  std::string name_;
  const LongWaits* waits_ = nullptr;
  /// What ended the session, if something did.
  std::string ended_;
};

}  // namespace orvane
