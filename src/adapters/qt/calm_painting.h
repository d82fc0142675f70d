#pragma once

#include <QTimer>
#include <QWidget>
#include <chrono>

namespace orvane {

/// Paints a window at most 60 times a second, so that what is scrolled stays smooth, and lets it rest behind each
/// painting for so long that all of them take a small share of the time: a run is not held up by being looked at. A
/// window that rested long enough, as one that somebody types into does, is painted at once.
class CalmPainting final : public QObject {
 public:
  /// It lives as long as the window.
  explicit CalmPainting(QWidget& window);

  /// How often the window was painted.
  [[nodiscard]] int Paintings() const { return paintings_; }

  static constexpr std::chrono::milliseconds kShortestRest{16};

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Paint(QEvent& request);

  QWidget& window_;
  QTimer rest_;
  /// Something came to be painted while the window rested.
  bool due_ = false;
  int paintings_ = 0;
};

}  // namespace orvane
