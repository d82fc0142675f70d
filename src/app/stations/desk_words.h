#pragma once

// What a desk and the stations that it has started say to each other on the desk's socket, a word a line. A station
// begins with its number.

namespace orvane {

/// To a station: its page comes to the front.
inline constexpr char kFrontWord[] = "front";
/// To the desk: it comes to the front.
inline constexpr char kDeskWord[] = "desk";

}  // namespace orvane
