#pragma once

#include <QCategoryAxis>
#include <array>
#include <optional>

namespace orvane {

/// The channels that the Target has, side by side: between the bands nothing is drawn to scale, and there is room for
/// the last label of one beside the first of the next.
struct ChannelSpan {
  const char* name;
  int first;
  int last;
  /// Where it begins on the axis, and how long it is there.
  double from;
  double length;
};

inline constexpr std::array kChannelSpans{
    ChannelSpan{"GSM 900", 0, 124, 0.0, 1.0},
    ChannelSpan{"DCS 1800", 512, 885, 1.4, 1.0},
    ChannelSpan{"E-GSM 900", 975, 1023, 2.8, 0.6},
};

/// Place of a channel on the axis; none outside the span.
[[nodiscard]] constexpr std::optional<double> PlaceOf(const ChannelSpan& span, double channel) {
  if (channel < span.first || channel > span.last) return std::nullopt;
  return span.from + span.length * (channel - span.first) / (span.last - span.first);
}

/// An axis of these spans, labelled with ARFCNs.
[[nodiscard]] QCategoryAxis* MakeChannelAxis();

}  // namespace orvane
