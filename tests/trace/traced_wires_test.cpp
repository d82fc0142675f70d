// The station's wires with a trace between: what is written down is what passed, byte by byte.

#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>

#include "app/trace/traced_bus.h"
#include "app/trace/traced_serial.h"
#include "base/failure.h"
#include "bench/virtual_bench.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

class TracedWires : public testing::Test {
 protected:
  ~TracedWires() override { fs::remove(path_); }

  /// What the trace has so far.
  std::vector<TraceRecord> Records() {
    trace_.Note("test", "failure");  // A failure is on the disk at once, and all ahead of it.
    std::vector<TraceRecord> records;
    std::ifstream file(path_);
    for (std::string line; std::getline(file, line);) {
      const auto record = TraceRecordOf(line);
      if (record && record->link != "test") records.push_back(*record);
    }
    return records;
  }
  std::string BytesOf(const std::string& link, const std::string& event) {
    std::string bytes;
    for (const auto& record : Records()) bytes += record.link == link && record.event == event ? record.bytes : "";
    return bytes;
  }
  template <class Condition>
  void YieldUntil(Condition condition) {
    const TimePoint limit = loop_.Now() + std::chrono::seconds(3);
    while (!condition() && loop_.Now() < limit) loop_.Yield(limit);
  }

  std::string path_ = (fs::temp_directory_path() / ("orvane_wires_" + std::to_string(::getpid()))).string();
  VirtualEventLoop loop_;
  Trace trace_{loop_, path_};
};

TEST_F(TracedWires, TheSerialLineHasItsBytesCommandsRepliesAndFailures) {
  FakeSerial line(loop_);
  TracedSerial traced(line, trace_);
  std::string received;
  traced.onComm = [&](int event) { received += event == kCommReceive ? traced.Input() : ""; };
  traced.setup.commPort = 2;
  traced.setup.settings = "115200,N,8,1";
  traced.setup.rThreshold = 1;
  traced.Open();
  EXPECT_EQ(line.setup.settings, "115200,N,8,1");
  traced.Output(kSync);
  traced.Output(Bytes("20 20 02") + std::string(48, '\0'));
  YieldUntil([&] { return !received.empty(); });
  line.onComm(kCommFrameError);
  line.outputFailure = "COM2 (x): the device is gone.";
  EXPECT_THROW(traced.Output(kSync), StationFailure);
  traced.Close();

  EXPECT_EQ(BytesOf("COM2", "in"), received);
  std::string written;
  for (const auto& piece : line.writes) written += piece;
  EXPECT_THAT(BytesOf("COM2", "out"), testing::StartsWith(written));
  std::string told;
  for (const auto& record : Records()) told += record.event + ": " + record.says + "\n";
  EXPECT_EQ(told,
            "open: 115200,N,8,1\nout: \nout: ti (tm_init)\nin: ti: status 0\nline: frame error\nout: \n"
            "failure: COM2 (x): the device is gone.\nclose: \n");
}

TEST_F(TracedWires, ACommandThatGoesOutInOnePieceIsToldLikeOneInTwo) {
  for (const bool oneWrite : {false, true}) {
    FakeSerial line(loop_);
    line.keepsForNext = oneWrite;
    TracedSerial traced(line, trace_);
    traced.setup.commPort = oneWrite ? 2 : 1;
    traced.Open();
    const std::string body = Bytes("20 20 02") + std::string(48, '\0');
    traced.OutputWithNext(kSync);
    traced.Output(body);
    EXPECT_EQ(line.ahead, std::vector<std::string>{std::string(kSync)});
    line.outputFailure = "the device is gone.";
    EXPECT_THROW(
        {
          traced.OutputWithNext(kSync);
          traced.Output(body);
        },
        StationFailure);
    traced.Close();
  }
  for (const char* link : {"COM1", "COM2"}) {
    std::string told;
    for (const auto& record : Records()) told += record.link == link ? record.event + ": " + record.says + "\n" : "";
    EXPECT_EQ(told, "open: 9600,N,8,1\nout: \nout: ti (tm_init)\nout: \nfailure: the device is gone.\nclose: \n")
        << link;
  }
}

TEST_F(TracedWires, ATargetThatChattersUnaskedDoesNotHoldTheStationUp) {
  FakeSerial line(loop_);
  TracedSerial traced(line, trace_);
  std::size_t received = 0;
  traced.onComm = [&](int event) { received += event == kCommReceive ? traced.Input().size() : 0; };
  traced.setup.rThreshold = 1;
  traced.Open();
  constexpr std::size_t kPieces = 10'000;
  const std::string piece(100, 'x');
  // Of the processor's time, which other programs take none of.
  constexpr std::clock_t kAmple = 4 * CLOCKS_PER_SEC;
  const std::clock_t start = std::clock();
  for (std::size_t i = 0; i < kPieces && std::clock() - start < kAmple; ++i) {
    line.Receive(piece);
    YieldUntil([&] { return received > i * piece.size(); });
  }
  EXPECT_EQ(received, kPieces * piece.size()) << "each piece may cost no more than the one before";
}

TEST_F(TracedWires, AReplyInPiecesIsToldWithItsLastOne) {
  FakeSerial line(loop_);
  TracedSerial traced(line, trace_);
  traced.onComm = [&](int) { (void)traced.Input(); };
  traced.Open();
  line.Receive(Bytes("02 14 00 20"));
  line.Receive(Bytes("00 00 00 20 02"));
  line.Receive(Bytes("55"));
  std::string told;
  for (const auto& record : Records()) told += record.event + ": " + record.says + "\n";
  EXPECT_EQ(told, "open: 9600,N,8,1\nin: \nin: ti: status 0\nin: \n");
}

TEST_F(TracedWires, AnInstrumentHasItsMessagesAndFailures) {
  bench::VirtualBench bench(loop_);
  TracedBus bus(bench.Bus(), trace_);
  const auto session = bus.Open({.board = 0, .primary = 2, .secondary = 0});
  session->Write("*IDN?", std::chrono::seconds(1));
  const std::string reply = session->Read(100, std::chrono::seconds(1));
  EXPECT_THROW((void)session->Read(100, std::chrono::milliseconds(10)), GpibError);
  session->Local();
  EXPECT_EQ(BytesOf("GPIB 2", "out"), "*IDN?");
  EXPECT_EQ(BytesOf("GPIB 2", "in"), reply);
  const auto records = Records();
  ASSERT_EQ(records.size(), 4U);
  EXPECT_EQ(records[2].event, "failure");
  EXPECT_THAT(records[2].says, testing::HasSubstr("ibsta = &HC000, iberr = 6"));
  EXPECT_EQ(records[3].event, "close");
}

}  // namespace
}  // namespace orvane::test
