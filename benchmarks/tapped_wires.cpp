#include "tapped_wires.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>

#include "program/relay_sockets.h"

namespace orvane::test {

TappedWires::TappedWires(const std::string& target, const std::string& testSet, std::chrono::milliseconds reading)
    : reading_(reading),
      benchsTarget_(::open(target.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC), "open the bench's Target"),
      place_(NextPlace()),
      testSetPlace_(testSet),
      listener_(ListenerAt(place_)),
      thread_([this] { Watch(); }) {}

TappedWires::~TappedWires() { End(); }

void TappedWires::End() {
  ends_ = true;
  if (thread_.joinable()) thread_.join();
}

void TappedWires::Watch() {
  constexpr int kLookMs = 20;
  while (!ends_) {
    std::array<pollfd, 5> files{{{target_.Get(), POLLIN, 0},
                                 {benchsTarget_.Get(), POLLIN, 0},
                                 {listener_.Get(), POLLIN, 0},
                                 {station_.Get(), POLLIN, 0},
                                 {testSet_.Get(), POLLIN, 0}}};
    const auto left = held_.empty() ? std::chrono::nanoseconds(std::chrono::milliseconds(kLookMs))
                                    : std::max(held_.front().until - Clock::now(), std::chrono::nanoseconds(0));
    const timespec wait{0, std::min<long>(left.count(), kLookMs * 1'000'000L)};
    (void)::ppoll(files.data(), files.size(), &wait, nullptr);
    CarryTarget();
    if (files[2].revents != 0) {
      station_ = Ready(bench::FileDescriptor(::accept(listener_.Get(), nullptr, nullptr), "accept the station"));
      testSet_ = ConnectionTo(testSetPlace_);
    }
    if (station_.Open()) CarryTestSet();
    LetGo();
  }
}

void TappedWires::CarryTarget() {
  if (const auto command = BytesFrom(target_.Get()); command && !command->empty()) {
    if (repliedAt_ != Clock::time_point()) {
      gapsUs_.push_back(std::chrono::duration<double, std::micro>(Clock::now() - repliedAt_).count());
      repliedAt_ = {};
    }
    SendAll(benchsTarget_.Get(), *command);
  }
  if (const auto reply = BytesFrom(benchsTarget_.Get()); reply && !reply->empty()) {
    repliedAt_ = Clock::now();
    SendAll(target_.Get(), *reply);
  }
}

void TappedWires::CarryTestSet() {
  if (const auto lines = BytesFrom(station_.Get()); lines && !lines->empty()) {
    readyAt_ = Clock::now();
    if (lines->find("FETC") != std::string::npos && lines->find('?') != std::string::npos) {
      ++readings_;
      readyAt_ += reading_;
    }
    SendAll(testSet_.Get(), *lines);
  }
  if (const auto reply = BytesFrom(testSet_.Get()); reply && !reply->empty()) held_.push_back({readyAt_, *reply});
}

void TappedWires::LetGo() {
  while (!held_.empty() && held_.front().until <= Clock::now()) {
    SendAll(station_.Get(), held_.front().bytes);
    held_.pop_front();
  }
}

}  // namespace orvane::test
