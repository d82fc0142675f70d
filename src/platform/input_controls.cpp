#include "platform/input_controls.h"

#include <algorithm>

#include "base/failure.h"
#include "base/subscript.h"
#include "base/text.h"

namespace orvane {

void TextBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  changed.Emit();
  if (onChange) onChange();
}

void TextBox::AppendQuietly(std::string_view text) {
  if (text.empty()) return;
  text_ += text;
  appended.Emit(text);
}

void TextBox::DropFrontQuietly(std::size_t bytes) {
  text_.erase(0, bytes);
  changed.Emit();
}

void TextBox::DropLastCharacterQuietly() {
  if (text_.empty()) return;
  DropLastCharacter(text_);
  changed.Emit();
}

void ComboBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  changed.Emit();
  if (onChange) onChange();
}

void ComboBox::Pick(std::size_t index) {
  text_ = At(items_, static_cast<std::int64_t>(index));
  changed.Emit();
  Click();
}

int ComboBox::Selected() const {
  const auto hit = std::find(items_.begin(), items_.end(), text_);
  return hit == items_.end() ? -1 : static_cast<int>(hit - items_.begin());
}

void ListBox::AddItem(std::string_view item) {
  if (items_.size() < kMostRows) {
    items_.emplace_back(item);
  } else {
    // The text may be a part of the row that goes.
    std::string row(item);
    items_.pop_front();
    selected_ = std::max(selected_ - 1, -1);
    firstRowDropped.Emit();
    items_.push_back(std::move(row));
  }
  rowAdded.Emit(items_.back());
}

void ListBox::Clear() {
  items_.clear();
  selected_ = -1;
  changed.Emit();
}

void OptionButton::Select() {
  if (!selected_) Click();
}

void OptionButton::Click() {
  for (OptionButton* other : group_->Options()) {
    if (other != this) other->Assign(other->selected_, false);
  }
  Assign(selected_, true);
  if (onClick) onClick();
}

void CheckBox::SetChecked(bool checked) {
  if (Assign(checked_, checked) && onClick) onClick();
}

void UpDown::SetRange(Long min, Long max) {
  Assign(min_, min);
  Assign(max_, max);
}

void UpDown::SetValue(Long value) {
  if (value < min_ || value > max_) {
    throw StationFailure("The value " + std::to_string(value) + " of " + Name() + " is not within " +
                         std::to_string(min_) + " to " + std::to_string(max_) + ".");
  }
  if (Assign(value_, value) && onChange) onChange();
}

void UpDown::MoveTo(Long value) {
  SetValue(value);
  if (buddy_ != nullptr) buddy_->SetText(std::to_string(value));
}

void UpDown::StepBy(int steps) {
  Long from = value_;
  if (buddy_ != nullptr) PassOver([&] { from = ToLong(buddy_->Text()); });
  const auto to = std::clamp<std::int64_t>(std::int64_t{from} + std::int64_t{steps} * step_, min_, max_);
  MoveTo(static_cast<Long>(to));
}

}  // namespace orvane
