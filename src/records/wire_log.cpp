#include "records/wire_log.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr std::string_view kHead = "orvane wires 1\n";
/// In the place of an event: the name of the next link.
constexpr std::uint8_t kNewLink = 0;
constexpr auto kLastEvent = static_cast<std::uint8_t>(WireEvent::State);
/// No link brings more at once.
constexpr std::uint64_t kMostBytes = 16 << 20;

class Reader {
 public:
  explicit Reader(std::string_view content) : rest_(content), size_(content.size()) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }
  [[nodiscard]] std::size_t Place() const { return size_ - rest_.size(); }

  std::optional<std::uint64_t> Number() {
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 63 && !rest_.empty(); shift += 7) {
      const auto byte = static_cast<unsigned char>(rest_.front());
      rest_.remove_prefix(1);
      number |= static_cast<std::uint64_t>(byte & 0x7FU) << shift;
      if ((byte & 0x80U) == 0) return number;
    }
    return std::nullopt;
  }

  std::optional<std::string> Text() {
    const auto size = Number();
    if (!size || *size > kMostBytes || *size > rest_.size()) return std::nullopt;
    std::string text(rest_.substr(0, *size));
    rest_.remove_prefix(*size);
    return text;
  }

 private:
  std::string_view rest_;
  std::size_t size_;
};

/// Reads one note, or the name of a link. @return false when nothing sound stands there.
bool ReadOne(Reader& from, std::vector<std::string>& links, TimePoint& at, std::vector<WireNote>& notes) {
  const auto event = from.Number();
  if (!event || *event > kLastEvent) return false;
  if (*event == kNewLink) {
    auto name = from.Text();
    if (!name) return false;
    links.push_back(std::move(*name));
    return true;
  }
  const auto link = from.Number();
  const auto elapsed = from.Number();
  if (!link || *link >= links.size() || !elapsed || *elapsed > static_cast<std::uint64_t>((kForever - at).count())) {
    return false;
  }
  auto bytes = from.Text();
  if (!bytes) return false;
  at += TimePoint(static_cast<TimePoint::rep>(*elapsed));
  notes.push_back({at, links[*link], static_cast<WireEvent>(*event), std::move(*bytes)});
  return true;
}

}  // namespace

WireLog::WireLog() : content_(kHead) {}

void WireLog::Number(std::uint64_t number) {
  while (number >= 0x80U) {
    content_ += static_cast<char>((number & 0x7FU) | 0x80U);
    number >>= 7U;
  }
  content_ += static_cast<char>(number);
}

void WireLog::Note(TimePoint at, std::string_view link, WireEvent event, std::string_view bytes) {
  const auto known = std::find(links_.begin(), links_.end(), link);
  const auto index = static_cast<std::size_t>(known - links_.begin());
  if (known == links_.end()) {
    links_.emplace_back(link);
    Number(kNewLink);
    Number(link.size());
    content_ += link;
  }
  const TimePoint elapsed = std::max(at - last_, TimePoint{0});
  last_ += elapsed;
  Number(static_cast<std::uint8_t>(event));
  Number(index);
  Number(static_cast<std::uint64_t>(elapsed.count()));
  Number(bytes.size());
  content_ += bytes;
}

WireNotes ReadWireLog(std::string_view content) {
  WireNotes read;
  if (!content.starts_with(kHead)) {
    read.damage = "This is no record of wires.";
    return read;
  }
  Reader from(content.substr(kHead.size()));
  std::vector<std::string> links;
  TimePoint at{0};
  while (!from.AtEnd()) {
    const std::size_t place = from.Place() + kHead.size();
    if (ReadOne(from, links, at, read.notes)) continue;
    read.damage = "The record of the wires is damaged at byte " + std::to_string(place) + ", behind " +
                  std::to_string(read.notes.size()) + " notes.";
    break;
  }
  return read;
}

}  // namespace orvane
