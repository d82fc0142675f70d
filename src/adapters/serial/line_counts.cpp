#include "adapters/serial/line_counts.h"

#include <sys/ioctl.h>

#include <array>

#include "platform/serial_control.h"

namespace orvane {
namespace {

struct CountRow {
  int LineCounts::*count;
  CommEvent event;
};
constexpr std::array kCountRows{
    CountRow{&LineCounts::cts, kCommCtsChange},      CountRow{&LineCounts::dsr, kCommDsrChange},
    CountRow{&LineCounts::carrier, kCommCdChange},   CountRow{&LineCounts::ring, kCommRing},
    CountRow{&LineCounts::breaks, kCommBreak},       CountRow{&LineCounts::frame, kCommFrameError},
    CountRow{&LineCounts::overrun, kCommOverrun},    CountRow{&LineCounts::bufferOverrun, kCommReceiveOverflow},
    CountRow{&LineCounts::parity, kCommParityError},
};

}  // namespace

std::vector<int> EventsBetween(const LineCounts& before, const LineCounts& after) {
  std::vector<int> events;
  for (const CountRow& row : kCountRows) {
    if (before.*row.count != after.*row.count) events.push_back(row.event);
  }
  return events;
}

void CountChanges(int before, int after, LineCounts& counts) {
  const int changed = before ^ after;
  if ((changed & TIOCM_CTS) != 0) ++counts.cts;
  if ((changed & TIOCM_DSR) != 0) ++counts.dsr;
  if ((changed & TIOCM_CD) != 0) ++counts.carrier;
  if ((changed & before & TIOCM_RI) != 0) ++counts.ring;
}

}  // namespace orvane
