#include "bench/bus_controller.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace orvane::bench {
namespace {

using std::chrono::milliseconds;

constexpr char kEscape = 27;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kVersion = "ORVANE virtual GPIB adapter, version 1.0";
constexpr int kLastPrimary = 30;
constexpr int kFirstSecondary = 96;
constexpr int kLastSecondary = 126;
/// What each value of `++eos` adds to a text.
constexpr std::array<std::string_view, 4> kEndsOfText{"\r\n", "\r", "\n", ""};

std::optional<int> NumberWithin(std::string_view text, int least, int most) {
  int value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool sound = fault == std::errc{} && end == text.data() + text.size() && value >= least && value <= most;
  return sound ? std::optional(value) : std::nullopt;
}

/// The first word, which is taken off, blanks around it included.
std::string_view TakeWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size());
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return word;
}

}  // namespace

const BusController::Settings BusController::kPowerOn{{
    {"auto", 0, 1, 0},
    {"eoi", 0, 1, 1},
    {"eos", 0, 3, 0},
    {"eot_char", 0, 255, 0},
    {"eot_enable", 0, 1, 0},
    {"mode", 0, 1, 1},
    {"read_tmo_ms", 1, 3000, 200},
    {"savecfg", 0, 1, 1},
}};

void BusController::Hear(std::string_view bytes) {
  counters_.bytesIn += bytes.size();
  heard_ += bytes;
}

/// Takes characters up to the end of a line. An escape makes any character one of the text; without it, a plus does
/// not belong to the text wherever it stands.
std::optional<BusController::Done> BusController::Next() {
  for (std::size_t i = 0; i < heard_.size(); ++i) {
    const char c = heard_[i];
    const bool special = c == kEscape || c == '+' || c == '\r' || c == '\n';
    if (std::exchange(escaped_, false) || !special) {
      line_ += c;
    } else if (c == kEscape) {
      escaped_ = true;
    } else if (c == '+') {
      pluses_ += line_.empty() ? 1 : 0;
    } else if (line_.empty()) {
      pluses_ = 0;
    } else {
      heard_.erase(0, i + 1);
      ++counters_.commands;
      const std::string line = std::exchange(line_, {});
      Done done = std::exchange(pluses_, 0) >= 2 ? Obey(line) : SendText(line);
      counters_.bytesOut += done.output.size();
      return done;
    }
  }
  heard_.clear();
  return std::nullopt;
}

InstrumentLine* BusController::Addressed() const {
  const auto found = instruments_.find(primary_);
  return found == instruments_.end() || secondary_ != 0 || settings_[kMode].value == 0 ? nullptr : found->second;
}

/// Nobody who listens is nothing that an adapter tells.
BusController::Done BusController::SendText(std::string_view text) {
  InstrumentLine* const instrument = Addressed();
  const std::string message =
      std::string(text) + std::string(kEndsOfText[static_cast<std::size_t>(settings_[kEos].value)]);
  const auto end = message.find_last_not_of("\r\n");
  const bool ends = settings_[kEoi].value == 1 || end + 1 < message.size();
  if (instrument == nullptr || !ends || !instrument->Take(message.substr(0, end + 1))) return {};
  return settings_[kAuto].value == 1 ? Read("eoi") : Done{};
}

BusController::Done BusController::Read(std::string_view until) {
  const milliseconds inVain(settings_[kReadTimeOut].value);
  InstrumentLine* const instrument = Addressed();
  std::string reply = instrument == nullptr ? "" : instrument->TakeReply().value_or("");
  if (reply.empty()) return {{}, inVain};
  const bool ends = until == "eoi" || until == "10";
  if (settings_[kEotEnable].value == 1) reply += static_cast<char>(settings_[kEotChar].value);
  return {reply, ends ? milliseconds(0) : inVain};
}

BusController::Done BusController::Tell(const std::string& text) { return {text + std::string(kLineEnd), {}}; }

void BusController::Save() { saved_ += settings_[kSaveConfig].value == 1 ? 1U : 0U; }

BusController::Done BusController::AddressCommand(std::string_view argument) {
  if (argument.empty()) {
    return Tell(std::to_string(primary_) + (secondary_ == 0 ? "" : " " + std::to_string(secondary_)));
  }
  const auto primary = NumberWithin(TakeWord(argument), 0, kLastPrimary);
  const auto secondary = argument.empty() ? 0 : NumberWithin(argument, kFirstSecondary, kLastSecondary);
  if (!primary || !secondary) return Tell("Unrecognized command");
  primary_ = *primary;
  secondary_ = *secondary;
  Save();
  return {};
}

bool BusController::Set(Setting& setting, std::string_view argument) {
  const auto value = NumberWithin(argument, setting.least, setting.most);
  if (!value) return false;
  setting.value = *value;
  Save();
  return true;
}

BusController::Done BusController::Obey(std::string_view words) {
  const std::string_view word = TakeWord(words);
  if (word == "addr") return AddressCommand(words);
  if (word == "read") return Read(words);
  const auto setting =
      std::find_if(settings_.begin(), settings_.end(), [&](const Setting& row) { return row.word == word; });
  if (setting != settings_.end()) {
    if (words.empty()) return Tell(std::to_string(setting->value));
    return Set(*setting, words) ? Done{} : Tell("Unrecognized command");
  }
  if (word == "ver") return Tell(std::string(kVersion));
  if (word == "clr") {
    if (InstrumentLine* const instrument = Addressed()) instrument->Clear();
    return {};
  }
  if (word == "srq" || word == "spoll") return Tell("0");
  if (word == "rst") settings_ = kPowerOn;
  constexpr std::array kWithoutTrace{"ifc", "llo", "loc", "rst", "trg"};
  const bool known = std::find(kWithoutTrace.begin(), kWithoutTrace.end(), word) != kWithoutTrace.end();
  return known ? Done{} : Tell("Unrecognized command");
}

}  // namespace orvane::bench
