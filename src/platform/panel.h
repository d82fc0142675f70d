#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/signal.h"

namespace orvane {

class Control;

/// A panel: its controls, and whether it was created and is shown. A panel is created when it is first touched, and
/// its load operation runs then, once; closing it hides it and keeps its state.
class Panel {
 public:
  Panel(std::string name, std::string caption) : name_(std::move(name)), caption_(std::move(caption)) {}
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  virtual ~Panel() = default;

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  [[nodiscard]] bool Created() const { return created_; }
  [[nodiscard]] bool Visible() const { return visible_; }

  /// Creates the panel if it was not: runs the load operation.
  void Touch() {
    if (!created_) Create();
  }
  /// Shows the panel, not modal; touches it. A panel that is shown already comes to the front.
  void Show();
  /// The same for somebody who is at work elsewhere: whatever he types goes on to where it went.
  void ShowBeside();
  /// Whether whoever showed it last wants the keyboard for it.
  [[nodiscard]] bool TakesKeyboard() const { return takesKeyboard_; }
  void Hide();
  /// What the close button of its window does: the close operation, or else hiding it.
  void Close();

  std::function<void()> onLoad;
  std::function<void()> onClose;

  /// In the order of declaration.
  [[nodiscard]] const std::vector<Control*>& Controls() const { return controls_; }
  /// No control of that name: null.
  [[nodiscard]] Control* Find(std::string_view control) const;
  void Add(Control& control) { controls_.push_back(&control); }

  Signal<> changed;

 private:
  void Create();
  void Show(bool takesKeyboard);

  std::string name_;
  std::string caption_;
  bool created_ = false;
  bool visible_ = false;
  bool takesKeyboard_ = true;
  std::vector<Control*> controls_;
};

/// A panel as operations hold it: reaching for one of its controls touches it.
template <class Face>
class PanelRef {
 public:
  PanelRef(Face& face) : face_(&face) {}  // NOLINT(google-explicit-constructor)
  Face* operator->() const {
    face_->Touch();
    return face_;
  }
  Face& operator*() const { return *operator->(); }
  /// The panel as it is, not created by this: for assigning the handlers of its controls.
  [[nodiscard]] Face& Untouched() const { return *face_; }

 private:
  Face* face_;
};

/// Name of an element of a control array: "txtUP(3)".
[[nodiscard]] std::string ElementName(std::string_view name, int index);

}  // namespace orvane
