#pragma once

// What a desk and the stations that it has started say to each other on the desk's socket, a word a line. A station
// begins with its number.

namespace orvane {

/// To a station: its page comes to the front.
inline constexpr char kFrontWord[] = "front";
/// To the desk: it comes to the front.
inline constexpr char kDeskWord[] = "desk";
/// To the desk, with the serial number behind it: the unit that is under way or comes next; nothing behind it for
/// none.
inline constexpr char kUnitWord[] = "unit ";
/// In letters. What is longer is no number that anybody reads off a tile.
inline constexpr int kLongestUnit = 100;

}  // namespace orvane
