#pragma once

#include <chrono>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "bench/wires/file_descriptor.h"
#include "bench/wires/listener.h"
#include "bench/wires/terminal_pair.h"
#include "program/wired_bench.h"

namespace orvane::test {

/// What can go wrong on a wire.
enum class Wrong {
  kNothing,
  kRefuses,      ///< connections end and none is made; a device is pulled out
  kSilent,       ///< nothing comes back
  kDeaf,         ///< nothing is taken any more, that request included
  kSingleBytes,  ///< replies come byte by byte
  kSurplus,      ///< one reply comes twice
  kCut,          ///< the connection ends in the middle of one reply, two bytes into its text
  kLate,         ///< what comes back from then on comes later
  kFlipped,      ///< the top bit of the first byte of one reply's text is wrong
};

enum class Way { kThere, kBack };

/// What goes wrong, and when: with the n-th text like this on its way, 0 for at once. A reply that goes wrong is the
/// one with that text, or the next one behind a request.
struct WireFault {
  Wrong wrong = Wrong::kNothing;
  Way way = Way::kThere;
  std::string text;
  int nth = 1;
};

/// The wires between the station and the bench, in a thread of their own. One that leads to instruments can be
/// broken: a TCP socket, or a serial device, which leads to a TCP socket of the bench. The Target's line goes the
/// same way and is sound: what was sent to an instrument ahead of a command arrives ahead of it, however late the
/// thread is.
class Relay {
 public:
  using Clock = std::chrono::steady_clock;

  /// By how much a reply is late.
  static constexpr std::chrono::milliseconds kLateBy{4000};

  enum class As { kSocket, kDevice };

  /// @param instruments which of the bench's places, such as "adapter"
  /// @param folder for the names of devices
  Relay(const WiredBench& bench, std::string instruments, const std::string& folder, As as = As::kSocket);
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;
  ~Relay();

  /// Where the station finds the instruments, and the Target.
  [[nodiscard]] const std::string& Place() const { return place_; }
  [[nodiscard]] const std::string& TargetPlace() const { return targetPlace_; }
  /// Everything goes to another bench from now on.
  void LeadTo(const WiredBench& bench);
  void Break(const WireFault& fault);
  /// Whole again. What is late still comes.
  void Mend();
  /// When the fault struck, if it did.
  [[nodiscard]] std::optional<Clock::time_point> StruckAt();
  /// When the station last said something, to the instruments or to the Target.
  [[nodiscard]] Clock::time_point SpokenAt();

 private:
  struct Late {
    Clock::time_point when;
    std::string bytes;
  };
  /// One connection, or the device. Of each way the end of what went by is kept: a text may come in pieces.
  struct Link {
    bench::FileDescriptor station;
    bench::FileDescriptor bench;
    std::string tailThere;
    std::string tailBack;
    std::deque<Late> late;
    bool over = false;
  };

  void Connect(const WiredBench& bench);
  void CarryTarget();
  void Serve();
  void Turn();
  void Wake() const;
  void OpenDevice();
  void Accept();
  void TakeThere(Link& link);
  void TakeBack(Link& link);
  void PassBack(Link& link, std::string bytes, std::size_t textAt);
  void SendLate(Link& link);
  void Strike();
  void BreakConnections();
  void PullOut();
  /// Whether the fault strikes in these bytes. @return where its text begins in them
  std::optional<std::size_t> Strikes(Way way, std::string& tail, const std::string& bytes);

  std::string instruments_;
  std::string benchPlace_;
  std::string place_;
  std::string targetPlace_;
  bench::TerminalPair target_;
  bench::FileDescriptor benchsTarget_;
  std::mutex mutex_;
  bench::FileDescriptor wake_;
  bench::FileDescriptor listener_;
  std::optional<bench::TerminalPair> device_;
  std::list<Link> links_;
  WireFault fault_;
  int met_ = 0;
  bool struck_ = false;
  /// Of those that strike one reply: whether it has been.
  bool spent_ = false;
  std::optional<Clock::time_point> struckAt_;
  Clock::time_point spokenAt_;
  bool ends_ = false;
  std::thread thread_;
};

}  // namespace orvane::test
