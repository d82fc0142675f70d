#include "platform/control.h"

#include "platform/panel.h"

namespace orvane {

Control::Control(Panel& panel, ControlKind kind, std::string name)
    : panel_(&panel), kind_(kind), name_(std::move(name)) {
  panel.Add(*this);
}

bool Control::EnabledForOperator() const { return enabled_ && (frame_ == nullptr || frame_->EnabledForOperator()); }

}  // namespace orvane
