#include "program/relay.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "program/relay_sockets.h"

namespace orvane::test {
namespace {

using bench::Check;
using bench::FileDescriptor;
using namespace std::chrono_literals;

/// Of a connection that is cut in the middle of a reply.
constexpr std::size_t kBytesAheadOfCut = 2;

}  // namespace

Relay::Relay(const WiredBench& bench, std::string instruments, const std::string& folder, As as)
    : instruments_(std::move(instruments)),
      place_(as == As::kDevice ? folder + "/instruments" : NextPlace()),
      targetPlace_(folder + "/line"),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "make an event") {
  std::filesystem::create_symlink(target_.Path(), targetPlace_);
  Connect(bench);
  if (as == As::kDevice) {
    OpenDevice();
  } else {
    listener_ = ListenerAt(place_);
  }
  thread_ = std::thread([this] { Serve(); });
}

Relay::~Relay() {
  {
    const std::scoped_lock lock(mutex_);
    ends_ = true;
  }
  Wake();
  thread_.join();
}

void Relay::Connect(const WiredBench& bench) {
  benchPlace_ = bench.Place(instruments_);
  benchsTarget_ = FileDescriptor(::open(bench.Place("target").c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC),
                                 "open the bench's Target");
}

void Relay::LeadTo(const WiredBench& bench) {
  const std::scoped_lock lock(mutex_);
  Connect(bench);
  if (device_) links_.front().bench = ConnectionTo(benchPlace_);
  Wake();
}

void Relay::Break(const WireFault& fault) {
  const std::scoped_lock lock(mutex_);
  fault_ = fault;
  met_ = 0;
  struck_ = spent_ = false;
  struckAt_.reset();
  for (Link& link : links_) link.tailThere = link.tailBack = "";
  if (fault.nth == 0) Strike();
  Wake();
}

void Relay::Mend() {
  const std::scoped_lock lock(mutex_);
  fault_ = {};
  struck_ = spent_ = false;
  if (listener_.Open()) {
    Check(::listen(listener_.Get(), SOMAXCONN), "listen again");
  } else if (!device_) {
    OpenDevice();
  }
  Wake();
}

std::optional<Relay::Clock::time_point> Relay::StruckAt() {
  const std::scoped_lock lock(mutex_);
  return struckAt_;
}

Relay::Clock::time_point Relay::SpokenAt() {
  const std::scoped_lock lock(mutex_);
  return spokenAt_;
}

void Relay::Wake() const {
  const std::uint64_t one = 1;
  (void)!::write(wake_.Get(), &one, sizeof one);
}

void Relay::OpenDevice() {
  device_.emplace();
  std::filesystem::remove(place_);
  std::filesystem::create_symlink(device_->Path(), place_);
  links_.clear();
  Link& link = links_.emplace_back();
  link.station = FileDescriptor(::fcntl(device_->Get(), F_DUPFD_CLOEXEC, 0), "share a pseudo-terminal");
  link.bench = ConnectionTo(benchPlace_);
}

void Relay::Serve() {
  while (true) {
    std::vector<pollfd> files{{wake_.Get(), POLLIN, 0}};
    auto patience = 1000ms;
    {
      const std::scoped_lock lock(mutex_);
      if (ends_) return;
      const bool refuses = struck_ && fault_.wrong == Wrong::kRefuses;
      files.push_back({target_.Get(), POLLIN, 0});
      files.push_back({benchsTarget_.Get(), POLLIN, 0});
      files.push_back({refuses ? -1 : listener_.Get(), POLLIN, 0});
      const bool deaf = struck_ && fault_.wrong == Wrong::kDeaf;
      for (const Link& link : links_) {
        files.push_back({deaf ? -1 : link.station.Get(), POLLIN, 0});
        files.push_back({link.bench.Get(), POLLIN, 0});
        if (link.late.empty()) continue;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(link.late.front().when - Clock::now());
        patience = std::clamp(left, 0ms, patience);
      }
    }
    ::poll(files.data(), files.size(), static_cast<int>(patience.count()));
    std::uint64_t woken = 0;
    (void)!::read(wake_.Get(), &woken, sizeof woken);
    const std::scoped_lock lock(mutex_);
    Turn();
  }
}

void Relay::Turn() {
  if (listener_.Open()) Accept();
  for (Link& link : links_) {
    if (!(struck_ && fault_.wrong == Wrong::kDeaf)) TakeThere(link);
    if (link.bench.Open()) TakeBack(link);
    SendLate(link);
  }
  links_.remove_if([](const Link& link) { return link.over; });
  CarryTarget();
}

