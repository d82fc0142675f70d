#include "adapters/gpib/route_session.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

/// An instrument that is let go has no time-out of its own any more.
constexpr auto kFarewell = 1s;
/// A connection and two questions, which come ahead of the first message and its time-out.
constexpr auto kHandshake = 3s;

}  // namespace

void FailAbsent(const std::string& what) { throw RouteFailure(RouteFailure::Kind::kAbsent, what); }
void FailTimeOut(const std::string& what) { throw RouteFailure(RouteFailure::Kind::kTimeOut, what); }

RouteSession::RouteSession(int primary, const std::string& route)
    : name_("Instrument at address " + std::to_string(primary) + ", route " + route + ": ") {}

template <class Message>
auto RouteSession::Guarded(const Message& message) {
  if (!ended_.empty()) {
    throw GpibAbsent(name_ + "the connection has ended (" + ended_ + ") Initialize the instrument again.");
  }
  try {
    return message();
  } catch (const RouteFailure& failure) {
    ended_ = failure.Text();
    Abandon();
    throw failure.kind == RouteFailure::Kind::kTimeOut ? GpibTimeOut(name_ + ended_) : GpibAbsent(name_ + ended_);
  }
}

void RouteSession::Write(std::string_view text, TimePoint timeOut) {
  Guarded([&] { Send(text, Deadline(timeOut, waits_)); });
}

std::string RouteSession::Read(std::size_t size, TimePoint timeOut) {
  return Guarded([&] { return Receive(size, Deadline(timeOut, waits_)); });
}

bool RouteSession::TryLock() {
  return Guarded([&] { return Lock(Deadline(kHandshake)); });
}

void RouteSession::Unlock() {
  if (!ended_.empty()) return;
  try {
    LetGo(Deadline(kFarewell));
  } catch (const RouteFailure& failure) {
    ended_ = failure.Text();
    Abandon();
  }
}

void RouteSession::Local() {
  Guarded([&] { GoLocal(Deadline(kFarewell, waits_)); });
  HangUp();
}

}  // namespace orvane
