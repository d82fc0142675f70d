#pragma once

#include <array>
#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "bench/instrument_line.h"

namespace orvane::bench {

/// A GPIB controller adapter with the `++` commands, and the instruments on its bus. It does one line after another,
/// and hears no other while it reads. No clock: it says for how long it reads in vain.
class BusController {
 public:
  /// @param instruments by primary address
  explicit BusController(std::map<int, InstrumentLine*> instruments) : instruments_(std::move(instruments)) {}
  BusController(const BusController&) = delete;
  BusController& operator=(const BusController&) = delete;

  void Hear(std::string_view bytes);

  struct Done {
    std::string output;
    std::chrono::milliseconds busy{0};  ///< for so long behind it, the next line has to wait
  };
  /// Does what the next line says; no value when no line is whole yet.
  [[nodiscard]] std::optional<Done> Next();

  /// Lines done, commands and texts alike.
  [[nodiscard]] const LinkCounters& Counters() const { return counters_; }
  /// How often a setting was written to the memory that keeps it, which wears.
  [[nodiscard]] unsigned long Saved() const { return saved_; }

 private:
  enum Name { kAuto, kEoi, kEos, kEotChar, kEotEnable, kMode, kReadTimeOut, kSaveConfig, kNames };
  struct Setting {
    std::string_view word;
    int least;
    int most;
    int value;
  };
  using Settings = std::array<Setting, kNames>;

  [[nodiscard]] Done Obey(std::string_view words);
  [[nodiscard]] bool Set(Setting& setting, std::string_view argument);
  [[nodiscard]] Done AddressCommand(std::string_view argument);
  [[nodiscard]] Done Read(std::string_view until);
  [[nodiscard]] static Done Tell(const std::string& text);
  [[nodiscard]] Done SendText(std::string_view text);
  [[nodiscard]] InstrumentLine* Addressed() const;
  void Save();

  static const Settings kPowerOn;

  std::map<int, InstrumentLine*> instruments_;
  Settings settings_ = kPowerOn;
  int primary_ = 0;
  int secondary_ = 0;  ///< 0: none

  std::string heard_;
  std::string line_;
  bool escaped_ = false;
  int pluses_ = 0;  ///< unescaped ones at the beginning of the line
  LinkCounters counters_;
  unsigned long saved_ = 0;
};

}  // namespace orvane::bench
