#include "app/route_text.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace orvane {
namespace {

constexpr int kLastPrimaryAddress = 30;
constexpr int kLastPort = 65535;

std::optional<int> NumberWithin(std::string_view text, int first, int last) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc{} && end == text.data() + text.size();
  return whole && value >= first && value <= last ? std::optional(value) : std::nullopt;
}

/// Takes the prefix off, if it is there.
bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

std::string HostOf(std::string_view text) {
  const bool bracketed = text.size() > 2 && text.front() == '[' && text.back() == ']';
  if (bracketed) text = text.substr(1, text.size() - 2);
  if (text.empty()) throw OptionFault("a host is missing");
  return std::string(text);
}

int PortOf(std::string_view text) {
  const auto port = NumberWithin(text, 1, kLastPort);
  if (!port) throw OptionFault("\"" + std::string(text) + "\" is no port");
  return *port;
}

/// Where the colon in front of a port stands; a name in brackets may have colons of its own.
std::size_t PortColon(std::string_view text) {
  const auto colon = text.rfind(':');
  const auto bracket = text.rfind(']');
  return colon != std::string_view::npos && bracket != std::string_view::npos && bracket > colon
             ? std::string_view::npos
             : colon;
}

/// `HOST`, `HOST:PORT`
std::pair<std::string, std::optional<int>> HostAndPort(std::string_view text) {
  const auto colon = PortColon(text);
  std::string host = HostOf(text.substr(0, colon));
  if (colon == std::string_view::npos) return {std::move(host), std::nullopt};
  return {std::move(host), PortOf(text.substr(colon + 1))};
}

}  // namespace

BusRoute ParseBusRoute(const std::string& text) {
  std::string_view rest = text;
  if (rest == "native") return NativeRoute{};
  if (TakePrefix(rest, "vxi11:")) {
    const auto [host, port] = HostAndPort(rest);
    return GatewayRoute{host, port};
  }
  if (!TakePrefix(rest, "prologix:")) throw OptionFault("\"" + text + "\" is no route");
  if (rest.starts_with('/')) return PrologixSerialRoute{std::string(rest)};
  const auto [host, port] = HostAndPort(rest);
  PrologixTcpRoute route{host};
  if (port) route.port = *port;
  return route;
}

std::pair<int, InstrumentRoute> ParseInstrumentRoute(const std::string& text) {
  std::string_view rest = text;
  const auto equals = rest.find('=');
  if (equals == std::string_view::npos) throw OptionFault("\"" + text + "\" has no \"=\"");
  const auto address = NumberWithin(rest.substr(0, equals), 0, kLastPrimaryAddress);
  if (!address) throw OptionFault("\"" + std::string(rest.substr(0, equals)) + "\" is no primary address 0 to 30");
  rest.remove_prefix(equals + 1);

  if (TakePrefix(rest, "tcp:")) {
    const auto colon = PortColon(rest);
    if (colon == std::string_view::npos) throw OptionFault("\"" + text + "\" has no port");
    return {*address, TcpRoute{HostOf(rest.substr(0, colon)), PortOf(rest.substr(colon + 1))}};
  }
  if (!TakePrefix(rest, "vxi11:")) throw OptionFault("\"" + std::string(rest) + "\" is no route");
  const auto comma = rest.find(',');
  const auto [host, port] = HostAndPort(rest.substr(0, comma));
  Vxi11Route route{host, port};
  if (comma != std::string_view::npos) route.device = rest.substr(comma + 1);
  if (route.device.empty()) throw OptionFault("a device is missing");
  return {*address, route};
}

}  // namespace orvane
