#include "link/comm_events.h"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

struct CommRow {
  int code;
  CommText text;
};

constexpr std::array kCommRows{
    CommRow{3, {false, "CTS Change Indicated"}},
    CommRow{4, {false, "DSR Change Indicated"}},
    CommRow{5, {false, "CD Change Indicated"}},
    CommRow{6, {false, "Ringing"}},
    CommRow{7, {false, "EOF Indicated"}},
    CommRow{1001, {true, "Stop Signal Received"}},
    CommRow{1002, {true, "CTS time over"}},
    CommRow{1003, {true, "DSR time over"}},
    CommRow{1004, {true, "frame error"}},
    // The control's receive overrun bears the words of a parity error.
    CommRow{1006, {true, "parity error"}},
    CommRow{1007, {true, "Carrier Wave Indicate time over"}},
    CommRow{1008, {true, "Receive buffer error"}},
    CommRow{1009, {true, "parity error"}},
    CommRow{1010, {true, "Transmit buffer is full"}},
    CommRow{1011, {true, "DCB search error"}},
};

}  // namespace

CommText CommTextOf(int commEvent) {
  const auto* const row = std::find_if(kCommRows.begin(), kCommRows.end(),
                                       [&](const CommRow& candidate) { return candidate.code == commEvent; });
  return row == kCommRows.end() ? CommText{true, "Undefined Error"} : row->text;
}

}  // namespace orvane
