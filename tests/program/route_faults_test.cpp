// A wire to the test set that breaks on the road, over each route. Not every fault is taken at every place: where a
// route has nothing that another place would show, or another table has it, it is left out.

#include <gtest/gtest.h>

#include "program/faulty_road.h"

namespace orvane::test {
namespace {

const RouteTo kRaw{1, "raw socket", "testset", "--instrument", "tcp:", "", ""};
const RouteTo kAdapter{1, "adapter", "adapter", "--gpib", "prologix:", "", ""};
const RouteTo kAdapterDevice{1, "adapter's device", "adapter", "--gpib", "prologix:", "", "", Relay::As::kDevice};
const RouteTo kGateway{1, "gateway", "vxi11", "--gpib", "vxi11:", "", ",gpib0,1"};
const RouteTo kVxi11{1, "VXI-11 instrument", "vxi11", "--instrument", "vxi11:", ",inst0", ",inst0"};

/// In the answer to *IDN?; the generator's frequency in the receive run; a power reading's query, and its end.
constexpr const char* kIdentity = "ORVANE,VIRTUAL TEST SET";
constexpr const char* kFrequency = "CALL:CELL:RFG:FREQ";
constexpr const char* kQuery = "FETC:TXP:POW?";
constexpr const char* kReading = "E+00";

using enum At;
using enum Wrong;
using enum Way;

TEST(RouteFaults, OfARawSocket) {
  TakeRoads(kRaw,
            {
                {kInitialize, kRefuses, kThere, "*IDN?", 0, Ends::kAtOnce, "no connection: Connection refused."},
                {kTransmit, kRefuses, kThere, kQuery, 4, Ends::kAtOnce, "the instrument closed the connection."},
                {kInitialize, kSilent, kThere, "*IDN?", 1, Ends::kTimeOut, "no reply within 3 s."},
                {kReceive, kSilent, kThere, kFrequency, 5, Ends::kTimeOutLater, "no reply within 3 s."},
                {kTransmit, kSilent, kThere, kQuery, 4, Ends::kTimeOut, "no reply within 3 s."},
                {kReceive, kDeaf, kThere, kFrequency, 5, Ends::kBadUnit, ""},
                {kTransmit, kDeaf, kThere, kQuery, 4, Ends::kTimeOut, "no reply within 3 s."},
                {kInitialize, kSingleBytes, kThere, "*IDN?", 1, Ends::kUnharmed, ""},
                {kReceive, kSingleBytes, kThere, kFrequency, 1, Ends::kUnharmed, ""},
                {kInitialize, kSurplus, kBack, kIdentity, 1, Ends::kUnharmed, ""},
                {kTransmit, kSurplus, kBack, kReading, 4, Ends::kUnharmed, ""},
                {kTransmit, kCut, kBack, kReading, 4, Ends::kAtOnce,
                 "the instrument closed the connection in the middle of its reply."},
                {kInitialize, kLate, kBack, kIdentity, 1, Ends::kTimeOut, "no reply within 3 s."},
                {kTransmit, kLate, kBack, kReading, 4, Ends::kTimeOut, "no reply within 3 s."},
                {kTransmit, kFlipped, kBack, kReading, 4, Ends::kNoNumber, "is not a number."},
            });
}

std::vector<Row> OfAnAdapter(const char* refused, const char* gone, const char* cut) {
  constexpr const char* kNoAnswer = "the adapter did not answer within 3 s.";
  return {
      {kInitialize, kRefuses, kThere, "*IDN?", 0, Ends::kAtOnce, refused},
      {kReceive, kRefuses, kThere, kFrequency, 5, Ends::kAtOnce, refused},
      {kTransmit, kRefuses, kThere, kQuery, 4, Ends::kAtOnce, gone},
      {kInitialize, kSilent, kThere, "*IDN?", 1, Ends::kTimeOut, kNoAnswer},
      {kReceive, kSilent, kThere, kFrequency, 5, Ends::kTimeOutLater, kNoAnswer},
      {kTransmit, kSilent, kThere, kQuery, 4, Ends::kTimeOut, kNoAnswer},
      {kTransmit, kDeaf, kThere, kQuery, 4, Ends::kTimeOut, kNoAnswer},
      {kReceive, kSingleBytes, kThere, kFrequency, 1, Ends::kUnharmed, ""},
      {kTransmit, kSurplus, kBack, kReading, 4, Ends::kUnharmed, ""},
      {kTransmit, kCut, kBack, kReading, 4, Ends::kAtOnce, cut},
      {kInitialize, kLate, kBack, kIdentity, 1, Ends::kTimeOut, "within 3 s."},
      {kTransmit, kLate, kBack, kReading, 4, Ends::kTimeOut, "within 3 s."},
      {kTransmit, kFlipped, kBack, kReading, 4, Ends::kNoNumber, "is not a number."},
  };
}

TEST(RouteFaults, OfAnAdapterOnTcp) {
  TakeRoads(kAdapter, OfAnAdapter("no connection: Connection refused.", "connection",
                                  "the adapter closed the connection in the middle of its reply."));
}

TEST(RouteFaults, OfAnAdapterOnASerialDevice) {
  TakeRoads(kAdapterDevice,
            // In the moment of the pull it may be noticed by name or by line, ahead of the reply or within it.
            OfAnAdapter("device", "device", "the device is gone"));
}

TEST(RouteFaults, OfAGateway) {
  constexpr const char* kNoAnswer = "the gateway did not answer within 3 s.";
  TakeRoads(
      kGateway,
      {
          {kInitialize, kRefuses, kThere, "*IDN?", 0, Ends::kAtOnce, "no connection: Connection refused."},
          {kReceive, kRefuses, kThere, kFrequency, 5, Ends::kAtOnce, "the gateway closed the connection."},
          {kInitialize, kSilent, kThere, "*IDN?", 1, Ends::kTimeOut, kNoAnswer},
          {kReceive, kSilent, kThere, kFrequency, 5, Ends::kTimeOut, kNoAnswer},
          {kTransmit, kSilent, kThere, kQuery, 4, Ends::kTimeOut, kNoAnswer},
          {kReceive, kDeaf, kThere, kFrequency, 5, Ends::kTimeOut, kNoAnswer},
          {kReceive, kSingleBytes, kThere, kFrequency, 1, Ends::kUnharmed, ""},
          {kReceive, kSurplus, kThere, kFrequency, 5, Ends::kAtOnce, "the gateway sent something that is no answer."},
          {kTransmit, kSurplus, kBack, kReading, 4, Ends::kAtOnce, "the gateway sent something that is no answer."},
          {kReceive, kCut, kThere, kFrequency, 5, Ends::kAtOnce,
           "the gateway closed the connection in the middle of its reply."},
          {kReceive, kLate, kThere, kFrequency, 5, Ends::kTimeOut, kNoAnswer},
          {kTransmit, kLate, kBack, kReading, 4, Ends::kTimeOut, kNoAnswer},
          {kReceive, kFlipped, kThere, kFrequency, 5, Ends::kTimeOut,
           "the gateway did not finish its answer within 3 s."},
          {kTransmit, kFlipped, kBack, kReading, 4, Ends::kNoNumber, "is not a number."},
      });
}

TEST(RouteFaults, OfAnInstrumentOverVxi11) {
  constexpr const char* kNoAnswer = "the instrument did not answer within 3 s.";
  TakeRoads(kVxi11,
            {
                {kTransmit, kRefuses, kThere, kQuery, 4, Ends::kAtOnce, "the instrument closed the connection."},
                {kInitialize, kDeaf, kThere, "*IDN?", 1, Ends::kTimeOut, kNoAnswer},
                {kTransmit, kDeaf, kThere, kQuery, 4, Ends::kTimeOut, kNoAnswer},
                {kInitialize, kSingleBytes, kThere, "*IDN?", 1, Ends::kUnharmed, ""},
                {kInitialize, kSurplus, kBack, kIdentity, 1, Ends::kAtOnce,
                 "the instrument sent something that is no answer."},
                {kInitialize, kCut, kBack, kIdentity, 1, Ends::kAtOnce,
                 "the instrument closed the connection in the middle of its reply."},
                {kTransmit, kCut, kBack, kReading, 4, Ends::kAtOnce,
                 "the instrument closed the connection in the middle of its reply."},
                {kInitialize, kLate, kBack, kIdentity, 1, Ends::kTimeOut, kNoAnswer},
                {kInitialize, kFlipped, kThere, "*IDN?", 1, Ends::kTimeOut,
                 "the instrument did not finish its answer within 3 s."},
            });
}

}  // namespace
}  // namespace orvane::test
