// A wire to the supply or the load that breaks, over each route. They are asked at their own Initialize alone, and
// then only told: the supply at its Initialize and at four places of a run, the load at its Initialize. What is told
// over a raw socket or through an adapter is lost without a word; a gateway answers for each line.

#include <gtest/gtest.h>

#include "program/faulty_road.h"

namespace orvane::test {
namespace {

using enum At;
using enum Wrong;
using enum Way;

RouteTo Raw(int address) {
  return {address, "raw socket", address == 2 ? "supply" : "load", "--instrument", "tcp:", "", ""};
}

RouteTo Adapter(int address, Relay::As as = Relay::As::kSocket) {
  return {
      address, as == Relay::As::kSocket ? "adapter" : "adapter's device", "adapter", "--gpib", "prologix:", "", "",
      as};
}

RouteTo Gateway(int address) {
  return {address, "gateway", "vxi11", "--gpib", "vxi11:", "", ",gpib0," + std::to_string(address)};
}

RouteTo Vxi11(int address) {
  const std::string device = ",gpib0," + std::to_string(address);
  return {address, "VXI-11 instrument", "vxi11", "--instrument", "vxi11:", device, device};
}

/// The test set has a wire of its own: its failure would end the run ahead of the supply's.
RouteTo Alone(RouteTo route) {
  route.alone = true;
  return route;
}

constexpr auto kDevice = Relay::As::kDevice;
constexpr const char* kIdentity = "ORVANE,VIRTUAL";
constexpr const char* kRefused = "no connection: Connection refused.";

TEST(BenchRouteFaults, AtTheInitializeOfSupplyAndLoad) {
  TakeRoads({
      {Raw(2), {kInitialize, kRefuses, kThere, "", 0, Ends::kAtOnce, kRefused}},
      {Raw(2), {kInitialize, kDeaf, kThere, "*IDN?", 1, Ends::kTimeOut, "no reply within 3 s."}},
      {Raw(2),
       {kInitialize, kCut, kBack, kIdentity, 1, Ends::kAtOnce,
        "the instrument closed the connection in the middle of its reply."}},
      {Adapter(2), {kInitialize, kRefuses, kThere, "", 0, Ends::kAtOnce, kRefused}},
      {Adapter(2),
       {kInitialize, kSilent, kThere, "*IDN?", 1, Ends::kTimeOut, "the adapter did not answer within 3 s."}},
      {Adapter(2),
       {kInitialize, kNothing, kThere, "", 1, Ends::kTimeOut, "no reply within 3 s.", "", "supply-absent"}},
      {Adapter(2),
       {kInitialize, kCut, kBack, kIdentity, 1, Ends::kAtOnce,
        "the adapter closed the connection in the middle of its reply."}},
      {Adapter(2, kDevice), {kInitialize, kRefuses, kThere, "", 0, Ends::kAtOnce, "device"}},
      {Gateway(2), {kInitialize, kDeaf, kThere, "", 0, Ends::kTimeOut, "the gateway did not answer within 3 s."}},
      {Gateway(2),
       {kInitialize, kNothing, kThere, "", 1, Ends::kAtOnce,
        "the gateway reports error 3, the device is not accessible.", "", "supply-absent"}},
      {Gateway(2),
       {kInitialize, kRefuses, kThere, "OUTPUT ON", 1, Ends::kAtOnce, "the gateway closed the connection."}},
      {Vxi11(2),
       {kInitialize, kDeaf, kThere, "*IDN?", 1, Ends::kTimeOut, "the instrument did not answer within 3 s."}},
      {Vxi11(2),
       {kInitialize, kCut, kBack, kIdentity, 1, Ends::kAtOnce,
        "the instrument closed the connection in the middle of its reply."}},
      {Raw(5), {kInitialize, kRefuses, kThere, "", 0, Ends::kAtOnce, kRefused}},
      {Raw(5), {kInitialize, kSilent, kThere, "*IDN?", 1, Ends::kTimeOut, "no reply within 3 s."}},
      {Raw(5),
       {kInitialize, kCut, kBack, kIdentity, 1, Ends::kAtOnce,
        "the instrument closed the connection in the middle of its reply."}},
      {Adapter(5),
       {kInitialize, kDeaf, kThere, "*IDN?", 1, Ends::kTimeOut, "the adapter did not answer within 3 s."}},
      {Adapter(5), {kInitialize, kNothing, kThere, "", 1, Ends::kTimeOut, "no reply within 3 s.", "", "load-absent"}},
      {Adapter(5, kDevice), {kInitialize, kCut, kBack, kIdentity, 1, Ends::kAtOnce, "the device is gone"}},
      {Gateway(5), {kInitialize, kRefuses, kThere, "CURR", 1, Ends::kAtOnce, "the gateway closed the connection."}},
      {Gateway(5),
       {kInitialize, kNothing, kThere, "", 1, Ends::kAtOnce,
        "the gateway reports error 3, the device is not accessible.", "", "load-absent"}},
      {Vxi11(5), {kInitialize, kRefuses, kThere, "", 0, Ends::kAtOnce, kRefused}},
      {Vxi11(5), {kInitialize, kDeaf, kThere, "RES", 1, Ends::kTimeOut, "the instrument did not answer within 3 s."}},
  });
}

/// 4.5 V ahead of the run, then 4.21 V, 3.36 V and 4.21 V for the charger. The unit whose supply does not move is out
/// of a window.
TEST(BenchRouteFaults, OfTheSupplyInARun) {
  TakeRoads({
      {Raw(2),
       {kCharger, kRefuses, kThere, "VOLT 4.5", 1, Ends::kAtOnce, "the instrument closed the connection.", "FAIL"}},
      {Raw(2), {kCharger, kDeaf, kThere, "VOLT 3.36", 1, Ends::kBadUnit, ""}},
      {Alone(Adapter(2)), {kCharger, kRefuses, kThere, "VOLT 4.5", 1, Ends::kAtOnce, kRefused, "FAIL"}},
      {Alone(Adapter(2)), {kCharger, kSilent, kThere, "VOLT 4.5", 1, Ends::kUnharmed, ""}},
      {Adapter(2), {kCharger, kNothing, kThere, "", 1, Ends::kBadUnit, "", "", "supply-absent@6"}},
      {Alone(Gateway(2)),
       {kCharger, kDeaf, kThere, "VOLT 4.5", 1, Ends::kTimeOut, "the gateway did not answer within 3 s.", "FAIL"}},
      {Alone(Gateway(2)),
       {kCharger, kCut, kThere, "VOLT 3.36", 1, Ends::kAtOnce,
        "the gateway closed the connection in the middle of its reply.", "PASS"}},
      {Gateway(2),
       {kCharger, kNothing, kThere, "", 1, Ends::kAtOnce,
        "the gateway reports error 17, input or output failed at the device.", "FAIL", "supply-absent@5"}},
      {Vxi11(2),
       {kCharger, kRefuses, kThere, "VOLT 3.36", 1, Ends::kAtOnce, "the instrument closed the connection.", "FAIL"}},
      {Vxi11(2),
       {kCharger, kSilent, kThere, "VOLT 3.36", 1, Ends::kTimeOut, "the instrument did not answer within 3 s.",
        "PASS"}},
  });
}

}  // namespace
}  // namespace orvane::test
