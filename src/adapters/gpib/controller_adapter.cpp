#include "adapters/gpib/controller_adapter.h"

#include <algorithm>

#include "adapters/gpib/route_session.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

// In this order: the first keeps the settings behind it out of the adapter's memory, which wears. Replies are read
// when they are asked for and come as they stand, texts go out as they stand with EOI. The interface clear ends
// whatever the bus was in the middle of.
constexpr std::string_view kSetUp = "++savecfg 0\n++mode 1\n++auto 0\n++eoi 1\n++eos 3\n++eot_enable 0\n++ifc\n";
constexpr char kEscape = 27;

/// An adapter that starts afresh when its device is opened misses what it was told before.
constexpr auto kGreetAgain = 1s;
/// A sound adapter answers by then whatever it was in the middle of, a read for another program included. Without
/// this limit the time-out "None" would wait for a dead one.
constexpr auto kAnswerLimit = 4s;
/// `++read_tmo_ms` goes up to 3000.
constexpr long kLongestReadMs = 3000;
/// On the way to the adapter and back.
constexpr auto kTravel = 200ms;

constexpr std::size_t kMostNoise = 64UL * 1024;
constexpr std::size_t kLongestReply = 1024UL * 1024;

constexpr int kLastPrimary = 30;
constexpr int kFirstSecondary = 96;
constexpr int kLastSecondary = 126;

/// As `++addr` takes it: secondary addresses count from 96 there and on the station's panels alike.
std::string AddressText(const GpibAddress& address) {
  if (address.board != 0)
    FailAbsent("the adapter is board 0, there is no board " + std::to_string(address.board) + ".");
  if (address.primary < 0 || address.primary > kLastPrimary) FailAbsent("primary addresses are 0 to 30.");
  if (address.secondary == 0) return std::to_string(address.primary);
  if (address.secondary < kFirstSecondary || address.secondary > kLastSecondary) {
    FailAbsent("secondary addresses are 96 to 126.");
  }
  return std::to_string(address.primary) + " " + std::to_string(address.secondary);
}

/// The adapter sends these bytes on only behind an escape.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\r' || c == '\n' || c == kEscape || c == '+') escaped += kEscape;
    escaped += c;
  }
  return escaped;
}

std::string WithoutReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

/// The adapter marks no end: a reply that its instrument ends by EOI alone cannot be told from the first half of one.
bool IsWhole(const std::string& reply) { return reply.find('\n') != std::string::npos; }

}  // namespace

void ControllerAdapter::Detach() {
  if (--sessions_ == 0) stream_.Close();
}

void ControllerAdapter::Abandon(const GpibAddress& address) {
  stream_.Drop();
  try {
    abandoned_.insert(AddressText(address));
  } catch (const RouteFailure&) {
    // Nothing was ever sent to an address that is none.
  }
}

/// Two addresses in a row that were not asked for shortly before: no reply that is still on its way reads like that.
std::string ControllerAdapter::NextGreeting() {
  ++greetings_;
  return std::to_string(greetings_ % kLastPrimary) + "\n" + std::to_string(greetings_ * 7 % kLastPrimary) + "\n";
}

/// Between messages an adapter may close its connection, or restart, and nothing is lost.
bool ControllerAdapter::StillOpen() {
  if (!stream_.IsOpen()) return false;
  try {
    std::string unasked;
    stream_.ReceiveArrived(unasked);
  } catch (const RouteFailure&) {
    stream_.Close();
  }
  return stream_.IsOpen();
}

void ControllerAdapter::Open(const Deadline& deadline) {
  if (StillOpen()) return;
  stream_ = open_(deadline);
  address_.clear();
  readTimeOutMs_ = 0;
  Greet(deadline.Within(kAnswerLimit));
}

