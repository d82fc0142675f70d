#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/controls.h"
#include "platform/panel.h"

namespace orvane {

/// How a panel's controls lie: a tree of rows, columns, frames and tabs, without a toolkit. The order of the tree is
/// the order of the tab key. A panel's layout stands beside its face: `Layout LayOut(FrmX&)` in `frm_x_layout.h`.
struct Layout {
  enum class Kind {
    Control,  ///< `control`, and `upDown` beside it when there is one.
    Row,      ///< `parts` side by side.
    Column,   ///< `parts` one below the other.
    Grid,     ///< `parts` in rows of `size`; columns share the room evenly.
    Form,     ///< `parts` are Fields, their captions aligned.
    Field,    ///< A caption (`control`, a Label, or else `text`) and `parts` side by side behind it.
    Group,    ///< `parts` one below the other in a frame: that of `control`, or one with the caption `text`.
    Tabs,     ///< `parts`: one page for each tab of `control`.
    Text,     ///< `text`, by itself.
    Space,    ///< Takes what room is left.
    View,     ///< A picture that a front end draws of the panel's data: `text` is its name.
  };

  Kind kind = Kind::Control;
  orvane::Control* control = nullptr;
  orvane::UpDown* upDown = nullptr;
  std::string text{};
  std::vector<Layout> parts{};

  /// Width of a box, a list, a button, a text or a view in characters; of the captions of a form, and of the caption
  /// of a field that stands in none; columns of a grid. 0: what the kind has by default.
  int size = 0;
  /// Lines of a text box of several lines, rows that a list shows at least. 0: one line, or the kind's default.
  int lines = 0;
  /// Share of the room that is left; 0: takes what it needs.
  int stretch = 0;
  /// Digits and bytes in columns: a type of fixed width.
  bool fixedPitch = false;
  /// To be read from three metres.
  bool large = false;
  /// The button that a person is here for.
  bool main = false;

  [[nodiscard]] Layout Wide(int characters) && { return With(&Layout::size, characters); }
  [[nodiscard]] Layout Lines(int count) && { return With(&Layout::lines, count); }
  [[nodiscard]] Layout Stretched(int share = 1) && { return With(&Layout::stretch, share); }
  [[nodiscard]] Layout FixedPitch() && { return With(&Layout::fixedPitch, true); }
  [[nodiscard]] Layout Large() && { return With(&Layout::large, true); }
  [[nodiscard]] Layout Main() && { return With(&Layout::main, true); }

 private:
  template <class Value>
  Layout With(Value Layout::*member, Value value) {
    this->*member = value;
    return std::move(*this);
  }
};

/// The words of a layout.
namespace lay {

using Parts = std::vector<Layout>;

[[nodiscard]] inline Layout Of(Control& control) { return {.control = &control}; }
/// A box with its up-down.
[[nodiscard]] inline Layout Spin(TextBox& box, UpDown& upDown) { return {.control = &box, .upDown = &upDown}; }
[[nodiscard]] inline Layout Row(Parts parts) { return {.kind = Layout::Kind::Row, .parts = std::move(parts)}; }
[[nodiscard]] inline Layout Column(Parts parts) { return {.kind = Layout::Kind::Column, .parts = std::move(parts)}; }
[[nodiscard]] inline Layout Grid(int columns, Parts parts) {
  return {.kind = Layout::Kind::Grid, .parts = std::move(parts), .size = columns};
}
[[nodiscard]] inline Layout Form(Parts fields) { return {.kind = Layout::Kind::Form, .parts = std::move(fields)}; }
/// With captions of that many characters: forms that stand one below the other have their boxes in one line.
[[nodiscard]] inline Layout Form(int captions, Parts fields) { return Form(std::move(fields)).Wide(captions); }
[[nodiscard]] inline Layout Field(Label& caption, Parts parts) {
  return {.kind = Layout::Kind::Field, .control = &caption, .parts = std::move(parts)};
}
[[nodiscard]] inline Layout Field(std::string caption, Parts parts) {
  return {.kind = Layout::Kind::Field, .text = std::move(caption), .parts = std::move(parts)};
}
[[nodiscard]] inline Layout Group(Frame& frame, Parts parts) {
  return {.kind = Layout::Kind::Group, .control = &frame, .parts = std::move(parts)};
}
[[nodiscard]] inline Layout Group(std::string caption, Parts parts) {
  return {.kind = Layout::Kind::Group, .text = std::move(caption), .parts = std::move(parts)};
}
[[nodiscard]] inline Layout Tabs(TabControl& tabs, Parts pages) {
  return {.kind = Layout::Kind::Tabs, .control = &tabs, .parts = std::move(pages)};
}
[[nodiscard]] inline Layout Text(std::string text) { return {.kind = Layout::Kind::Text, .text = std::move(text)}; }
[[nodiscard]] inline Layout Space() { return {.kind = Layout::Kind::Space, .stretch = 1}; }
[[nodiscard]] inline Layout View(std::string name) { return {.kind = Layout::Kind::View, .text = std::move(name)}; }

}  // namespace lay

/// The controls of a layout that it places, in the order of the tab key.
[[nodiscard]] std::vector<Control*> PlacedControls(const Layout& layout);

}  // namespace orvane
