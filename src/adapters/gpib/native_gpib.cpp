#include "adapters/gpib/native_gpib.h"

#include <algorithm>

#include "adapters/gpib/deadline.h"

namespace orvane {
namespace {

constexpr int kLastPrimaryAddress = 30;
/// The search for listeners opens a device and speaks to none; not 0, which is the board's own as a rule.
constexpr int kSomePrimaryAddress = 1;
constexpr int kAnySecondaryAddress = -1;
constexpr int kEndWithLastByte = 1;
constexpr int kNoEndOfString = 0;
/// 1 s: a device clear is but a few bytes, and the failure before it has taken its time already.
constexpr int kClearTimeOutCode = 11;

std::string NameOf(const GpibAddress& address) {
  std::string name = "Instrument at address " + std::to_string(address.primary);
  if (address.secondary != 0) name += ", secondary " + std::to_string(address.secondary);
  if (address.board != 0) name += ", board " + std::to_string(address.board);
  return name + ", route native: ";
}

/// " within 10 s".
std::string Within(int timeOutCode) {
  return timeOutCode == 0 ? "" : " within " + SpanText(GpibTimeOutOf(static_cast<Integer>(timeOutCode)));
}

/// One device of the library's, closed with this object.
class Device {
 public:
  Device(const Ni488Library& calls, const GpibAddress& address, int timeOutCode)
      : calls_(calls),
        timeOutCode_(timeOutCode),
        number_(calls.ibdev(address.board, address.primary, address.secondary, timeOutCode, kEndWithLastByte,
                            kNoEndOfString)) {}
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;
  ~Device() {
    if (IsOpen()) calls_.ibonl(number_, 0);
  }

  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  [[nodiscard]] int Number() const { return number_; }
  /// @return whether it is so now.
  [[nodiscard]] bool TakeTimeOut(int code) {
    if (code == timeOutCode_) return true;
    calls_.ibtmo(number_, code);
    if (calls_.Status().Failed()) return false;
    timeOutCode_ = code;
    return true;
  }

 private:
  const Ni488Library& calls_;
  int timeOutCode_;
  int number_;
};

class NativeSession final : public GpibSession {
 public:
  NativeSession(NativeGpib& driver, const GpibAddress& address)
      : driver_(driver), address_(address), name_(NameOf(address)) {}

  ~NativeSession() override {
    if (device_) driver_.Do([this] { device_.reset(); });
  }

  void Write(std::string_view text, TimePoint timeOut) override {
    driver_.Do([&] { Send(text, timeOut); });
  }
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override {
    std::string reply;
    driver_.Do([&] { reply = Receive(size, timeOut); });
    return reply;
  }
  void Local() override {
    driver_.Do([this] { LetGo(); });
  }

 private:
  void Send(std::string_view text, TimePoint timeOut);
  [[nodiscard]] std::string Receive(std::size_t size, TimePoint timeOut);
  void LetGo();
  /// The calls, with the device open, owing no device clear, under that time-out.
  const Ni488Library& Ready(int timeOutCode);
  /// One part of a reply, up to that many bytes. @return whether the message ends with it.
  [[nodiscard]] bool ReadPart(std::size_t atMost, int timeOutCode, std::string& reply);
  /// @return whether the instrument took it. A reply that was on its way is lost then.
  bool Clear();
  [[noreturn]] void Fail(const char* call, const Ni488Status& status, const std::string& what) const;
  /// The same where part of a message is left, or a reply may still come.
  [[noreturn]] void FailAndClear(const char* call, const Ni488Status& status, const std::string& what);

