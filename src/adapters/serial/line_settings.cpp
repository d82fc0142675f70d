#include "adapters/serial/line_settings.h"

#include <algorithm>
#include <array>
#include <vector>

namespace orvane {
namespace {

struct SpeedRow {
  std::string_view text;
  speed_t speed;
};
constexpr std::array kSpeeds{
    SpeedRow{"1200", B1200},     SpeedRow{"2400", B2400},     SpeedRow{"4800", B4800},
    SpeedRow{"9600", B9600},     SpeedRow{"19200", B19200},   SpeedRow{"38400", B38400},
    SpeedRow{"57600", B57600},   SpeedRow{"115200", B115200}, SpeedRow{"230400", B230400},
    SpeedRow{"460800", B460800}, SpeedRow{"921600", B921600},
};

struct FlagRow {
  std::string_view text;
  tcflag_t flags;
};
constexpr std::array kParities{
    FlagRow{"N", 0},
    FlagRow{"E", PARENB},
    FlagRow{"O", PARENB | PARODD},
    FlagRow{"M", PARENB | PARODD | CMSPAR},
    FlagRow{"S", PARENB | CMSPAR},
};
constexpr std::array kDataBits{FlagRow{"5", CS5}, FlagRow{"6", CS6}, FlagRow{"7", CS7}, FlagRow{"8", CS8}};
constexpr std::array kStopBits{FlagRow{"1", 0}, FlagRow{"2", CSTOPB}};

template <class Rows>
auto Look(const Rows& rows, std::string_view text) {
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.text == text; });
  return row == rows.end() ? std::nullopt : std::optional(*row);
}

}  // namespace

std::optional<LineSettings> ParseLineSettings(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t comma = 0; comma != std::string_view::npos;) {
    comma = text.find(',');
    parts.push_back(text.substr(0, comma));
    if (comma != std::string_view::npos) text.remove_prefix(comma + 1);
  }
  if (parts.size() != 4) return std::nullopt;
  const auto speed = Look(kSpeeds, parts[0]);
  const auto parity = Look(kParities, parts[1]);
  const auto dataBits = Look(kDataBits, parts[2]);
  const auto stopBits = Look(kStopBits, parts[3]);
  if (!speed || !parity || !dataBits || !stopBits) return std::nullopt;
  return LineSettings{speed->speed, parity->flags | dataBits->flags | stopBits->flags};
}

}  // namespace orvane
