#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QRegularExpression>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "adapters/gpib/long_waits.h"
#include "adapters/qt/hands.h"
#include "app/command_line.h"
#include "app/desk.h"
#include "app/engineer/engineer_word.h"
#include "app/golden/golden_unit.h"
#include "app/keeping/record_news.h"
#include "app/operator/operator_page.h"
#include "app/operator/preflight.h"
#include "app/operator/shift_log.h"
#include "app/operator/step_clock.h"
#include "app/station.h"
#include "app/station_status.h"
#include "app/surroundings.h"
#include "app/unit_identity.h"
#include "app/windows/past_runs.h"

namespace orvane {

/// What the operator's page shows and presses. All of it outlives the page.
struct OperatorWorld {
  EventLoop& loop;
  Station& station;
  Desk& desk;
  UnitIdentity& unit;
  Files& files;
  const StationStatus& status;
  const Options& options;
  /// Null where no records are kept.
  RecordNews* news = nullptr;
  PastRuns* runs = nullptr;
  /// Null where the profile has none.
  EngineerWord* word = nullptr;
  GoldenUnit* golden = nullptr;
  /// Messages to instruments that last; null where nobody tells of them.
  const LongWaits* waits = nullptr;
};

/// The operator's page on a station: it looks on, and presses the station's own buttons.
class OperatorView final : public QObject {
  Q_DECLARE_TR_FUNCTIONS(OperatorView)

 public:
  OperatorView(const OperatorWorld& world, bool isDark);
  ~OperatorView() override;

  /// Opens the engineers' panels, once somebody has given the word. Without a word the page has no way to them.
  std::function<void()> openPanels;

  [[nodiscard]] OperatorPage& Page() { return *page_; }
  void Show();
  /// While the engineers have the station.
  void Hide();
  /// Looks at once.
  void Look();
  /// The display has gone.
  void Abandon();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow();
  void Start(const QString& serial);
  /// Behind what can be asked without waiting.
  void AskWhetherPassedBefore(const QString& serial);
  void Press(const QString& serial);
  void Initialize(const std::vector<Lack>& lacks, const QString& serial);
  void Stop();
  /// Does what an engineer may do, once somebody has given the word.
  void AskForWord(std::function<void()> behind);
  void TryWord(const QString& word, const std::function<void()>& behind);
  void AskWhy(const QString& serial);
  void Excuse(const QString& why, const QString& serial);
  void PressExit();

  [[nodiscard]] std::optional<QString> FaultOf(const QString& serial) const;
  [[nodiscard]] CardContent CardOf(const std::vector<Lack>& lacks, const QString& serial);
  [[nodiscard]] CardContent CardOfCheck(const std::string& refusal, const QString& serial);
  void TellCheck(const GoldenFinding& finding);
  [[nodiscard]] QString GoldenWords() const;
  [[nodiscard]] CardContent CardOf(const Desk::OpenBox& open);
  [[nodiscard]] CardContent CardOf(const Desk::OpenDialog& open);
  [[nodiscard]] std::optional<CardContent> CardOfDesk();
  void Ask(CardContent card);

  void RunBegins();
  void RunIsOver();
  void FillShift();
  void TakeRecord();
  [[nodiscard]] QString GoesOn(RunStep step) const;
  [[nodiscard]] QString LinkWords() const;
  /// Which instrument is waited for; empty when none is.
  [[nodiscard]] QString WaitWords() const;
  [[nodiscard]] std::optional<OperatorPage::Covering> Covering() const;
  void LeaveVerdict();

  OperatorWorld at_;
  bool isDark_;
  Surroundings surroundings_;
  QRegularExpression pattern_;
  Hands hands_;
  StepClock clock_;
  ShiftLog shift_;
  std::unique_ptr<OperatorPage> page_;
  QTimer timer_;
  /// A question of the page's own, beneath the station's boxes.
  std::optional<CardContent> question_;
  int questions_ = 0;
  /// Lacks that harm no unit and were read once.
  std::vector<QString> readLacks_;
  /// Of the whole run under way, or of the last one.
  struct Run {
    bool isUnderWay = false;
    bool isSeen = true;
    ShiftUnit unit{};
    TimePoint began{};
    bool isStopped = false;
    std::string failure{};
  };
  Run run_;
  /// The page says that an instrument is waited for.
  bool saysWait_ = false;
  bool abandoned_ = false;
};

}  // namespace orvane
