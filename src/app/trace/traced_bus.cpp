#include "app/trace/traced_bus.h"

#include "base/byte_hex.h"

namespace orvane {
namespace {

/// "GPIB 5"; a board or a secondary address of its own is told: "GPIB 1:5,96".
std::string LinkOf(const GpibAddress& address) {
  return "GPIB " + (address.board == 0 ? "" : std::to_string(address.board) + ":") + std::to_string(address.primary) +
         (address.secondary == 0 ? "" : "," + std::to_string(address.secondary));
}

class TracedSession final : public GpibSession {
 public:
  TracedSession(std::unique_ptr<GpibSession> session, Trace& trace, std::string link)
      : session_(std::move(session)), trace_(trace), link_(std::move(link)) {}

  void Write(std::string_view text, TimePoint timeOut) override {
    trace_.Note(link_, "out", text);
    Watched([&] { session_->Write(text, timeOut); });
  }
  [[nodiscard]] std::string Read(std::size_t size, TimePoint timeOut) override {
    std::string reply;
    Watched([&] { reply = session_->Read(size, timeOut); });
    trace_.Note(link_, "in", reply);
    return reply;
  }
  void Local() override {
    trace_.Note(link_, "close");
    Watched([&] { session_->Local(); });
  }
  [[nodiscard]] bool TryLock() override { return session_->TryLock(); }
  void Unlock() override { session_->Unlock(); }

 private:
  template <class Act>
  void Watched(Act act) {
    try {
      act();
    } catch (const GpibError& error) {
      trace_.Note(link_, "failure", {},
                  error.Text() + " ibsta = &H" + HexText(static_cast<Long>(error.ibsta)) +
                      ", iberr = " + std::to_string(error.iberr));
      throw;
    }
  }

  std::unique_ptr<GpibSession> session_;
  Trace& trace_;
  std::string link_;
};

}  // namespace

std::unique_ptr<GpibSession> TracedBus::Open(const GpibAddress& address) {
  return std::make_unique<TracedSession>(bus_.Open(address), trace_, LinkOf(address));
}

}  // namespace orvane
