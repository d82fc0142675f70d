#include "safe_off/off_words.h"

#include <algorithm>
#include <sstream>

namespace orvane {
namespace {

constexpr char kBetween = '\t';
constexpr std::string_view kNote = "note ";

std::string PlaceText(const std::optional<GpibAddress>& place) {
  if (!place) return " none";
  return " " + std::to_string(place->board) + " " + std::to_string(place->primary) + " " +
         std::to_string(place->secondary);
}

/// @return whether a place, or none, stands there.
bool TakePlace(std::istringstream& words, std::optional<GpibAddress>& place) {
  std::string first;
  if (!(words >> first)) return false;
  if (first == "none") return true;
  place.emplace();
  std::istringstream board(first);
  return (board >> place->board) && board.eof() && (words >> place->primary >> place->secondary);
}

/// Part of a line of several.
std::string Flat(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == kBetween || c == '\n' || c == '\r'; }, ' ');
  return text;
}

std::string TextOf(const char* what, const std::string& why) {
  return std::string("The ") + what + " could not be made sure to be off: " + why + " Switch it off by hand.";
}

}  // namespace

std::vector<NotOff> TextsOf(const OffOutcome& outcome) {
  std::vector<NotOff> texts;
  if (!outcome.supply.empty()) texts.push_back({OffPart::Supply, TextOf("supply's output", outcome.supply)});
  if (!outcome.load.empty()) texts.push_back({OffPart::Load, TextOf("load's input", outcome.load)});
  return texts;
}

std::string LineOf(const OffWord& word) {
  if (const auto* move = std::get_if<OffMove>(&word)) {
    return "places" + PlaceText(move->places.supply) + PlaceText(move->places.load) + "\n";
  }
  if (const auto* note = std::get_if<OffNote>(&word)) return std::string(kNote) + note->file + "\n";
  if (const auto* order = std::get_if<OffOrder>(&word)) return "off " + std::to_string(order->number) + "\n";
  return "farewell\n";
}

std::string LineOf(const OffAnswer& answer) {
  return std::to_string(answer.number) + kBetween + Flat(answer.outcome.supply) + kBetween +
         Flat(answer.outcome.load) + "\n";
}

std::optional<OffWord> OffWordOf(const std::string& line) {
  if (line.starts_with(kNote)) return OffNote{line.substr(kNote.size())};
  std::istringstream words(line);
  std::string what;
  words >> what;
  if (what == "farewell") return OffFarewell{};
  if (what == "places") {
    OffMove move;
    if (TakePlace(words, move.places.supply) && TakePlace(words, move.places.load)) return move;
  }
  OffOrder order;
  if (what == "off" && words >> order.number) return order;
  return std::nullopt;
}

std::optional<OffAnswer> OffAnswerOf(const std::string& line) {
  const auto first = line.find(kBetween);
  const auto second = first == std::string::npos ? first : line.find(kBetween, first + 1);
  if (second == std::string::npos) return std::nullopt;
  OffAnswer answer;
  std::istringstream number(line.substr(0, first));
  if (!(number >> answer.number)) return std::nullopt;
  answer.outcome = {line.substr(first + 1, second - first - 1), line.substr(second + 1)};
  return answer;
}

std::optional<std::string> TakeLine(std::string& received) {
  const auto end = received.find('\n');
  if (end == std::string::npos) return std::nullopt;
  std::string line = received.substr(0, end);
  received.erase(0, end + 1);
  return line;
}

}  // namespace orvane
