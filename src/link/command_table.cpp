#include "link/command_table.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/byte_hex.h"
#include "base/subscript.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr std::size_t kFirstArgument = 2;

// Argument forms: how one word becomes data bytes.

void Int(std::string_view word, CommandData& frame) { frame.Add(ToInteger(word)); }

void IntZero(std::string_view word, CommandData& frame) {
  Int(word, frame);
  frame.Add(0);
}

void IntHex(std::string_view word, CommandData& frame) {
  frame.Add(IsHexWord(word) ? HexToInteger(HexDigitsOf(word)) : ToInteger(word));
}

void AddLittleEndian(Long value, CommandData& frame) {
  const WordInHex word = WordToHexConvert(value);
  frame.Add(HexToInteger(word.lower));
  frame.Add(HexToInteger(word.upper));
}

void LongHex(std::string_view word, CommandData& frame) {
  AddLittleEndian(IsHexWord(word) ? HexToLong(HexDigitsOf(word)) : ToLong(word), frame);
}

void SignedWord(std::string_view word, CommandData& frame) { AddLittleEndian(ToInteger(word), frame); }

/// Negative values stay as they are: no byte holds them, and assembly fails.
void UnsignedWord(std::string_view word, CommandData& frame) {
  const Integer value = ToInteger(word);
  if (value >= 256) {
    AddLittleEndian(value, frame);
  } else {
    frame.Add(value);
    frame.Add(0);
  }
}

/// One byte and the byte of its sign, good for -256 to 255; assembly fails beyond.
void SignedByte(std::string_view word, CommandData& frame) {
  const Integer value = ToInteger(word);
  frame.Add(value < 0 ? static_cast<Integer>(value + 256) : value);
  frame.Add(value < 0 ? 255 : 0);
}

template <auto form>
void InFourBytes(std::string_view word, CommandData& frame) {
  form(word, frame);
  frame.Add(0);
  frame.Add(0);
}

// Lines: what the words behind the command word come to.

/// One argument form for each word in turn.
template <auto... forms>
bool Arguments([[maybe_unused]] const WordArray& words, [[maybe_unused]] CommandData& frame) {
  [[maybe_unused]] std::size_t at = kFirstArgument;
  (forms(words[at++], frame), ...);
  return true;
}

/// A table number and its 32 values, zero where the line is short. Words behind them are read and dropped.
bool TemplateValues(const WordArray& words, CommandData& frame) {
  constexpr Integer kTemplateBytes = 33;
  for (std::size_t i = kFirstArgument; i <= words.Count(); ++i) {
    const Integer value = ToInteger(words[i]);
    if (frame.count < kTemplateBytes) frame.Add(value);
  }
  frame.count = kTemplateBytes;
  return true;
}

/// "0x" and four hexadecimal digits.
std::string HexWord(Integer value) {
  const std::string digits = HexText(value);
  return "0x" + std::string(4 - digits.size(), '0') + digits;
}

/// Flash table 100: five values of two bytes. The digits are taken by their places: the third and fourth character
/// are the high byte, the fifth and sixth the low one.
bool FlashTable(const WordArray& words, CommandData& frame) {
  constexpr std::size_t kFirstValue = kFirstArgument + 1;
  constexpr std::size_t kValuesEnd = kFirstValue + 5;
  for (std::size_t i = kFirstValue; i < kValuesEnd; ++i) {
    if (words[i].empty()) return false;
  }
  frame.Add(100);
  for (std::size_t i = kFirstValue; i < kValuesEnd; ++i) {
    const std::string_view word = words[i];
    const std::string digits = IsHexWord(word) ? "&H" + std::string(HexDigitsOf(word)) : HexWord(ToInteger(word));
    const auto pair = [&](std::size_t at) { return "&H" + std::string(Characters(digits, at, 2)); };
    Int(pair(4), frame);
    Int(pair(2), frame);
  }
  return true;
}

/// A table of another number than these goes out without data.
bool SpecialTable(const WordArray& words, CommandData& frame) {
  const std::string_view table = words[kFirstArgument];
  if (table == "100") return FlashTable(words, frame);
  if (table != "3" && table != "10" && table != "20") return true;
  for (std::size_t i = kFirstArgument; i <= words.Count(); ++i) IntHex(words[i], frame);
  return true;
}

// In the order of the comparison: `rfpw` takes the long form that `rxpw` bears too.
constexpr std::array kCommandRows{
    CommandRow{"ti", "tm_init", 32, 0, &Arguments<>},
    CommandRow{"tms", "tm_mode_set", 33, 1, &Arguments<IntZero>},
    CommandRow{"rfe", "rf_enable", 35, 1, &Arguments<IntZero>},
    CommandRow{"sr", "stats_read", 36, 2, &Arguments<IntZero, LongHex>},
    CommandRow{"scw", "stats_config_write", 37, 2, &Arguments<InFourBytes<IntZero>, InFourBytes<LongHex>>},
    CommandRow{"rfpw", "rf_param_write", 48, 2, &Arguments<IntZero, SignedWord>},
    CommandRow{"rfpr", "rf_param_read", 49, 1, &Arguments<IntZero>},
    CommandRow{"rxpw", "rf_param_write", 52, 2, &Arguments<IntZero, SignedByte>},
    CommandRow{"rxpr", "rx_param_read", 53, 1, &Arguments<IntZero>},
    CommandRow{"txpw", "tx_param_write", 54, 2, &Arguments<IntZero, UnsignedWord>},
    CommandRow{"txpr", "tx_param_read", 55, 1, &Arguments<IntZero>},
    CommandRow{"ttw", "tx_template_write", 56, 1, &TemplateValues},
    CommandRow{"ttr", "tx_template_read", 57, 1, &Arguments<IntHex>},
    CommandRow{"mpw", "misc_param_write", 68, 2, &Arguments<IntZero, UnsignedWord>},
    CommandRow{"mpr", "misc_param_read", 69, 1, &Arguments<IntZero>},
    CommandRow{"spw", "special_param_write", 80, 2, &Arguments<UnsignedWord, LongHex>},
    CommandRow{"spr", "special_param_read", 81, 1, &Arguments<IntZero>},
    CommandRow{"stw", "special_table_write", 82, 1, &SpecialTable},
    CommandRow{"str", "special_table_read", 83, 1, &Arguments<Int>},
    CommandRow{"se", "special_enable", 84, 1, &Arguments<UnsignedWord>},
};

constexpr bool CodesRise() {
  return std::adjacent_find(kCommandRows.begin(), kCommandRows.end(), [](const CommandRow& a, const CommandRow& b) {
           return a.code >= b.code;
         }) == kCommandRows.end();
}
static_assert(CodesRise());

constexpr CommandRow kUnknownWord{"", "", 0, 0, &Arguments<>};

/// Command words of one length differ in their last letter most of all.
bool Same(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a.empty() || a.back() == b.back()) && a == b;
}

}  // namespace

void CommandData::Add(Integer value) { At(data, count++) = value; }

const CommandRow& CommandOf(std::string_view word) {
  const auto* const row = std::find_if(kCommandRows.begin(), kCommandRows.end(), [&](const CommandRow& candidate) {
    return Same(candidate.word, word) || Same(candidate.longForm, word);
  });
  return row == kCommandRows.end() ? kUnknownWord : *row;
}

const CommandRow* CommandRowOf(Integer code) {
  const auto* const row = std::find_if(kCommandRows.begin(), kCommandRows.end(),
                                       [&](const CommandRow& candidate) { return candidate.code == code; });
  return row == kCommandRows.end() ? nullptr : row;
}

}  // namespace orvane
