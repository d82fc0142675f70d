#include "adapters/gpib/adapter_session.h"

#include <utility>

namespace orvane {

AdapterSession::AdapterSession(const GpibAddress& address, const std::string& route,
                               std::shared_ptr<ControllerAdapter> adapter)
    : RouteSession(address.primary, route), address_(address), adapter_(std::move(adapter)) {
  Attach();
}

void AdapterSession::Attach() {
  if (!std::exchange(isAttached_, true)) adapter_->Attach();
}

void AdapterSession::HangUp() {
  if (std::exchange(isAttached_, false)) adapter_->Detach();
  adapter_.reset();
}

bool AdapterSession::Lock(const Deadline& /*deadline*/) {
  Attach();
  return true;
}

/// The adapter serves one client: behind the last of its sessions here the connection is another's to make.
void AdapterSession::LetGo(const Deadline& /*deadline*/) {
  pending_.clear();
  if (std::exchange(isAttached_, false)) adapter_->Detach();
}

void AdapterSession::Abandon() {
  adapter_->Abandon(address_);
  HangUp();
}

void AdapterSession::Send(std::string_view text, const Deadline& deadline) {
  // An instrument throws away what is left of a reply when the next message comes.
  pending_.clear();
  adapter_->Write(address_, text, deadline);
}

std::string AdapterSession::Receive(std::size_t size, const Deadline& deadline) {
  if (pending_.empty()) pending_ = adapter_->Read(address_, deadline);
  std::string reply = pending_.substr(0, size);
  pending_.erase(0, reply.size());
  return reply;
}

}  // namespace orvane
