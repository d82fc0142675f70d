#include "app/trace/wire_words.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "base/byte_hex.h"
#include "link/command_table.h"
#include "link/deframer.h"

namespace orvane {
namespace {

using Values = std::vector<unsigned>;

/// How data bytes are told: each by itself, or as values of two or four bytes, low byte first.
enum class Form { Bytes, Words, SignedWords, Longs, ItemAndWord, ItemAndBytes };

struct FormRow {
  Integer code;
  Form command;
  Form reply;
};
/// The arguments of all other commands are values of two bytes; the data of all other replies are bytes.
constexpr std::array kForms{
    FormRow{36, Form::Words, Form::Words},         // sr
    FormRow{37, Form::Longs, Form::Bytes},         // scw
    FormRow{48, Form::SignedWords, Form::Bytes},   // rfpw
    FormRow{49, Form::Words, Form::ItemAndWord},   // rfpr
    FormRow{52, Form::SignedWords, Form::Bytes},   // rxpw
    FormRow{53, Form::Words, Form::ItemAndWord},   // rxpr
    FormRow{55, Form::Words, Form::ItemAndWord},   // txpr
    FormRow{56, Form::Bytes, Form::Bytes},         // ttw
    FormRow{57, Form::Bytes, Form::ItemAndBytes},  // ttr
    FormRow{69, Form::Words, Form::ItemAndWord},   // mpr
    FormRow{81, Form::Words, Form::ItemAndWord},   // spr
    FormRow{82, Form::Bytes, Form::Bytes},         // stw
    FormRow{83, Form::Bytes, Form::ItemAndBytes},  // str
};

Form FormOf(unsigned code, Form FormRow::*side, Form other) {
  const auto* const row = std::find_if(kForms.begin(), kForms.end(),
                                       [&](const FormRow& r) { return static_cast<unsigned>(r.code) == code; });
  return row == kForms.end() ? other : row->*side;
}

std::string Bytes(const Values& values, std::size_t from = 0) {
  std::string text;
  for (std::size_t i = from; i < values.size(); ++i) text += " " + std::to_string(values[i]);
  return text;
}

/// " 1 62"; the bytes when they are no whole number of such values.
std::string Numbers(const Values& values, std::size_t size, bool isSigned) {
  if (values.size() % size != 0) return Bytes(values);
  std::string text;
  for (std::size_t at = 0; at < values.size(); at += size) {
    std::uint32_t number = 0;
    for (std::size_t i = size; i-- > 0;) number = number * 256 + values[at + i];
    text += " " + (isSigned ? std::to_string(static_cast<std::int16_t>(number)) : std::to_string(number));
  }
  return text;
}

std::string Told(const Values& values, Form form) {
  constexpr std::size_t kItemAndWord = 3;
  switch (form) {
    case Form::Words:
      return Numbers(values, 2, false);
    case Form::SignedWords:
      return Numbers(values, 2, true);
    case Form::Longs:
      return Numbers(values, 4, false);
    case Form::ItemAndWord:
      if (values.size() != kItemAndWord) break;
      return " item " + std::to_string(values[0]) + ", value " + std::to_string(values[1] + 256 * values[2]);
    case Form::ItemAndBytes:
      if (values.empty()) break;
      return " item " + std::to_string(values[0]) + (values.size() > 1 ? ", bytes" + Bytes(values, 1) : "");
    case Form::Bytes:
      break;
  }
  return Bytes(values);
}

std::string WordOf(unsigned code) {
  const CommandRow* row = CommandRowOf(static_cast<Integer>(code));
  return row == nullptr ? "operation " + std::to_string(code) : std::string(row->word);
}

/// Data and checksum of a command without their escapes, up to its terminator.
Values DataOf(std::string_view body) {
  Values values;
  for (std::size_t i = 1; i < body.size(); ++i) {
    const auto byte = static_cast<unsigned char>(body[i]);
    if (byte == kTerminator) break;
    if (byte == kEscape && ++i == body.size()) break;
    values.push_back(static_cast<unsigned char>(body[i]));
  }
  return values;
}

}  // namespace

std::string CommandWords(std::string_view body) {
  if (body.empty()) return "";
  const unsigned code = static_cast<unsigned char>(body.front());
  Values values = DataOf(body);
  if (!values.empty()) values.pop_back();
  const CommandRow* row = CommandRowOf(static_cast<Integer>(code));
  const std::string longForm = row == nullptr ? "" : " (" + std::string(row->longForm) + ")";
  return WordOf(code) + Told(values, FormOf(code, &FormRow::command, Form::Words)) + longForm;
}

std::string ReplyWords(std::string_view received) {
  constexpr unsigned kRampRowRead = 57;
  constexpr int kOperation = 3;
  const auto bare = FindFrame(received, ReplyLayout::Padded);
  if (!bare) return "";
  const auto first = static_cast<std::size_t>(bare->start);
  const auto size = std::min(static_cast<std::size_t>(bare->end) + 1 - first, kGatheredLimit);
  const Deframed reply = Deframe(received.substr(first, size), ReplyLayout::Padded);
  if (!reply.frame || reply.frame->end <= kOperation) return "a frame too short to hold anything";
  const auto value = [&](int place) { return static_cast<unsigned>(reply.values[static_cast<std::size_t>(place)]); };
  const unsigned code = value(kOperation);
  // The one reply without pads: its row and first value stand where others have their pad and status.
  const int firstValue = code == kRampRowRead ? kOperation + 1 : kOperation + 4;
  const int step = code == kRampRowRead ? 1 : 2;
  Values data;
  for (int place = firstValue; place < reply.frame->end - 1; place += step) data.push_back(value(place));
  std::string words = WordOf(code) + ":";
  if (reply.frame->end > kOperation + 2) words += " status " + std::to_string(value(kOperation + 2));
  const std::string told = Told(data, FormOf(code, &FormRow::reply, Form::Bytes));
  return words + (told.empty() ? "" : ",") + told;
}

}  // namespace orvane
