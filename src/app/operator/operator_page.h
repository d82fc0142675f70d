#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>
#include <optional>

#include "adapters/qt/calm_painting.h"
#include "app/operator/page_card.h"
#include "app/operator/shift_board.h"
#include "app/operator/step_tile.h"
#include "app/operator/verdict_cover.h"
#include "state/search_trail.h"

namespace orvane {

/// The operator's page: what stands on it and how it lies there. It knows no station; who owns it fills it and does
/// what is asked for on it.
class OperatorPage final : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(OperatorPage)

 public:
  struct Asked {
    /// Enter behind the serial number, or the button.
    std::function<void(const QString& serial)> start;
    std::function<void()> stop;
    std::function<void()> engineer;
    std::function<void()> exit;
  };
  /// `trail` outlives it.
  OperatorPage(Asked asked, SearchTrail& trail, bool isDark);

  struct Head {
    QString bench;
    bool isVirtual = false;
    QString station;
    QString link;
    /// Whether there is a word that opens the engineers' panels.
    bool hasEngineer = false;
  };
  void ShowHead(const Head& head);

  struct Run {
    /// The station is at something: a unit is connected, goes through its run, or an instrument is initialized.
    bool isBusy = false;
    bool isUnderWay = false;
    /// Of the unit in the run.
    QString serial{};
    QString stopWords{};
    QString elapsed{};
    int done = 0;
    int of = 0;
  };
  void ShowRun(const Run& run);
  void ShowStep(RunStep step, const StepClock::Step& state, TimePoint took, const QString& goesOn);
  void ShowShift(const ShiftLog& shift) { shift_->Show(shift); }
  /// Beneath the serial number.
  void ShowHint(const QString& hint);
  /// The number was not taken up: the next one takes its place.
  void MarkSerial() { serial_->selectAll(); }
  [[nodiscard]] QString Serial() const { return serial_->text(); }
  void SetSerial(const QString& serial) { serial_->setText(serial); }

  /// What lies over the page: a card, or else a verdict, or nothing.
  void ShowCard(const std::optional<CardContent>& card);
  struct Covering {
    UnitVerdict verdict;
    VerdictWords words;
    QString serial;
    QString record;
    friend bool operator==(const Covering&, const Covering&) = default;
  };
  void ShowVerdict(const std::optional<Covering>& covering, std::function<void()> onNext);

  void UseFreeTime(std::chrono::nanoseconds left) { painting_.UseFreeTime(left); }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* MakeHead();
  QWidget* MakeUnitRow();
  QWidget* MakeSteps();
  QPushButton* MakeButton(const char* name, const QString& caption, double units);
  /// Whoever lies on top has the keyboard; without any the serial number, and in a run nobody.
  void GiveKeyboard();
  void Lay();

  Asked asked_;
  bool isDark_;
  CalmPainting painting_{*this};
  QLabel* bench_ = nullptr;
  QLabel* station_ = nullptr;
  QLabel* link_ = nullptr;
  QLabel* hint_ = nullptr;
  QLabel* elapsed_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLineEdit* serial_ = nullptr;
  QPushButton* start_ = nullptr;
  QPushButton* stop_ = nullptr;
  QPushButton* engineer_ = nullptr;
  std::array<StepTile*, kRunSteps.size()> steps_{};
  ShiftBoard* shift_ = nullptr;
  PageCard* card_ = nullptr;
  VerdictCover* cover_ = nullptr;
  std::function<void()> onNext_;
  std::optional<Covering> covering_;
  bool isRun_ = false;
  std::optional<bool> isBusy_;
};

}  // namespace orvane
