#pragma once

#include <memory>

#include "app/trace/trace.h"
#include "platform/gpib.h"

namespace orvane {

/// A bus with a trace of every message and every failure; otherwise the bus itself. The end marks that a route adds
/// are no part of a message.
class TracedBus final : public GpibBus {
 public:
  TracedBus(GpibBus& bus, Trace& trace) : bus_(bus), trace_(trace) {}
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;
  [[nodiscard]] std::string RouteOf(const GpibAddress& address) const override { return bus_.RouteOf(address); }

 private:
  GpibBus& bus_;
  Trace& trace_;
};

}  // namespace orvane
