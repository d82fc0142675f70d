#include "app/records/svg.h"

#include <array>
#include <charconv>
#include <cmath>

#include "app/records/markup.h"

namespace orvane {
namespace {

/// A tenth of a pixel is as fine as anybody sees.
std::string Pixel(double value) {
  if (!std::isfinite(value)) value = 0;
  std::array<char, 400> buffer{};
  const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, 1).ptr;
  return {buffer.begin(), end};
}

std::string Place(std::string_view name, double value) { return Attribute(name, Pixel(value)); }

std::string Style(std::string_view style) { return style.empty() ? std::string() : Attribute("class", style); }

}  // namespace

std::vector<double> Ticks(double from, double to, int about) {
  std::vector<double> ticks;
  const double span = to - from;
  if (!(span > 0) || !std::isfinite(span)) return ticks;
  const double rough = span / about;
  const double decade = std::pow(10.0, std::floor(std::log10(rough)));
  const double lead = rough / decade;
  const double step = decade * (lead <= 1 ? 1 : lead <= 2 ? 2 : lead <= 5 ? 5 : 10);
  const double first = std::ceil(from / step - 1e-9);
  for (double i = first; i * step <= to + step * 1e-9; ++i) ticks.push_back(i * step);
  return ticks;
}

Svg::Svg(std::string_view style, double width, double height, std::string_view label)
    : text_("<svg" + Style(style) + Attribute("viewBox", "0 0 " + Pixel(width) + " " + Pixel(height)) +
            Place("width", width) + Place("height", height) + Attribute("role", "img") +
            Attribute("aria-label", label) + ">") {}

void Svg::Line(std::string_view style, Point from, Point to) {
  text_ += "<line" + Style(style) + Place("x1", from.x) + Place("y1", from.y) + Place("x2", to.x) +
           Place("y2", to.y) + "/>";
}

void Svg::Rect(std::string_view style, Point corner, double width, double height) {
  text_ += "<rect" + Style(style) + Place("x", corner.x) + Place("y", corner.y) + Place("width", width) +
           Place("height", height) + "/>";
}

void Svg::Dot(std::string_view style, Point at, double radius) {
  text_ += "<circle" + Style(style) + Place("cx", at.x) + Place("cy", at.y) + Place("r", radius) + "/>";
}

void Svg::Path(std::string_view style, const std::vector<Point>& points) {
  if (points.empty()) return;
  std::string places;
  for (const Point& point : points) places += (places.empty() ? "" : " ") + Pixel(point.x) + "," + Pixel(point.y);
  text_ += "<polyline" + Style(style) + Attribute("points", places) + "/>";
}

void Svg::Text(std::string_view style, Point at, std::string_view anchor, std::string_view text) {
  text_ += "<text" + Style(style) + Place("x", at.x) + Place("y", at.y) + Attribute("text-anchor", anchor) + ">" +
           Escaped(text) + "</text>";
}

}  // namespace orvane
