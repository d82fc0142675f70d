#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QWidget>
#include <vector>

#include "app/operator/shift_log.h"

namespace orvane {

/// The shift in numbers, and its last ten units.
class ShiftBoard final : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(ShiftBoard)

 public:
  ShiftBoard(bool isDark, QWidget* parent);

  void Show(const ShiftLog& shift);

 private:
  QLabel* AddFigure(const char* name, const QString& caption, int column);

  static constexpr std::size_t kListed = 10;
  QLabel* units_;
  QLabel* yield_;
  QLabel* seconds_;
  std::vector<QLabel*> last_;
};

}  // namespace orvane
