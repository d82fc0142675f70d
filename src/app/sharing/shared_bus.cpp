#include "app/sharing/shared_bus.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace orvane {
namespace {

using namespace std::chrono_literals;

/// How often who waits asks again.
constexpr TimePoint kLook = 50ms;

}  // namespace

/// One instrument of those that are lent. It may be ended within its own wait, by an Initialize that is served there.
class SharedBus::Session final : public GpibSession {
 public:
  Session(SharedBus& bus, Lent& ofLent, const GpibAddress& itsAddress, std::unique_ptr<GpibSession> session)
      : lent(ofLent),
        address(itsAddress),
        name("Instrument at address " + std::to_string(itsAddress.primary) + ", route " + bus.RouteOf(itsAddress)),
        inner(std::move(session)),
        bus_(bus) {
    lent.sessions.insert(this);
  }
  ~Session() override { lent.sessions.erase(this); }

  void Write(std::string_view text, TimePoint timeOut) override {
    bus_.Take(*this);
    inner->Write(text, timeOut);
  }
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override {
    bus_.Take(*this);
    return inner->Read(size, timeOut);
  }
  /// An instrument that another station may have by now is not put to local beneath it.
  void Local() override {
    if (IsOurs()) inner->Local();
  }
  [[nodiscard]] bool IsOurs() const { return isLocked && lent.lock->Held(); }

  Lent& lent;
  GpibAddress address;
  std::string name;
  std::unique_ptr<GpibSession> inner;
  bool isLocked = false;
  std::shared_ptr<int> here = std::make_shared<int>(0);

 private:
  SharedBus& bus_;
};

/// A wait on the stack, told and counted, however it is left.
class SharedBus::Wait {
 public:
  Wait(SharedBus& bus, Lent& lent) : bus_(bus), lent_(lent), began_(bus.loop_.Now()), stops_(bus.stopsAsked()) {}
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;
  ~Wait() {
    if (!lent_.lock->Held()) lent_.lock->StopWaiting();
    if (!told_) return;
    // One that stands inside another one is counted with it.
    if (--bus_.waits_ == 0) {
      bus_.waited_ += bus_.loop_.Now() - began_;
      bus_.onWait(std::nullopt);
    }
  }

  void Tell(Integer address) {
    if (!std::exchange(told_, true)) ++bus_.waits_;
    bus_.onWait(InstrumentWait{address, HolderOf(lent_), began_});
  }
  [[nodiscard]] bool IsStopped() const { return bus_.stopsAsked() != stops_; }
  [[nodiscard]] bool IsOver() const { return bus_.loop_.Now() - began_ >= bus_.wishes_.wait; }

 private:
  SharedBus& bus_;
  Lent& lent_;
  TimePoint began_;
  long stops_;
  bool told_ = false;
};

SharedBus::SharedBus(GpibBus& bus, EventLoop& loop, SharedInstruments wishes, std::string station)
    : bus_(bus),
      loop_(loop),
      wishes_(std::move(wishes)),
      holder_("station " + std::move(station) + ", process " + std::to_string(::getpid())) {
  if (wishes_.folder.empty()) wishes_.folder = UsualLockFolder();
}

SharedBus::~SharedBus() = default;

/// What is lent: behind an adapter all that hangs on it, since its replies do not say whose they are; on a bus whose
/// driver keeps the instruments apart, one of them.
std::string SharedBus::PlaceOf(const GpibAddress& address) const {
  std::string route = bus_.RouteOf(address);
  if (route != "native" && route != "virtual") return route;
  return route + " " + std::to_string(address.board) + ":" + std::to_string(address.primary) + "," +
         std::to_string(address.secondary);
}

bool SharedBus::IsShared(const GpibAddress& address) const {
  const std::string place = PlaceOf(address);
  return std::any_of(wishes_.addresses.begin(), wishes_.addresses.end(), [&](int primary) {
    GpibAddress other = address;
    other.primary = static_cast<Integer>(primary);
    return PlaceOf(other) == place;
  });
}

std::unique_ptr<GpibSession> SharedBus::Open(const GpibAddress& address) {
  auto session = bus_.Open(address);
  if (!IsShared(address)) return session;
  const std::string place = PlaceOf(address);
  Lent& lent = lents_[place];
  if (!lent.lock) lent.lock = std::make_unique<LockFile>(wishes_.folder, place);
  return std::make_unique<Session>(*this, lent, address, std::move(session));
}

/// Where this station has the lock itself, the gateway's is another machine's.
std::string SharedBus::HolderOf(const Lent& lent) {
  std::string holder = lent.lock->Held() ? "" : lent.lock->Holder();
  return holder.empty() ? "another client" : holder;
}

bool SharedBus::TryTake(Lent& lent, Session& session) {
  try {
    if (!lent.lock->TryTake(holder_)) return false;
  } catch (const LockFault& fault) {
    throw GpibAbsent(session.name + ": it is shared, and its lock cannot be used: " + fault.what() + ".");
  }
  session.isLocked = session.isLocked || session.inner->TryLock();
  return session.isLocked;
}

void SharedBus::Refuse(Lent& lent, const Session& session, const std::string& why) {
  lent.refused = session.name + ": it is shared, and " + HolderOf(lent) + " has it. " + why;
  throw GpibTimeOut(lent.refused);
}

void SharedBus::Take(Session& session) {
  if (session.IsOurs()) return;
  Lent& lent = session.lent;
  if (!lent.refused.empty()) throw GpibTimeOut(lent.refused);
  const std::weak_ptr<int> here = session.here;
  const std::string name = session.name;
  Wait wait(*this, lent);
  while (!TryTake(lent, session)) {
    if (!mayWait()) Refuse(lent, session, "This station starts without it.");
    if (wait.IsOver()) {
      Refuse(lent, session, "This station has waited for " + std::to_string(wishes_.wait.count()) + " s.");
    }
    wait.Tell(session.address.primary);
    const TimePoint next = loop_.Now() + kLook;
    while (loop_.Now() < next) {
      loop_.Yield(next);
      if (here.expired()) throw GpibAbsent(name + ": it was initialized again within a wait for it.");
      if (wait.IsStopped()) Refuse(lent, session, "The wait for it was stopped.");
    }
  }
}

void SharedBus::GiveBack(Lent& lent) {
  lent.refused.clear();
  for (Session* session : lent.sessions) {
    if (std::exchange(session->isLocked, false)) session->inner->Unlock();
  }
  lent.lock->GiveBack();
}

void SharedBus::OperationIsOver() {
  for (auto& [place, lent] : lents_) GiveBack(lent);
}

TimePoint SharedBus::TakeWaited() { return std::exchange(waited_, TimePoint{0}); }

}  // namespace orvane
