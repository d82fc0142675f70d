#pragma once

#include <QDeadlineTimer>
#include <QTimer>
#include <QWidget>
#include <chrono>

namespace orvane {

/// Paints a window at most 60 times a second, so that what is scrolled stays smooth, and lets it rest behind each
/// painting for so long that all of them take a small share of the time. It paints in time that the station waits in
/// anyhow, as far as there is any: a run is not held up by being looked at.
class CalmPainting final : public QObject {
 public:
  /// It lives as long as the window.
  explicit CalmPainting(QWidget& window);

  /// Paints what has changed, if the window has rested and the painting will probably take no longer than that.
  void UseFreeTime(std::chrono::nanoseconds left);

  /// How often the window was painted.
  [[nodiscard]] int Paintings() const { return paintings_; }

  static constexpr std::chrono::milliseconds kShortestRest{16};
  /// What has changed is painted this long after the rest, free time or not; a rest that is many times longer when
  /// the painting before had no room in free time.
  static constexpr std::chrono::milliseconds kPatience{25};

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Whoever types or clicks sees soon what comes of it.
  void AnswerHands();
  /// In so much free time.
  void Paint(std::chrono::nanoseconds left);

  QWidget& window_;
  QDeadlineTimer rest_{0};
  /// Until then only free time is used.
  QDeadlineTimer heldUp_{0};
  /// Runs while something that has changed is not painted yet.
  QTimer patience_;
  /// What the next painting will probably take.
  std::chrono::nanoseconds cost_{0};
  int paintings_ = 0;
};

}  // namespace orvane
