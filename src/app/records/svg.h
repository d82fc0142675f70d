#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

struct Point {
  double x = 0;
  double y = 0;
};

/// A line of numbers laid along pixels, either way round.
class Scale {
 public:
  Scale(double from, double to, double firstPixel, double lastPixel)
      : from_(from), perUnit_((lastPixel - firstPixel) / (to == from ? 1 : to - from)), firstPixel_(firstPixel) {}
  [[nodiscard]] double operator()(double value) const { return firstPixel_ + (value - from_) * perUnit_; }

 private:
  double from_;
  double perUnit_;
  double firstPixel_;
};

/// Round numbers that lie in a range, about so many: 0, 50, 100.
[[nodiscard]] std::vector<double> Ticks(double from, double to, int about);

/// A drawing, put together piece by piece. What it looks like is the style sheet's, by class.
class Svg {
 public:
  /// `label`: what it shows, for whoever does not see it.
  Svg(std::string_view style, double width, double height, std::string_view label);

  void Line(std::string_view style, Point from, Point to);
  void Rect(std::string_view style, Point corner, double width, double height);
  void Dot(std::string_view style, Point at, double radius);
  void Path(std::string_view style, const std::vector<Point>& points);
  /// `anchor`: "start", "middle" or "end".
  void Text(std::string_view style, Point at, std::string_view anchor, std::string_view text);
  [[nodiscard]] std::string Whole() const { return text_ + "</svg>"; }

 private:
  std::string text_;
};

}  // namespace orvane
