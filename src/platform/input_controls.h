#pragma once

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "platform/control.h"

namespace orvane {

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

/// Rows that come at the end. Beyond `kMostRows` the oldest go, so a station that stands for months does not grow.
class ListBox final : public Control {
 public:
  static constexpr std::size_t kMostRows = 20000;

  ListBox(Panel& panel, std::string name) : Control(panel, ControlKind::List, std::move(name)) {
    SetColours(kWindowText, kWindow);
  }

  [[nodiscard]] const std::deque<std::string>& Items() const { return items_; }
  void AddItem(std::string_view item);
  void Clear();
  [[nodiscard]] int Selected() const { return selected_; }
  void Select(int index) { Assign(selected_, index); }

  /// A row was added at the end and nothing else changed (in place of `changed`).
  Signal<const std::string&> rowAdded;
  /// The first row has gone to make room for one that will be added; the others, the selected one among them, have
  /// moved up (in place of `changed`).
  Signal<> firstRowDropped;

 private:
  std::deque<std::string> items_;
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

}  // namespace orvane
