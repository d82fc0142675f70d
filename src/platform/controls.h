#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
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
  void SetEnabled(bool enabled) { Assign(enabled_, enabled); }
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
  Panel* panel_;
  ControlKind kind_;
  std::string name_;
  bool enabled_ = true;
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

class Label final : public CaptionedControl {
 public:
  Label(Panel& panel, std::string name, std::string caption)
      : CaptionedControl(panel, ControlKind::Label, std::move(name), std::move(caption)) {}
};

class Frame final : public CaptionedControl {
 public:
  Frame(Panel& panel, std::string name, std::string caption)
      : CaptionedControl(panel, ControlKind::Frame, std::move(name), std::move(caption)) {}
};

class Button final : public CaptionedControl {
 public:
  Button(Panel& panel, std::string name, std::string caption)
      : CaptionedControl(panel, ControlKind::Button, std::move(name), std::move(caption)) {}

  std::function<void()> onClick;
  /// Runs the click operation. The station's own nested clicks come here, also to a disabled button.
  void Click() {
    if (onClick) onClick();
  }
};

class TextBox final : public Control {
 public:
  TextBox(Panel& panel, std::string name, std::string text = "")
      : Control(panel, ControlKind::Text, std::move(name)), text_(std::move(text)) {
    SetColours(kWindowText, kWindow);
  }

  [[nodiscard]] const std::string& Text() const { return text_; }
  /// Raises the change event when the text differs.
  void SetText(std::string_view text);
  /// Adds to the end, without raising a change event: for the boxes that serve as consoles.
  void AppendQuietly(std::string_view text);
  /// Drops that many bytes of the front, quietly.
  void DropFrontQuietly(std::size_t bytes);
  /// Drops the last character, quietly.
  void DropLastCharacterQuietly();

  std::function<void()> onChange;
  /// Key press, ahead of the key's own effect. Key 13 is Enter, 8 backspace.
  std::function<void(char32_t key)> onKeyPress;
  std::function<void()> onClick;
  std::function<void()> onLostFocus;

  /// Text was added at the end and nothing else changed (in place of `changed`), with what was added.
  Signal<std::string_view> appended;

 private:
  std::string text_;
};

class ComboBox final : public Control {
 public:
  ComboBox(Panel& panel, std::string name, std::string text, std::vector<std::string> items)
      : Control(panel, ControlKind::Combo, std::move(name)), text_(std::move(text)), items_(std::move(items)) {
    SetColours(kWindowText, kWindow);
  }

  [[nodiscard]] const std::string& Text() const { return text_; }
  /// The station's assignment, and typing: raises the change event when the text differs.
  void SetText(std::string_view text);
  /// Picking an entry of the list: raises the click event, and no change. @throws StationFailure for none.
  void Pick(std::size_t index);
  [[nodiscard]] const std::vector<std::string>& Items() const { return items_; }
  /// Index of the entry that the text shows, -1 for none.
  [[nodiscard]] int Selected() const;
  void Click() {
    if (onClick) onClick();
  }

  std::function<void()> onChange;
  std::function<void()> onClick;

 private:
  std::string text_;
  std::vector<std::string> items_;
};

class ListBox final : public Control {
 public:
  ListBox(Panel& panel, std::string name) : Control(panel, ControlKind::List, std::move(name)) {
    SetColours(kWindowText, kWindow);
  }

  [[nodiscard]] const std::vector<std::string>& Items() const { return items_; }
  void AddItem(std::string item);
  void Clear();
  [[nodiscard]] int Selected() const { return selected_; }
  void Select(int index) { Assign(selected_, index); }

  /// A row was added at the end and nothing else changed (in place of `changed`).
  Signal<const std::string&> rowAdded;

 private:
  std::vector<std::string> items_;
  int selected_ = -1;
};

class OptionButton;

/// Options of which one at most is selected.
class OptionGroup {
 public:
  void Add(OptionButton& option) { options_.push_back(&option); }
  [[nodiscard]] const std::vector<OptionButton*>& Options() const { return options_; }

 private:
  std::vector<OptionButton*> options_;
};

class OptionButton final : public CaptionedControl {
 public:
  enum class Start { Clear, Selected };
  OptionButton(Panel& panel, std::string name, std::string caption, OptionGroup& group, Start start = Start::Clear)
      : CaptionedControl(panel, ControlKind::Option, std::move(name), std::move(caption)),
        group_(&group),
        selected_(start == Start::Selected) {
    group.Add(*this);
  }

  [[nodiscard]] bool Selected() const { return selected_; }
  /// The station's selection: clears the others of its group; raises the click event when it was clear.
  void Select();
  /// An operator's: raises the click event in any case.
  void Click();

  std::function<void()> onClick;

 private:
  OptionGroup* group_;
  bool selected_;
};

class CheckBox final : public CaptionedControl {
 public:
  CheckBox(Panel& panel, std::string name, std::string caption, bool checked = false)
      : CaptionedControl(panel, ControlKind::Check, std::move(name), std::move(caption)), checked_(checked) {}

  [[nodiscard]] bool Checked() const { return checked_; }
  /// Raises the click event when the state changes.
  void SetChecked(bool checked);

  std::function<void()> onClick;

 private:
  bool checked_;
};

/// An up-down. A plain one (with a buddy) steps the number that stands in its box; one with `onChange` and no buddy
/// keeps a value of its own.
class UpDown final : public Control {
 public:
  UpDown(Panel& panel, std::string name, TextBox* buddy, Long min, Long max, Long value, Long step = 1)
      : Control(panel, ControlKind::UpDown, std::move(name)),
        buddy_(buddy),
        min_(min),
        max_(max),
        value_(value),
        step_(step) {}

  [[nodiscard]] TextBox* Buddy() const { return buddy_; }
  [[nodiscard]] Long Min() const { return min_; }
  [[nodiscard]] Long Max() const { return max_; }
  [[nodiscard]] Long Step() const { return step_; }
  [[nodiscard]] Long Value() const { return value_; }
  void SetRange(Long min, Long max);
  /// The station's assignment; raises the change event when the value differs.
  /// @throws StationFailure beyond the range.
  void SetValue(Long value);
  /// An operator's move to a value within the range: shown in the buddy, if there is one.
  void MoveTo(Long value);
  /// One step of an operator, from the number in the buddy or from the own value, kept within the range.
  void StepBy(int steps);

  std::function<void()> onChange;

 private:
  TextBox* buddy_;
  Long min_;
  Long max_;
  Long value_;
  Long step_;
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
  /// `picture` names what is shown: "fail" or "pass".
  Image(Panel& panel, std::string name, std::string picture)
      : Control(panel, ControlKind::Image, std::move(name)), picture_(std::move(picture)) {}
  [[nodiscard]] const std::string& Picture() const { return picture_; }

 private:
  std::string picture_;
};

}  // namespace orvane