/// Sets the adapter up, and hears everything that was still on its way from it.
void ControllerAdapter::Greet(const Deadline& deadline) {
  std::string heard;
  while (!deadline.Passed()) {
    const std::string greeting = NextGreeting();
    const auto lineEnd = greeting.find('\n');
    stream_.Send(std::string(kSetUp) + "++addr " + greeting.substr(0, lineEnd + 1) + "++addr\n++addr " +
                     greeting.substr(lineEnd + 1) + "++addr\n++ver\n",
                 deadline);
    for (const Deadline patience = deadline.Within(kGreetAgain); stream_.Receive(heard, patience);) {
      const std::string lines = WithoutReturns(heard);
      const auto found = lines.rfind(greeting);
      const std::string version = found == std::string::npos ? "" : lines.substr(found + greeting.size());
      if (version.size() > 1 && version.ends_with('\n')) {
        version_ = version.substr(0, version.size() - 1);
        return;
      }
      if (heard.size() > kMostNoise) FailAbsent("what answers there is no ++ adapter.");
    }
  }
  FailTimeOut("the adapter did not answer its ++ commands" +
              (heard.empty() ? "" : std::string(", but sent other bytes,")) + " within " + deadline.Text() + ".");
}

void ControllerAdapter::Address(const GpibAddress& address, const Deadline& deadline) {
  const std::string wanted = AddressText(address);
  Open(deadline);
  if (wanted != address_) stream_.Send("++addr " + wanted + "\n", deadline);
  address_ = wanted;
  if (!abandoned_.contains(wanted)) return;
  stream_.Send("++clr\n", deadline);
  abandoned_.erase(wanted);
}

void ControllerAdapter::SetReadTimeOut(const Deadline& deadline) {
  const long wanted = std::clamp<long>(deadline.Span() / 1ms, 1, kLongestReadMs);
  if (wanted != readTimeOutMs_) stream_.Send("++read_tmo_ms " + std::to_string(wanted) + "\n", deadline);
  readTimeOutMs_ = wanted;
}

void ControllerAdapter::AwaitAnswer(std::string& heard, Ahead ahead, const Deadline& deadline) {
  const Deadline limit = deadline.Within(kAnswerLimit);
  while (true) {
    const auto found = heard.find(version_);
    const auto lineEnd = found == std::string::npos ? found : heard.find('\n', found + version_.size());
    if (lineEnd != std::string::npos) {
      const auto from = ahead == Ahead::kKeep ? found : 0;
      heard.erase(from, lineEnd + 1 - from);
      return;
    }
    if (heard.size() > kLongestReply) FailAbsent("the adapter sends without an end.");
    if (!stream_.Receive(heard, limit)) FailTimeOut("the adapter did not answer within " + limit.Text() + ".");
  }
}

void ControllerAdapter::Write(const GpibAddress& address, std::string_view text, const Deadline& deadline) {
  Address(address, deadline);
  stream_.Send(Escaped(text) + "\n", deadline);
}

std::string ControllerAdapter::Read(const GpibAddress& address, const Deadline& deadline) {
  Address(address, deadline);
  SetReadTimeOut(deadline);
  std::string reply;
  stream_.Send("++ver\n++read eoi\n", deadline);
  AwaitAnswer(reply, Ahead::kDrop, deadline);
  const TimePoint readEnds = std::chrono::milliseconds(readTimeOutMs_) + kTravel;
  while (!IsWhole(reply)) {
    if (reply.size() > kLongestReply) FailAbsent("the reply has no end, more than 1 MiB came.");
    if (stream_.Receive(reply, deadline.Within(readEnds))) continue;
    if (deadline.Passed()) {
      FailTimeOut((reply.empty() ? "no reply" : "no line end behind the reply's first bytes") +
                  (" within " + deadline.Text()) + ".");
    }
    // The adapter's read must have ended, and it answers when it has. It must not read again before: an instrument
    // that is asked for a second reply takes that for an error.
    stream_.Send("++ver\n", deadline);
    AwaitAnswer(reply, Ahead::kKeep, deadline);
    if (!IsWhole(reply)) stream_.Send("++read eoi\n", deadline);
  }
  // What came beyond it was not asked for.
  return reply.substr(0, reply.find('\n') + 1);
}

void ControllerAdapter::GoToLocal(const GpibAddress& address, const Deadline& deadline) {
  Address(address, deadline);
  stream_.Send("++loc\n", deadline);
}

}  // namespace orvane
