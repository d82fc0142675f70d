#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "platform/control.h"

namespace orvane {

class Label final : public CaptionedControl {
 public:
  Label(Panel& panel, std::string name, std::string caption)
      : CaptionedControl(panel, ControlKind::Label, std::move(name), std::move(caption)) {}
};

class Frame final : public CaptionedControl {
 public:
  Frame(Panel& panel, std::string name, std::string caption)
      : CaptionedControl(panel, ControlKind::Frame, std::move(name), std::move(caption)) {}

  /// Puts controls into the frame: while it is disabled, they refuse an operator too. Their own state stays as it is.
  /// Once for each control, by the panel's face.
  void Hold(std::initializer_list<Control*> controls);
};

/// A fill colour on a shape. The fill is its back colour.
class Lamp final : public Control {
 public:
  Lamp(Panel& panel, std::string name) : Control(panel, ControlKind::Lamp, std::move(name)) {}
};

class ProgressBar final : public Control {
 public:
  ProgressBar(Panel& panel, std::string name) : Control(panel, ControlKind::Progress, std::move(name)) {}

  [[nodiscard]] Long Max() const { return max_; }
  /// A value above the new maximum comes down to it.
  void SetMax(Long max);
  [[nodiscard]] Long Value() const { return value_; }
  /// @throws StationFailure beyond 0..max; the value stays.
  void SetValue(Long value);

 private:
  Long max_ = 100;
  Long value_ = 0;
};

class TabControl final : public Control {
 public:
  TabControl(Panel& panel, std::string name, std::vector<std::string> tabs)
      : Control(panel, ControlKind::Tab, std::move(name)), tabs_(std::move(tabs)) {}

  [[nodiscard]] const std::vector<std::string>& Tabs() const { return tabs_; }
  [[nodiscard]] int Selected() const { return selected_; }
  void Select(int index) { Assign(selected_, index); }

 private:
  std::vector<std::string> tabs_;
  int selected_ = 0;
};

class Image final : public Control {
 public:
  /// `picture` names what is shown: "fail", "pass", or "out of tolerance" and "not measured" for a pass that
  /// is none yet.
  Image(Panel& panel, std::string name, std::string picture)
      : Control(panel, ControlKind::Image, std::move(name)), picture_(std::move(picture)) {}
  [[nodiscard]] const std::string& Picture() const { return picture_; }
  void SetPicture(const std::string& picture) { Assign(picture_, picture); }

 private:
  std::string picture_;
};

}  // namespace orvane
