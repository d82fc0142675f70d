#include "app/trace/trace_record.h"

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "app/shallow_json.h"

namespace orvane {
namespace {

using Json = nlohmann::ordered_json;

constexpr double kSecond = 1e9;
/// No trace is as long: a time beyond it is a damaged one, and further out nanoseconds have no number.
constexpr double kLongestSeconds = 1e8;

/// Each byte becomes the character of its number.
std::string AsText(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0U | (byte >> 6U));
      text += static_cast<char>(0x80U | (byte & 0x3FU));
    }
  }
  return text;
}

std::optional<std::string> BytesOfText(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      bytes += text[i];
      continue;
    }
    if ((byte != 0xC2 && byte != 0xC3) || i + 1 == text.size()) return std::nullopt;
    bytes += static_cast<char>(((byte & 0x3U) << 6U) | (static_cast<unsigned char>(text[++i]) & 0x3FU));
  }
  return bytes;
}

std::optional<std::string> BytesOfHex(std::string_view hex) {
  // A blank stands between two bytes, so that none stands last: there, a byte was cut off.
  if (hex.ends_with(' ')) return std::nullopt;
  std::string bytes;
  for (std::size_t at = 0; at < hex.size(); at += 3) {
    unsigned value = 0;
    const char* const end = hex.data() + std::min(at + 2, hex.size());
    const auto [stop, error] = std::from_chars(hex.data() + at, end, value, 16);
    const bool sound =
        error == std::errc{} && stop == hex.data() + at + 2 && (at + 2 == hex.size() || hex[at + 2] == ' ');
    if (!sound) return std::nullopt;
    bytes += static_cast<char>(value);
  }
  return bytes;
}

/// The line as an object; null when it is none. A record is flat: what nests in a strange one is left out.
Json Parsed(std::string_view line) {
  Json object = ShallowJson(line, 1);
  return object.is_object() ? object : Json();
}

std::string TextAt(const Json& object, const char* key) {
  const auto hit = object.find(key);
  return hit != object.end() && hit->is_string() ? hit->get<std::string>() : "";
}

}  // namespace

bool IsSerial(std::string_view link) { return link.starts_with("COM"); }

std::string HexOf(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  text.reserve(3 * bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 0xFU];
  }
  return text;
}

std::string LineOf(const TraceRecord& record) {
  Json object;
  // Microseconds are enough: a byte lasts 87 of them.
  object["t"] = std::round(static_cast<double>(record.at.count()) / 1000) / 1e6;
  object["link"] = record.link;
  object["event"] = record.event;
  if (!record.bytes.empty()) {
    if (IsSerial(record.link)) {
      object["hex"] = HexOf(record.bytes);
    } else {
      object["text"] = AsText(record.bytes);
    }
  }
  if (!record.says.empty()) object["says"] = record.says;
  return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string LineOf(const TraceHead& head) {
  return Json{{"trace", 1}, {"program", head.program}, {"started", head.started}, {"part", head.part}}.dump();
}

std::optional<TraceRecord> TraceRecordOf(std::string_view line) {
  const Json object = Parsed(line);
  const auto time = object.find("t");
  if (object.is_null() || time == object.end() || !time->is_number()) return std::nullopt;
  const double seconds = time->get<double>();
  if (!(std::fabs(seconds) <= kLongestSeconds)) return std::nullopt;
  TraceRecord record;
  record.at = TimePoint(static_cast<std::int64_t>(seconds * kSecond));
  record.link = TextAt(object, "link");
  record.event = TextAt(object, "event");
  record.says = TextAt(object, "says");
  const auto bytes = object.contains("hex") ? BytesOfHex(TextAt(object, "hex")) : BytesOfText(TextAt(object, "text"));
  if (!bytes || record.link.empty() || record.event.empty()) return std::nullopt;
  record.bytes = *bytes;
  return record;
}

std::optional<TraceHead> TraceHeadOf(std::string_view line) {
  const Json object = Parsed(line);
  if (object.is_null() || !object.contains("trace")) return std::nullopt;
  const auto part = object.find("part");
  const int number = part != object.end() && part->is_number_integer() ? part->get<int>() : 1;
  return TraceHead{TextAt(object, "program"), TextAt(object, "started"), number};
}

}  // namespace orvane
