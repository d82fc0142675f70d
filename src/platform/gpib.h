#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "base/numbers.h"
#include "platform/event_loop.h"

namespace orvane {

/// A failure on the bus, numbered as NI-488.2 numbers it.
class GpibError : public TextFailure {
 public:
  GpibError(std::string text, int status, int error) : TextFailure(std::move(text)), ibsta(status), iberr(error) {}
  int ibsta;  ///< 0x8000, with 0x4000 added for a time-out.
  int iberr;  ///< 6 time-out (EABO), 2 absent, refused or gone (ENOL).
};

[[nodiscard]] GpibError GpibTimeOut(const std::string& text);
[[nodiscard]] GpibError GpibAbsent(const std::string& text);

/// The library's two status variables, station-wide: those of the last error of any instrument, 0 until one came.
struct NiGlobal {
  int ibsta = 0;
  int iberr = 0;
};

struct GpibAddress {
  Integer board = 0;
  Integer primary = 0;
  Integer secondary = 0;  ///< 0: none.
  friend bool operator==(const GpibAddress&, const GpibAddress&) = default;
};

/// A failed message in words: whose, over which route, and what happened, which names both.
struct GpibFault {
  Integer address = 0;
  std::string route;
  std::string text;
};

/// One instrument on one route, open for messages. Every member throws GpibError.
class GpibSession {
 public:
  GpibSession() = default;
  GpibSession(const GpibSession&) = delete;
  GpibSession& operator=(const GpibSession&) = delete;
  virtual ~GpibSession() = default;

  /// Sends one message with the end mark that the route needs (EOI, or one line feed on a raw socket).
  virtual void Write(std::string_view text, TimePoint timeOut) = 0;
  /// One reply message with its line feed, or `size` bytes of it.
  [[nodiscard]] virtual std::string Read(std::size_t size, TimePoint timeOut) = 0;
  /// Back to local. The session is over.
  virtual void Local() = 0;

  /// Keeps the instrument's other clients away until `Unlock`, where its route can do so; never waits for them.
  /// @return false: another one has it.
  [[nodiscard]] virtual bool TryLock() { return true; }
  /// Lets others come, and lets go of all that the route holds until the next message. Never fails.
  virtual void Unlock() {}
};

/// The ways to the instruments.
class GpibBus {
 public:
  GpibBus() = default;
  GpibBus(const GpibBus&) = delete;
  GpibBus& operator=(const GpibBus&) = delete;
  virtual ~GpibBus() = default;

  /// Never fails by itself: an absent instrument fails at the first message.
  [[nodiscard]] virtual std::unique_ptr<GpibSession> Open(const GpibAddress& address) = 0;
  /// The route to the instrument at an address, in the words of the command line. Empty for a bus without a name.
  [[nodiscard]] virtual std::string RouteOf(const GpibAddress& /*address*/) const { return ""; }
};

/// The control of one instrument, with its properties as the panels set them.
class CWGPIB {
 public:
  /// How a failure comes out: as a failure of the operation, or as an error event of the control.
  enum class OnError { Fails, RaisesEvent };

  CWGPIB(std::string name, GpibBus& bus, NiGlobal& status, OnError onError)
      : name_(std::move(name)), bus_(bus), status_(status), policy_(onError) {}

  GpibAddress address;
  Integer readSize = 1000;
  Integer timeOutCode = 13;
  bool optionFlag = true;

  /// Error event; with `OnError::RaisesEvent` only. Its numbers stand in `Status`.
  std::function<void(const GpibFault& fault)> onErrorEvent;
  /// Completion event. No synchronous operation raises it.
  std::function<void(Integer status, const std::string& data)> onCompletion;

  /// Takes up the properties for a new session. Does not touch the instrument.
  void Configure();
  /// @throws StationFailure with `OnError::Fails`, also when there is no session.
  void Write(std::string_view text);
  /// The reply with its line feed, one character per byte; an empty text after an error event.
  [[nodiscard]] std::string Read();
  void Release();
  /// The same without a word to the instrument, which somebody else is to speak to.
  void Drop() { session_.reset(); }
  [[nodiscard]] bool HasSession() const { return session_ != nullptr; }
  [[nodiscard]] const NiGlobal& Status() const { return status_; }

  /// Lines written and replies read since start.
  [[nodiscard]] long LinesWritten() const { return linesWritten_; }
  [[nodiscard]] long RepliesRead() const { return repliesRead_; }

 private:
  void Guarded(const std::function<void()>& work);

  std::string name_;
  GpibBus& bus_;
  NiGlobal& status_;
  OnError policy_;
  std::unique_ptr<GpibSession> session_;
  long linesWritten_ = 0;
  long repliesRead_ = 0;
};

/// Duration of a NI-488 time-out code 1..15 (10 us to 100 s). Code 0 means no time-out; it waits 1000 s, the longest
/// that NI-488 knows, so that no dead instrument hangs the station for good.
[[nodiscard]] TimePoint GpibTimeOutOf(Integer code);

/// The code whose time-out that is; for a span between two of them the longer one's, and 0 beyond 100 s.
[[nodiscard]] int GpibTimeOutCodeOf(TimePoint span);

/// Code of a time-out text such as "10s", or -1 for a text that is in no list.
[[nodiscard]] int GpibTimeOutCode(std::string_view text);

/// The time-out texts in the order of their codes, "None" first.
[[nodiscard]] const std::vector<std::string>& GpibTimeOutTexts();

}  // namespace orvane
