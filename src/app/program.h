#pragma once

#include <memory>
#include <optional>
#include <variant>

#include "app/automation/automation_port.h"
#include "app/automation/automation_transport.h"
#include "app/command_line.h"
#include "app/engineer/engineer_word.h"
#include "app/golden/golden_unit.h"
#include "app/keeping/record_news.h"
#include "app/keeping/station_records.h"
#include "app/narrator.h"
#include "app/station.h"
#include "app/unit_identity.h"
#include "app/world.h"

namespace orvane {

/// How `--initialize` ends the program.
enum ExitStatus : int { kPassed = 0, kFailed = 1, kUndecided = 2 };

/// The windows that were asked for cannot be had, or went. EX_UNAVAILABLE of sysexits.h.
inline constexpr int kNoWindows = 69;

/// One station in its world, with the front ends that the command line asks for. It needs a QCoreApplication.
class Program {
 public:
  /// @throws OptionFault, naming the option, when the bench's store, the automation port's path or the golden unit's
  /// reference cannot be used;
  /// TraceFault when the trace cannot be written.
  explicit Program(const Options& options);

  [[nodiscard]] Station& TheStation() { return station_; }
  [[nodiscard]] World& TheWorld() { return world_; }
  [[nodiscard]] const Options& TheOptions() const { return options_; }
  [[nodiscard]] UnitIdentity& TheUnit() { return unit_; }
  /// Null for a station that has none.
  [[nodiscard]] GoldenUnit* TheGoldenUnit() { return golden_ ? &*golden_ : nullptr; }
  /// Null where the profile has no engineer's word.
  [[nodiscard]] EngineerWord* TheEngineersWord() { return engineerWord_ ? &*engineerWord_ : nullptr; }
  /// Null where no records are kept.
  [[nodiscard]] RecordNews* TheRecords() { return records_ ? &recordNews_ : nullptr; }

  /// Starts the station and serves it until it ends. @return the exit status.
  [[nodiscard]] int Run();

  /// The screen has gone, and the operator with it. With an automation port the program goes on like one that was
  /// started without windows. Without one, what is being done goes on to its end, and is the last thing done.
  void GoOnWithoutScreen();

 private:
  /// The client on the standard streams does not take what is said to it. The program ends as at the end of the
  /// input, but behind what is under way; where nobody else answers its boxes, they are answered by themselves.
  void EndBehindWhatIsUnderWay();
  void OpenAutomation();
  void KeepRecords();
  void WatchGoldenUnit(GoldenBook book);
  void TellGolden(const GoldenFinding& finding);
  /// Why an operator may not press this control now; no value where he may.
  [[nodiscard]] std::optional<std::string> RefusalOf(const Control& pressed);
  /// What became of a record, to everybody who looks on.
  void TellKept(const Kept& kept);
  void Serve();
  void PressInitialize();
  [[nodiscard]] bool Automated() const { return !std::holds_alternative<NoAutomation>(options_.automation); }
  [[nodiscard]] int VerdictStatus();

  Options options_;
  bool abandoned_ = false;
  bool clientLost_ = false;
  /// Since the operator's last act.
  bool runBegan_ = false;
  /// Until it is watched.
  std::optional<GoldenBook> goldenBook_;
  /// Until somebody is served there.
  std::unique_ptr<ListeningSocket> socket_;
  World world_;
  UnitIdentity unit_;
  Station station_;
  AutomationPort port_;
  std::optional<LineClearing> lineClearing_;
  std::optional<Narrator> narrator_;
  RecordNews recordNews_;
  std::optional<GoldenUnit> golden_;
  std::optional<EngineerWord> engineerWord_;
  std::optional<StationRecords> records_;
  std::variant<std::monostate, std::unique_ptr<StdioTransport>, std::unique_ptr<UnixSocketTransport>> transport_;
};

}  // namespace orvane
