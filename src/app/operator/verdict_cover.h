#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <functional>

#include "app/operator/unit_verdict.h"

namespace orvane {

/// The verdict over the whole page: a mark and a word that are told apart without colour, why, what to do, and the
/// one button.
class VerdictCover final : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(VerdictCover)

 public:
  VerdictCover(std::function<void()> onNext, QWidget* parent);

  void Show(UnitVerdict verdict, const VerdictWords& words, const QString& serial, const QString& record);
  void TakeKeyboard() { next_->setFocus(); }

 protected:
  /// What lies beneath it takes no keys.
  bool focusNextPrevChild(bool /*next*/) override { return true; }

 private:
  class Mark;
  QLabel* Add(const char* name, double units);

  Mark* mark_;
  QLabel* word_;
  QLabel* serial_;
  QLabel* why_;
  QLabel* toDo_;
  QLabel* details_;
  QLabel* record_;
  QLabel* hint_;
  QPushButton* next_;
};

}  // namespace orvane
