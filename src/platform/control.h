#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/signal.h"

namespace orvane {

class Panel;

/// A colour as the panels give it, 0x00BBGGRR, or a system colour with the top bit set.
using Colour = std::uint32_t;
inline constexpr Colour kGreen = 0x0000FF00;
inline constexpr Colour kRed = 0x000000FF;
inline constexpr Colour kButtonFace = 0x8000000F;
inline constexpr Colour kButtonText = 0x80000012;
inline constexpr Colour kWindow = 0x80000005;
inline constexpr Colour kWindowText = 0x80000008;

enum class ControlKind { Button, Text, Combo, List, Option, Check, Label, Frame, UpDown, Lamp, Progress, Tab, Image };

/// A control of a panel: plain observable state and the handlers of its events. Assignments are the station's own;
/// what an operator does comes through platform/operator.h. A window toolkit, the automation port and the tests
/// draw and press the same model.
class Control {
 public:
  Control(Panel& panel, ControlKind kind, std::string name);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  [[nodiscard]] Panel& Owner() const { return *panel_; }
  [[nodiscard]] ControlKind Kind() const { return kind_; }
  [[nodiscard]] const std::string& Name() const { return name_; }

  [[nodiscard]] bool Enabled() const { return enabled_; }
  /// Whether it serves an operator: it is enabled, and so are the frames around it.
  [[nodiscard]] bool EnabledForOperator() const;
  /// `why`: what an operator is told who finds it disabled, where it is not plain.
  void SetEnabled(bool enabled, std::string_view why = {}) {
    disabledWhy_ = why;
    Assign(enabled_, enabled);
  }
  [[nodiscard]] const std::string& DisabledWhy() const { return disabledWhy_; }
  [[nodiscard]] bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Assign(visible_, visible); }
  [[nodiscard]] Colour ForeColor() const { return foreColor_; }
  void SetForeColor(Colour colour) { Assign(foreColor_, colour); }
  [[nodiscard]] Colour BackColor() const { return backColor_; }
  void SetBackColor(Colour colour) { Assign(backColor_, colour); }

  /// Something about the control is shown anew.
  Signal<> changed;

 protected:
  template <class Value>
  bool Assign(Value& member, const Value& value) {
    if (member == value) return false;
    member = value;
    changed.Emit();
    return true;
  }
  void SetColours(Colour fore, Colour back) {
    foreColor_ = fore;
    backColor_ = back;
  }

 private:
  friend class Frame;

  Panel* panel_;
  const Control* frame_ = nullptr;
  ControlKind kind_;
  std::string name_;
  bool enabled_ = true;
  std::string disabledWhy_;
  bool visible_ = true;
  Colour foreColor_ = kButtonText;
  Colour backColor_ = kButtonFace;
};

/// A control that bears a caption.
class CaptionedControl : public Control {
 public:
  CaptionedControl(Panel& panel, ControlKind kind, std::string name, std::string caption)
      : Control(panel, kind, std::move(name)), caption_(std::move(caption)) {}
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption) { Assign(caption_, caption); }

 private:
  std::string caption_;
};

}  // namespace orvane
