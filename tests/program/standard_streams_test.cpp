// The automation port on the standard streams, with a client that takes nothing of what is said to it.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "program/programs.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;

std::string RequestLine(const std::string& method, const Json& params) {
  return Json{{"jsonrpc", "2.0"}, {"id", 1}, {"method", method}, {"params", params}}.dump();
}
std::string ClickLine(const std::string& control) { return RequestLine("click", {{"control", control}}); }

/// A station whose standard output is a pipe that nobody reads from, beside the one for its errors.
class Unheard {
 public:
  explicit Unheard(const std::string& bench)
      : pipe_(folder_ / "output"),
        made_(::mkfifo(pipe_.c_str(), S_IRUSR | S_IWUSR)),
        reader_(::open(pipe_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)),
        station_(Into(pipe_, bench)) {}
  Unheard(const Unheard&) = delete;
  Unheard& operator=(const Unheard&) = delete;
  ~Unheard() { ::close(reader_); }

  [[nodiscard]] Child& Process() { return station_; }
  /// More than the station keeps for a client.
  void AskFarTooMuch() {
    constexpr int kRequests = 400;
    for (int i = 0; i < kRequests; ++i) station_.Send(RequestLine("state", {{"name", "RFParams"}}));
  }

 private:
  static Arguments Into(const std::string& pipe, const std::string& bench) {
    Arguments command{"/bin/sh", "-c", "exec \"$0\" \"$@\" >" + pipe};
    const Arguments station = Orvane({"--bench", bench, "--automation", "stdio"});
    command.insert(command.end(), station.begin(), station.end());
    return command;
  }

  TempFolder folder_;
  std::string pipe_;
  int made_;
  int reader_;
  Child station_;
};

TEST(UnheardStation, EndsByItselfWhenItsClientIsTooFarBehind) {
  Unheard station("virtual");
  station.AskFarTooMuch();
  const auto end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.errors, "orvane: --automation: nobody takes what the station says; it ends.\n");
}

TEST(UnheardStation, TakesTheRunThatIsUnderWayToItsEndFirst) {
  const TempFolder folder;
  Unheard station("virtual:seed=7,fault=battery,store=" + folder.Path().string());
  for (const char* button : {"OrvaneMain.cmdInstrumentInitialize", "OrvaneMain.cmdPSInitialize",
                             "frmBaseBand.cmdLoaderInitialize", "OrvaneMain.cmdTargetInitialize"}) {
    station.Process().Send(ClickLine(button));
  }
  station.AskFarTooMuch();
  const auto end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_THAT(end.errors, HasSubstr("it ends behind what is under way.\n"));
  EXPECT_THAT(end.errors, HasSubstr("Warning: Battery Calibration ERROR. -> OK\n")) << "boxes answer themselves";
  EXPECT_EQ(ContentOf(folder / "eeprom.bin"), EmbeddedMemory(7));
}

TEST(UnheardStation, StillEndsAtTheEndOfItsInput) {
  Unheard station("virtual");
  station.Process().Send(ClickLine("OrvaneMain.cmdInstrumentInitialize"));
  station.Process().Send(ClickLine("OrvaneMain.cmdTargetInitialize"));
  // More than the pipe takes, and less than the station keeps.
  for (int i = 0; i < 40; ++i) station.Process().Send(RequestLine("state", {{"name", "RFParams"}}));
  station.Process().CloseInput();
  const auto end = station.Process().WaitForEnd();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.errors, "");
}

TEST(UnheardStation, LeavesTheStreamsOfOthersAsTheyWere) {
  const TempFolder folder;
  const std::string pipe = folder / "output";
  ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
  const int end = ::open(pipe.c_str(), O_RDWR | O_CLOEXEC);
  Arguments command{"/bin/sh", "-c", "exec \"$0\" \"$@\" >&" + std::to_string(end)};
  ASSERT_EQ(::fcntl(end, F_SETFD, 0), 0);
  const Arguments orvane = Orvane({"--bench", "virtual", "--automation", "stdio"});
  command.insert(command.end(), orvane.begin(), orvane.end());
  Child station(command);
  station.Send(RequestLine("panels", Json::object()));
  char first = 0;
  ASSERT_EQ(::read(end, &first, 1), 1) << "it has spoken";
  EXPECT_EQ(::fcntl(end, F_GETFL) & O_NONBLOCK, 0);
  ::close(end);
}

}  // namespace
}  // namespace orvane::test
