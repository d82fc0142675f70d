#include "platform/panel.h"

#include <algorithm>

#include "platform/controls.h"

namespace orvane {

void Panel::SetCaption(const std::string& caption) {
  caption_ = caption;
  changed.Emit();
}

void Panel::Create() {
  created_ = true;
  changed.Emit();
  if (onLoad) onLoad();
}

void Panel::Show() { Show(true); }

void Panel::ShowBeside() { Show(false); }

void Panel::Show(bool takesKeyboard) {
  Touch();
  takesKeyboard_ = takesKeyboard;
  visible_ = true;
  changed.Emit();
}

void Panel::Hide() {
  visible_ = false;
  changed.Emit();
}

void Panel::Close() {
  if (onClose) {
    onClose();
  } else {
    Hide();
  }
}

Control* Panel::Find(std::string_view control) const {
  const auto hit =
      std::find_if(controls_.begin(), controls_.end(), [&](const Control* c) { return c->Name() == control; });
  return hit == controls_.end() ? nullptr : *hit;
}

std::string ElementName(std::string_view name, int index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

}  // namespace orvane
