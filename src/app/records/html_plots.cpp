#include "app/records/html_plots.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "app/records/reading_names.h"
#include "app/records/shown_text.h"
#include "app/records/svg.h"

namespace orvane {
namespace {

/// A value beyond the picture is drawn at its edge.
double Within(double value, double low, double high) { return std::clamp(value, low, high); }

/// Errors in dB are drawn from a hundredth to this.
constexpr double kLeastError = 0.01;
constexpr double kMostError = 30;

double Decades(double error) { return std::log10(Within(std::abs(error), kLeastError, kMostError)); }

struct Frame {
  double left;
  double top;
  double right;
  double bottom;
};

constexpr double kSearchWidth = 150;
constexpr double kSearchHeight = 74;
constexpr Frame kSearchFrame{22, 4, kSearchWidth - 4, kSearchHeight - 12};

void DrawErrors(Svg& svg, const std::vector<RecordedPass>& passes, double target, bool inside) {
  const Frame& f = kSearchFrame;
  const Scale x(0, static_cast<double>(std::max<std::size_t>(passes.size(), 2) - 1), f.left + 3, f.right - 3);
  const Scale y(Decades(kLeastError), Decades(kMostError), f.bottom, f.top);
  for (const auto& [decade, label] : {std::pair(0.1, "0.1"), std::pair(1.0, "1"), std::pair(10.0, "10")}) {
    svg.Line("grid", {f.left, y(Decades(decade))}, {f.right, y(Decades(decade))});
    svg.Text("tick", {f.left - 3, y(Decades(decade)) + 3}, "end", label);
  }
  std::vector<Point> errors;
  std::vector<Point> tolerances;
  for (std::size_t i = 0; i < passes.size(); ++i) {
    errors.push_back({x(static_cast<double>(i)), y(Decades(passes[i].dbm - target))});
    tolerances.push_back({errors.back().x, y(Decades(passes[i].tolerance))});
  }
  if (tolerances.size() == 1) tolerances = {{f.left, tolerances[0].y}, {f.right, tolerances[0].y}};
  svg.Path("limit", tolerances);
  svg.Path("trace", errors);
  for (const Point& error : errors) svg.Dot("dot", error, 1.6);
  svg.Dot(inside ? "end" : "end outside", errors.back(), 3);
}

void DrawPowers(Svg& svg, const std::vector<RecordedPass>& passes) {
  const Frame& f = kSearchFrame;
  const auto [low, high] =
      std::minmax_element(passes.begin(), passes.end(), [](const auto& a, const auto& b) { return a.dbm < b.dbm; });
  const double margin = std::max(0.5, (high->dbm - low->dbm) * 0.1);
  const Scale x(0, static_cast<double>(std::max<std::size_t>(passes.size(), 2) - 1), f.left + 3, f.right - 3);
  const Scale y(low->dbm - margin, high->dbm + margin, f.bottom, f.top);
  for (const double tick : Ticks(low->dbm - margin, high->dbm + margin, 3)) {
    svg.Line("grid", {f.left, y(tick)}, {f.right, y(tick)});
    svg.Text("tick", {f.left - 3, y(tick) + 3}, "end", ShortNumber(tick));
  }
  std::vector<Point> powers;
  for (std::size_t i = 0; i < passes.size(); ++i) powers.push_back({x(static_cast<double>(i)), y(passes[i].dbm)});
  svg.Path("trace", powers);
  for (const Point& power : powers) svg.Dot("dot", power, 1.6);
}

constexpr double kPlotWidth = 350;
constexpr double kPlotHeight = 150;
constexpr Frame kPlotFrame{34, 8, kPlotWidth - 8, kPlotHeight - 22};

struct Bounds {
  double low;
  double high;
};

Bounds BoundsOf(const ChannelPlot& plot) {
  std::vector<double> all = plot.limits;
  for (const ChannelValue& value : plot.values) all.push_back(value.value);
  const auto [low, high] = std::minmax_element(all.begin(), all.end());
  const double margin = std::max(1.0, (*high - *low) * 0.12);
  return {*low - margin, *high + margin};
}

void DrawChannelAxis(Svg& svg, const ChannelPlot& plot, const Scale& x) {
  const Frame& f = kPlotFrame;
  const int first = PlaceOfChannel(plot.values.front().arfcn);
  const int last = PlaceOfChannel(plot.values.back().arfcn);
  std::vector<double> places =
      first == last ? std::vector<double>{static_cast<double>(first)} : Ticks(first, last, 6);
  for (const double place : places) {
    const int arfcn = static_cast<int>(place) + (place < 0 ? 1024 : 0);
    svg.Line("grid", {x(place), f.top}, {x(place), f.bottom});
    svg.Text("tick", {x(place), f.bottom + 11}, "middle", std::to_string(arfcn));
  }
  svg.Text("tick", {f.right, f.bottom + 20}, "end", "ARFCN");
}

}  // namespace

std::string LimitBar(const RecordedReading& reading) {
  if (!reading.high) return {};
  // What has an upper limit alone is the better the nearer it is to nothing.
  const double low = reading.low.value_or(std::min(0.0, *reading.high));
  constexpr double kWidth = 92;
  constexpr double kHeight = 14;
  constexpr double kMiddle = kHeight / 2;
  const double span = *reading.high > low ? *reading.high - low : 1;
  const double from = low - span * 0.2;
  const double to = *reading.high + span * 0.2;
  const Scale x(from, to, 3, kWidth - 3);
  const bool inside = *reading.Inside();
  Svg svg("bar", kWidth, kHeight,
          ShortNumber(reading.value) + " between " + ShortNumber(low) + " and " + ShortNumber(*reading.high));
  svg.Line("track", {3, kMiddle}, {kWidth - 3, kMiddle});
  svg.Rect("zone", {x(low), kMiddle - 3.5}, x(*reading.high) - x(low), 7);
  const double at = x(Within(reading.value, from, to));
  svg.Rect(inside ? "mark" : "mark outside", {at - 1.5, 1}, 3, kHeight - 2);
  return svg.Whole();
}

std::string StepBar(const RecordedStep& step, double runSeconds) {
  constexpr double kWidth = 220;
  constexpr double kHeight = 12;
  const double whole = std::max(runSeconds, step.beganS + step.seconds);
  const Scale x(0, whole > 0 ? whole : 1, 0, kWidth);
  Svg svg("steps", kWidth, kHeight, "from " + SecondsText(step.beganS) + " on for " + SecondsText(step.seconds));
  svg.Line("track", {0, kHeight / 2}, {kWidth, kHeight / 2});
  svg.Rect(step.complete ? "mark" : "mark doubtful", {x(step.beganS), 2},
           std::max(1.5, x(step.beganS + step.seconds) - x(step.beganS)), kHeight - 4);
  return svg.Whole();
}

std::string SearchPlot(const std::vector<RecordedPass>& passes, const RecordedReading* power) {
  Svg svg("search", kSearchWidth, kSearchHeight, passes.front().reading + " pass by pass");
  const Frame& f = kSearchFrame;
  svg.Line("axis", {f.left, f.bottom}, {f.right, f.bottom});
  svg.Text("tick", {f.left + 3, f.bottom + 9}, "middle", "1");
  if (passes.size() > 1) svg.Text("tick", {f.right - 3, f.bottom + 9}, "end", std::to_string(passes.size()));
  if (power != nullptr && power->low && power->high) {
    DrawErrors(svg, passes, (*power->low + *power->high) / 2, *power->Inside());
  } else {
    DrawPowers(svg, passes);
  }
  return svg.Whole();
}

std::string PlotOverChannels(ChannelPlot plot) {
  if (plot.values.empty()) return {};
  std::sort(plot.values.begin(), plot.values.end(),
            [](const auto& a, const auto& b) { return PlaceOfChannel(a.arfcn) < PlaceOfChannel(b.arfcn); });
  const Frame& f = kPlotFrame;
  const Bounds bounds = BoundsOf(plot);
  const Scale x(PlaceOfChannel(plot.values.front().arfcn), PlaceOfChannel(plot.values.back().arfcn), f.left + 6,
                f.right - 6);
  const Scale y(bounds.low, bounds.high, f.bottom, f.top);
  Svg svg("channels", kPlotWidth, kPlotHeight, std::string(plot.title) + " over ARFCN");
  for (const double tick : Ticks(bounds.low, bounds.high, 4)) {
    svg.Line("grid", {f.left, y(tick)}, {f.right, y(tick)});
    svg.Text("tick", {f.left - 4, y(tick) + 3}, "end", ShortNumber(tick));
  }
  DrawChannelAxis(svg, plot, x);
  for (const double limit : plot.limits) svg.Line("limit", {f.left, y(limit)}, {f.right, y(limit)});
  std::vector<Point> points;
  for (const ChannelValue& value : plot.values) points.push_back({x(PlaceOfChannel(value.arfcn)), y(value.value)});
  svg.Path("trace", points);
  const double radius = points.size() > 60 ? 1.4 : 2.6;
  for (std::size_t i = 0; i < points.size(); ++i) {
    svg.Dot(plot.values[i].inside ? "dot" : "dot outside", points[i], radius);
  }
  return svg.Whole();
}

}  // namespace orvane
