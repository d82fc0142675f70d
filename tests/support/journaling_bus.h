#pragma once

#include <memory>
#include <string>

#include "platform/gpib.h"
#include "support/journal.h"

namespace orvane::test {

/// A bus that notes every line written, "1: *IDN?", and passes it on.
class JournalingBus final : public GpibBus {
 public:
  JournalingBus(GpibBus& bus, Journal& journal) : bus_(bus), journal_(journal) {}

  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override {
    return std::make_unique<Session>(bus_.Open(address), journal_, address.primary);
  }
  [[nodiscard]] std::string RouteOf(const GpibAddress& address) const override { return bus_.RouteOf(address); }

 private:
  class Session final : public GpibSession {
   public:
    Session(std::unique_ptr<GpibSession> session, Journal& journal, int primary)
        : session_(std::move(session)), journal_(journal), primary_(primary) {}

    void Write(std::string_view text, TimePoint timeOut) override {
      journal_.Add(std::to_string(primary_) + ": " + std::string(text));
      session_->Write(text, timeOut);
    }
    std::string Read(std::size_t size, TimePoint timeOut) override { return session_->Read(size, timeOut); }
    void Local() override { session_->Local(); }

   private:
    std::unique_ptr<GpibSession> session_;
    Journal& journal_;
    int primary_;
  };

  GpibBus& bus_;
  Journal& journal_;
};

}  // namespace orvane::test
