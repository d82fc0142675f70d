#include "bench/wires/reactor.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <sys/timerfd.h>

#include <csignal>
#include <cstdint>

namespace orvane::bench {
namespace {

FileDescriptor StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  Check(sigprocmask(SIG_BLOCK, &signals, nullptr), "block signals");
  // A client that goes away is met at the write that finds it gone.
  std::signal(SIGPIPE, SIG_IGN);
  return {signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK), "wait for signals"};
}

}  // namespace

Reactor::Reactor()
    : clock_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK), "make a timer"), signals_(StopSignals()) {}

Reactor::Time Reactor::Now() {
  return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now().time_since_epoch());
}

void Reactor::At(Time when, std::function<void()> act) { timers_.push({when, posted_++, std::move(act)}); }

void Reactor::ServeTimers() {
  while (!timers_.empty() && timers_.top().when <= Now()) {
    const std::function<void()> act = timers_.top().act;
    timers_.pop();
    act();
  }
}

void Reactor::SetClock() {
  if (timers_.empty()) return;
  constexpr long kNanosPerSecond = 1'000'000'000;
  const long when = timers_.top().when.count();
  const itimerspec at{{0, 0}, {when / kNanosPerSecond, when % kNanosPerSecond}};
  Check(timerfd_settime(clock_.Get(), TFD_TIMER_ABSTIME, &at, nullptr), "set a timer");
}

void Reactor::Run() {
  for (;;) {
    ServeTimers();
    SetClock();
    std::vector<pollfd> files{{signals_.Get(), POLLIN, 0}, {clock_.Get(), POLLIN, 0}};
    for (const auto& [fd, act] : readers_) files.push_back({fd, POLLIN, 0});
    if (poll(files.data(), files.size(), -1) < 0 && errno != EINTR) Check(-1, "wait for events");
    if (files[0].revents != 0) return;
    if (files[1].revents != 0) {
      std::uint64_t expirations = 0;
      [[maybe_unused]] const auto taken = read(clock_.Get(), &expirations, sizeof expirations);
    }
    for (std::size_t i = 2; i < files.size(); ++i) {
      // An earlier one of this round may have closed a later one.
      const auto reader = readers_.find(files[i].fd);
      if (files[i].revents != 0 && reader != readers_.end()) {
        const std::function<void()> act = reader->second;
        act();
      }
    }
  }
}

}  // namespace orvane::bench
