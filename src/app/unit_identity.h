#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "panels/station_panels.h"
#include "platform/signal.h"

namespace orvane {

/// What a run is told of its unit and of who runs it: UTF-8 without control characters, empty where it is not known.
struct UnitTexts {
  std::string serial{};
  std::string operatorName{};
  std::string part{};
  std::map<std::string, std::string> tags{};
  friend bool operator==(const UnitTexts&, const UnitTexts&) = default;
};

/// What somebody wants changed. What has no value stays; an empty text is taken back.
struct UnitChange {
  std::optional<std::string> serial{};
  std::optional<std::string> operatorName{};
  std::optional<std::string> part{};
  /// Put beside those that hold; one without a value goes.
  std::map<std::string, std::optional<std::string>> tags{};
};

/// A text that no record can hold. It says which one, and what is wrong with it.
class UnitFault : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What is wrong with such a text, as the end of a sentence that its name begins; no value when nothing is.
[[nodiscard]] std::optional<std::string> FaultOfUnitText(std::string_view text);

/// `KEY=VALUE`. @throws UnitFault
[[nodiscard]] std::pair<std::string, std::string> ParseTag(std::string_view text);

inline constexpr std::string_view kSerialNeeded = "A serial number is needed.";

/// Which unit is to be calibrated next, by whom, and what else belongs into its record. The serial number is one
/// run's: it is forgotten behind it. All else holds until it is changed.
class UnitIdentity {
 public:
  /// `asksSerial`: no run of an operator begins without a serial number.
  explicit UnitIdentity(UnitTexts texts = {}, bool asksSerial = false)
      : texts_(std::move(texts)), asksSerial_(asksSerial) {}
  UnitIdentity(const UnitIdentity&) = delete;
  UnitIdentity& operator=(const UnitIdentity&) = delete;

  /// Follows the runs of a station, which lives no longer than this.
  void Follow(StationPanels& panels);

  /// What holds for the run that is under way, or else for the next one.
  [[nodiscard]] const UnitTexts& Texts() const { return texts_; }
  /// A run is under way, a whole one or one that was started by hand. It keeps what it began with.
  [[nodiscard]] bool InRun() const { return inRun_; }
  [[nodiscard]] bool LacksSerial() const { return asksSerial_ && texts_.serial.empty(); }

  /// All of it, or nothing. Not within a run. @throws UnitFault
  void Change(const UnitChange& change);

  /// Texts or run are others than before.
  Signal<> changed;

 private:
  UnitTexts texts_;
  bool asksSerial_;
  bool inRun_ = false;
};

/// Whether an operator who presses this control starts a run of any kind.
[[nodiscard]] bool StartsARun(StationPanels& panels, const Control& pressed);

/// Why an operator may not press this control for want of a serial number: it starts a run. No value where he may.
[[nodiscard]] std::optional<std::string> SerialRefusal(const UnitIdentity& unit, StationPanels& panels,
                                                       const Control& pressed);

}  // namespace orvane