void Relay::CarryTarget() {
  if (!benchsTarget_.Open()) return;
  const auto command = BytesFrom(target_.Get());
  if (command && !command->empty()) {
    spokenAt_ = Clock::now();
    SendAll(benchsTarget_.Get(), *command);
  }
  const auto reply = BytesFrom(benchsTarget_.Get());
  if (reply) {
    SendAll(target_.Get(), *reply);
  } else {
    benchsTarget_.Close();
  }
}

void Relay::Accept() {
  const int socket = ::accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC);
  if (socket < 0) return;
  Link link;
  link.station = Ready(FileDescriptor(socket, "accept"));
  link.bench = ConnectionTo(benchPlace_);
  if (link.bench.Open()) links_.push_back(std::move(link));
}

void Relay::TakeThere(Link& link) {
  if (link.over) return;
  const auto bytes = BytesFrom(link.station.Get());
  link.over = !bytes;
  if (!bytes || bytes->empty()) return;
  spokenAt_ = Clock::now();
  if (Strikes(Way::kThere, link.tailThere, *bytes)) Strike();
  const bool lost = struck_ && (fault_.wrong == Wrong::kDeaf || fault_.wrong == Wrong::kRefuses);
  if (!lost) SendAll(link.bench.Get(), *bytes);
}

void Relay::TakeBack(Link& link) {
  if (link.over) return;
  const auto bytes = BytesFrom(link.bench.Get());
  if (!bytes) {
    // A device stays when what is behind it has gone.
    link.bench.Close();
    link.over = !device_;
    return;
  }
  if (bytes->empty()) return;
  const auto textAt = Strikes(Way::kBack, link.tailBack, *bytes);
  if (textAt) Strike();
  if (!link.over) PassBack(link, *bytes, textAt.value_or(0));
}

void Relay::PassBack(Link& link, std::string bytes, std::size_t textAt) {
  const bool first = struck_ && !std::exchange(spent_, struck_);
  const Wrong wrong = struck_ ? fault_.wrong : Wrong::kNothing;
  if (wrong == Wrong::kSilent) return;
  if (wrong == Wrong::kCut && first) {
    SendAll(link.station.Get(), std::string_view(bytes).substr(0, textAt + kBytesAheadOfCut));
    link.over = true;
    PullOut();
    return;
  }
  if (wrong == Wrong::kSurplus && first) bytes += bytes;
  if (wrong == Wrong::kFlipped && first) bytes[textAt] = static_cast<char>(bytes[textAt] ^ 0x80);
  if (wrong == Wrong::kLate || !link.late.empty()) {
    // On one wire nothing overtakes.
    const auto when = Clock::now() + (wrong == Wrong::kLate ? kLateBy : 0ms);
    link.late.push_back({link.late.empty() ? when : std::max(when, link.late.back().when), bytes});
    return;
  }
  const std::size_t piece = wrong == Wrong::kSingleBytes ? 1 : bytes.size();
  for (std::size_t at = 0; at < bytes.size(); at += piece) SendAll(link.station.Get(), bytes.substr(at, piece));
}

void Relay::SendLate(Link& link) {
  while (!link.over && !link.late.empty() && link.late.front().when <= Clock::now()) {
    SendAll(link.station.Get(), link.late.front().bytes);
    link.late.pop_front();
  }
}

void Relay::Strike() {
  struck_ = true;
  struckAt_ = Clock::now();
  if (fault_.wrong == Wrong::kRefuses) BreakConnections();
}

void Relay::BreakConnections() {
  // A socket that is shut down keeps its place and lets nobody connect.
  if (listener_.Open()) ::shutdown(listener_.Get(), SHUT_RDWR);
  for (Link& link : links_) {
    link.over = true;
    link.station.Close();
  }
  PullOut();
}

void Relay::PullOut() {
  if (!device_) return;
  // Its name goes with it: the number behind it is soon another terminal's.
  std::filesystem::remove(place_);
  device_.reset();
}

std::optional<std::size_t> Relay::Strikes(Way way, std::string& tail, const std::string& bytes) {
  if (struck_ || fault_.wrong == Wrong::kNothing || fault_.way != way) return std::nullopt;
  const std::string all = tail + bytes;
  const std::size_t size = fault_.text.size();
  std::size_t from = 0;
  for (auto at = all.find(fault_.text); at != std::string::npos; at = all.find(fault_.text, from)) {
    if (++met_ == fault_.nth) return at - std::min(at, tail.size());
    from = at + size;
  }
  tail = all.substr(std::max(from, all.size() - std::min(all.size(), size - 1)));
  return std::nullopt;
}

}  // namespace orvane::test
