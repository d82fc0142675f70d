#pragma once

#include <memory>
#include <string>

#include "adapters/gpib/controller_adapter.h"
#include "adapters/gpib/route_session.h"

namespace orvane {

/// One instrument behind a `++` adapter, which it shares with the others of its bus.
class AdapterSession final : public RouteSession {
 public:
  AdapterSession(const GpibAddress& address, const std::string& route, std::shared_ptr<ControllerAdapter> adapter);
  ~AdapterSession() override { AdapterSession::HangUp(); }

 private:
  void Send(std::string_view text, const Deadline& deadline) override;
  std::string Receive(std::size_t size, const Deadline& deadline) override;
  void GoLocal(const Deadline& deadline) override { adapter_->GoToLocal(address_, deadline); }
  void HangUp() override;
  void Abandon() override;
  bool Lock(const Deadline& deadline) override;
  void LetGo(const Deadline& deadline) override;
  void Attach();

  GpibAddress address_;
  std::shared_ptr<ControllerAdapter> adapter_;
  bool isAttached_ = false;
  /// Received and not yet read.
  std::string pending_;
};

}  // namespace orvane
