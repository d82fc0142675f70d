#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvane::bench {

/// Whether a header as sent is that of a table, whose capitals are the short form: "INITiate:TXPower" is met by
/// "INIT:TXP" and by "initiate:txpower".
[[nodiscard]] bool HeaderMatches(std::string_view pattern, std::string_view header);

/// A number with or without a unit behind it, as "-74dBm" or "-74.5 DBM"; no value for anything else.
[[nodiscard]] std::optional<double> NumberOf(std::string_view argument);

/// "+3.19850E+001": sign, six digits, exponent of three digits.
[[nodiscard]] std::string ReadingText(double value);

/// Argument without blanks around, in capitals.
[[nodiscard]] std::string CapitalsOf(std::string_view argument);

/// Errors wait here until SYST:ERR? takes them, oldest first. Numbers and texts are those of SCPI 1999.
class ErrorQueue {
 public:
  void Push(int number, std::string_view text);
  /// `-113,"Undefined header"`, or `+0,"No error"`.
  [[nodiscard]] std::string Pop();
  void Clear() { errors_.clear(); }

 private:
  std::deque<std::string> errors_;
};

struct ScpiAnswer {
  std::optional<std::string> text;  ///< without line end; none for a line that asks nothing
  bool reading = false;             ///< it measured something
};

struct ScpiUnit {
  std::string_view header;
  std::string_view argument;
};

/// Cuts a line, which must outlive it, at its semicolons. A header that does not start anew continues the path of the
/// one before; common commands ("*OPC?") leave that path as it was.
class ScpiUnits {
 public:
  explicit ScpiUnits(std::string_view line) : rest_(line) {}

  /// The next unit, good until the one after it is asked for; null behind the last.
  [[nodiscard]] const ScpiUnit* Next();

 private:
  [[nodiscard]] std::string_view Continued(std::string_view header);

  std::string_view rest_;
  ScpiUnit unit_;
  /// The header that the next one continues.
  std::string_view before_;
  std::string joined_;
};

/// What all instruments of the bench have in common: a table of headers and an error queue. `Instrument` gives the
/// table as `static std::span<const Row> Rows()`.
template <class Instrument>
class ScpiInstrument {
 public:
  struct Row {
    std::string_view header;
    bool needsArgument;
    std::string (Instrument::*run)(std::string_view argument);  ///< an empty text is no answer
    bool reading = false;
  };

  ScpiAnswer Execute(std::string_view line) {
    ScpiAnswer answer;
    ScpiUnits units(line);
    while (const ScpiUnit* unit = units.Next()) {
      const Row* row = Find(unit->header);
      if (row == nullptr) {
        errors_.Push(-113, "Undefined header");
        continue;
      }
      if (row->needsArgument && unit->argument.empty()) {
        errors_.Push(-109, "Missing parameter");
        continue;
      }
      const std::string text = (static_cast<Instrument*>(this)->*row->run)(unit->argument);
      answer.reading = answer.reading || row->reading;
      if (unit->header.ends_with('?')) {
        answer.text = answer.text ? *answer.text + ";" + text : text;
      }
    }
    return answer;
  }

  /// An error of the exchange itself, such as an answer that nobody took.
  void Report(int number, std::string_view text) { errors_.Push(number, text); }

 protected:
  std::string NextError(std::string_view) { return errors_.Pop(); }
  std::string ClearErrors(std::string_view) {
    errors_.Clear();
    return {};
  }
  std::string OperationComplete(std::string_view) { return "1"; }

  /// Stores a number within its range, or leaves the value and queues the error.
  void Take(double& value, std::string_view argument, double low, double high) {
    const std::optional<double> number = NumberOf(argument);
    if (!number) {
      errors_.Push(-104, "Data type error");
    } else if (*number < low || *number > high) {
      errors_.Push(-222, "Data out of range");
    } else {
      value = *number;
    }
  }
  void Refuse() { errors_.Push(-224, "Illegal parameter value"); }

 private:
  const Row* Find(std::string_view header) {
    const auto known = known_.find(header);
    if (known != known_.end()) {
      return known->second;
    }
    const Row* found = nullptr;
    for (const Row& row : Instrument::Rows()) {
      if (HeaderMatches(row.header, header)) {
        found = &row;
        break;
      }
    }
    constexpr std::size_t kMostKnown = 500;
    if (found != nullptr && known_.size() < kMostKnown) {
      known_.emplace(header, found);
    }
    return found;
  }

  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };

  ErrorQueue errors_;
  std::unordered_map<std::string, const Row*, TextHash, std::equal_to<>> known_;
};

}  // namespace orvane::bench
