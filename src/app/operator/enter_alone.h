#pragma once

#include <QObject>
#include <QPushButton>
#include <functional>

namespace orvane {

/// Enter, which a foot pedal sends too, presses the button that has the keyboard. The Enter that ends what a scanner
/// typed does not: a unit that is scanned too early must not take a verdict or a box away before it was read.
class EnterAlone final : public QObject {
 public:
  /// @param onScanned something was typed and ended there
  EnterAlone(QObject* parent, std::function<void()> onScanned) : QObject(parent), onScanned_(std::move(onScanned)) {}

  void Guard(QPushButton& button) { button.installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void()> onScanned_;
  bool typed_ = false;
};

}  // namespace orvane