  NativeGpib& driver_;
  GpibAddress address_;
  std::string name_;
  std::unique_ptr<Device> device_;
};

const Ni488Library& NativeSession::Ready(int timeOutCode) try {
  const Ni488Library& calls = driver_.Library();
  if (!device_) {
    auto device = std::make_unique<Device>(calls, address_, timeOutCode);
    if (!device->IsOpen()) Fail("ibdev", calls.Status(), "the GPIB library opens no device");
    device_ = std::move(device);
  }
  if (driver_.OwesClear(address_) && !Clear()) {
    Fail("ibclr", calls.Status(), "it takes no device clear, which is due since its last failure");
  }
  if (!device_->TakeTimeOut(timeOutCode)) Fail("ibtmo", calls.Status(), "the GPIB library refuses the time-out");
  return calls;
} catch (const Ni488Missing& missing) {
  throw GpibAbsent(name_ + missing.what());
}

bool NativeSession::Clear() {
  const Ni488Library& calls = driver_.Library();
  (void)device_->TakeTimeOut(kClearTimeOutCode);
  calls.ibclr(device_->Number());
  const bool taken = !calls.Status().Failed();
  driver_.SetOwesClear(address_, !taken);
  return taken;
}

void NativeSession::Fail(const char* call, const Ni488Status& status, const std::string& what) const {
  const std::string text = name_ + what + " (" + call + ": " + status.Text() + ").";
  throw status.TimedOut() ? GpibTimeOut(text) : GpibAbsent(text);
}

void NativeSession::FailAndClear(const char* call, const Ni488Status& status, const std::string& what) {
  (void)Clear();
  Fail(call, status, what);
}

void NativeSession::Send(std::string_view text, TimePoint timeOut) {
  const int code = GpibTimeOutCodeOf(timeOut);
  const Ni488Library& calls = Ready(code);
  calls.ibwrt(device_->Number(), text.data(), text.size());
  const Ni488Status status = calls.Status();
  const bool whole = status.ibcntl == static_cast<int>(text.size());
  if (!status.Failed() && whole) return;

  if (status.TimedOut()) FailAndClear("ibwrt", status, "the message was not taken" + Within(code));
  if (status.ibcntl > 0) FailAndClear("ibwrt", status, "the message was not sent to its end");
  Fail("ibwrt", status, "the message was not sent");
}

std::string NativeSession::Receive(std::size_t size, TimePoint timeOut) {
  const int code = GpibTimeOutCodeOf(timeOut);
  (void)Ready(code);
  const Deadline deadline(timeOut);
  std::string reply;
  // A read may stop short of the message's end without a failure: what is left comes with the next one.
  while (reply.size() < size && !ReadPart(size - reply.size(), code, reply)) {
    if (reply.size() < size && deadline.Passed()) {
      (void)Clear();
      throw GpibTimeOut(name_ + "no end of the reply" + Within(code) + ".");
    }
  }
  return reply;
}

bool NativeSession::ReadPart(std::size_t atMost, int timeOutCode, std::string& reply) {
  const Ni488Library& calls = driver_.Library();
  std::string bytes(atMost, '\0');
  calls.ibrd(device_->Number(), bytes.data(), bytes.size());
  const Ni488Status status = calls.Status();
  if (status.Failed()) {
    const bool begun = !reply.empty() || status.ibcntl > 0;
    FailAndClear("ibrd", status,
                 (begun ? "no end of the reply" : "no reply") + (status.TimedOut() ? Within(timeOutCode) : ""));
  }
  const bool isCount = status.ibcntl >= (status.End() ? 0 : 1) && static_cast<std::size_t>(status.ibcntl) <= atMost;
  if (!isCount) {
    FailAndClear("ibrd", status, "the GPIB library tells " + std::to_string(status.ibcntl) + " bytes of a reply");
  }
  reply.append(bytes, 0, static_cast<std::size_t>(status.ibcntl));
  return status.End();
}

void NativeSession::LetGo() {
  const auto device = std::move(device_);
  if (!device) return;
  const Ni488Library& calls = driver_.Library();
  calls.ibloc(device->Number());
  if (const Ni488Status status = calls.Status(); status.Failed()) Fail("ibloc", status, "not back to local");
}

}  // namespace

std::unique_ptr<GpibSession> NativeGpib::Open(const GpibAddress& address) {
  return std::make_unique<NativeSession>(*this, address);
}

std::vector<int> NativeGpib::Listeners(Integer board) try {
  const std::string who = "Board " + std::to_string(board) + ", route native: ";
  const Ni488Library& calls = Library();
  const Device device(calls, {board, kSomePrimaryAddress, 0}, kClearTimeOutCode);
  if (!device.IsOpen())
    throw GpibAbsent(who + "the GPIB library opens no device (ibdev: " + calls.Status().Text() + ").");
  std::vector<int> listeners;
  for (int primary = 0; primary <= kLastPrimaryAddress; ++primary) {
    short listens = 0;
    calls.ibln(device.Number(), primary, kAnySecondaryAddress, &listens);
    const Ni488Status status = calls.Status();
    if (status.Failed()) {
      throw GpibAbsent(who + "no search for address " + std::to_string(primary) + " (ibln: " + status.Text() + ").");
    }
    if (listens != 0) listeners.push_back(primary);
  }
  return listeners;
} catch (const Ni488Missing& missing) {
  throw GpibAbsent(std::string("Route native: ") + missing.what());
}

void NativeGpib::Do(const std::function<void()>& message) {
  if (!thread_ && (waits_ == nullptr || !waits_->onWait)) return message();
  // From the first message on it is the same thread: such a library may keep what it knows by thread.
  if (!thread_) thread_.emplace();
  thread_->Run(message, *waits_);
}

const Ni488Library& NativeGpib::Library() {
  if (!library_) library_ = Ni488Library::Load(name_);
  return *library_;
}

bool NativeGpib::OwesClear(const GpibAddress& address) const {
  return std::find(unclear_.begin(), unclear_.end(), address) != unclear_.end();
}

void NativeGpib::SetOwesClear(const GpibAddress& address, bool owes) {
  std::erase(unclear_, address);
  if (owes) unclear_.push_back(address);
}

}  // namespace orvane
