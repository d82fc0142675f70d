#include "app/automation/automation_transport.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "adapters/qt_test.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
namespace fs = std::filesystem;

std::vector<std::string> LinesOfPieces(const std::vector<std::string>& pieces) {
  LineCutter cutter;
  std::vector<std::string> lines;
  for (const auto& piece : pieces) cutter.Feed(piece, [&](const std::string& line) { lines.push_back(line); });
  return lines;
}

TEST(Lines, AreCutWhereverThePiecesEnd) {
  EXPECT_EQ(LinesOfPieces({"a\nb", "c\n", "", "\nd"}), (std::vector<std::string>{"a", "bc", ""}));
}

TEST(Lines, AreNeverLongerThanTheLimitAndTheNextOneIsWholeAgain) {
  const std::string megabyte(1 << 20, 'x');
  const auto lines = LinesOfPieces({megabyte, megabyte, "\nnext\n"});
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], megabyte);
  EXPECT_EQ(lines[1], "next");
}

/// A client of the socket.
class Client {
 public:
  explicit Client(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    connected_ = ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { ::close(socket_); }

  [[nodiscard]] bool Connected() const { return connected_; }
  void Send(std::string_view bytes) const { ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL); }
  /// Without waiting. @return whether all of it was taken.
  [[nodiscard]] bool SendNow(std::string_view bytes) const {
    const auto count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    return count == static_cast<ssize_t>(bytes.size());
  }
  /// At most that many bytes of what has come. @return how many
  ssize_t ReceiveSome(std::size_t most) {
    std::string bytes(most, '\0');
    const auto count = ::recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count > 0) lines_ += std::count(bytes.begin(), bytes.begin() + count, '\n');
    return count;
  }
  /// Whole ones among them.
  [[nodiscard]] std::ptrdiff_t Lines() const { return lines_; }
  /// What has come so far, without waiting.
  const std::string& Received() {
    char bytes[4096];
    ssize_t count = 0;
    while ((count = ::recv(socket_, bytes, sizeof bytes, MSG_DONTWAIT)) > 0) {
      received_.append(bytes, static_cast<std::size_t>(count));
    }
    return received_;
  }

 private:
  int socket_;
  bool connected_ = false;
  std::string received_;
  std::ptrdiff_t lines_ = 0;
};

class UnixSocket : public test::QtTest {
 protected:
  UnixSocket() {
    std::string pattern = (fs::temp_directory_path() / "orvane_socket_XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
    path_ = (folder_ / "port").string();
  }
  ~UnixSocket() override { fs::remove_all(folder_); }

  void Listen() { transport_.emplace(loop_, port_, std::make_unique<ListeningSocket>(path_)); }
  std::string Failure() {
    try {
      Listen();
    } catch (const SocketFailure& failure) {
      return failure.what();
    }
    return "no failure";
  }
  bool Answers(Client& client) {
    return YieldUntil([&] { return client.Received().find('\n') != std::string::npos; }, 500ms);
  }

  static constexpr std::string_view kPanels = "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"panels\"}\n";
  static constexpr std::string_view kState =
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"state\",\"params\":{\"name\":\"TMStatus\"}}\n";

  /// Its id is long, and its answer bears the id.
  static std::string LongRequest(int number) {
    return R"({"jsonrpc":"2.0","method":"panels","id":")" + std::to_string(number) + std::string(60000, 'x') + "\"}";
  }

  fs::path folder_;
  std::string path_;
  Desk desk_{loop_, "/work"};
  OperationNest nest_{desk_};
  RunReport report_;
  InstrumentFaults faults_;
  UnitIdentity unit_;
  /// How long a look at the state blocks the station.
  std::chrono::milliseconds stateCost_{0};
  std::size_t stateSize_ = 1;
  AutomationPort port_{{loop_, desk_, nest_, report_, faults_, unit_, {}, [this](std::string_view) {
                          std::this_thread::sleep_for(stateCost_);
                          return std::optional<Json>(std::string(stateSize_, 'x'));
                        }}};
  std::optional<UnixSocketTransport> transport_;
};

TEST_F(UnixSocket, IsForItsOwnerAlone) {
  Listen();
  struct stat facts {};
  ASSERT_EQ(::stat(path_.c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777U, 0600U);
  EXPECT_TRUE(S_ISSOCK(facts.st_mode));
}

TEST_F(UnixSocket, ServesRequestsLineByLine) {
  Listen();
  Client client(path_);
  client.Send(kPanels.substr(0, 10));
  EXPECT_FALSE(YieldUntil([&] { return !client.Received().empty(); }, 20ms));
  client.Send(kPanels.substr(10));
  EXPECT_TRUE(Answers(client));
  EXPECT_EQ(client.Received(), "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":[]}\n");
}

TEST_F(UnixSocket, ASecondClientIsServedWhenTheFirstHasGone) {
  Listen();
  std::optional<Client> first(path_);
  first->Send(kPanels);
  EXPECT_TRUE(Answers(*first));
  Client second(path_);
  second.Send(kPanels);
  EXPECT_FALSE(YieldUntil([&] { return !second.Received().empty(); }, 20ms));
  first.reset();
  EXPECT_TRUE(Answers(second));
}

TEST_F(UnixSocket, TheStationOutlivesAClientThatLeavesInsideALineOrAnswer) {
  Listen();
  {
    const Client client(path_);
    client.Send(std::string(kPanels) + std::string(kPanels) + "{\"jsonrpc\"");
  }
  YieldFor(20ms);
  Client next(path_);
  next.Send(kPanels);
  EXPECT_TRUE(Answers(next));
}

/// Whoever waits for a client here waits for good: it never takes anything.
TEST_F(UnixSocket, AClientThatTakesNothingHoldsNobodyUpAndIsDropped) {
  Listen();
  const Client deaf(path_);
  YieldFor(5ms);
  const std::string request = LongRequest(0);
  const std::size_t behind = (std::size_t{8} << 20) / request.size();
  for (std::size_t i = 0; i < behind; ++i) port_.Receive(request);
  Client next(path_);
  next.Send(kPanels);
  YieldFor(5ms);
  EXPECT_EQ(next.Received(), "") << "it is not too far behind yet";
  // What the system itself keeps for it comes on top.
  for (int i = 0; i < 20; ++i) port_.Receive(request);
  EXPECT_TRUE(YieldUntil([&] { return next.Received().find('\n') != std::string::npos; }, 30s));
}

/// Sends as long as somebody takes it. @return how much that was.
std::size_t SendWhatIsTaken(Client& client, std::string_view line, std::size_t atMost) {
  std::size_t taken = 0;
  while (taken < atMost && client.SendNow(line)) taken += line.size();
  return taken;
}

TEST_F(UnixSocket, AClientThatTakesItsAnswersIsServedAtItsPaceAndNotDropped) {
  constexpr int kRequests = 400;
  stateSize_ = 60000;
  Listen();
  Client client(path_);
  YieldFor(5ms);
  std::size_t lines = 0;
  for (int sent = 0, idle = 0; lines < kRequests && idle < 3000; ++idle) {
    while (sent < kRequests && client.SendNow(kState)) ++sent;
    // Far slower than the station could answer.
    if (client.ReceiveSome(30000) > 0) idle = 0;
    lines = static_cast<std::size_t>(client.Lines());
    loop_.Yield(loop_.Now() + 1ms);
  }
  EXPECT_EQ(lines, kRequests);
}

TEST_F(UnixSocket, WhatIsNotServedYetStaysWithTheClient) {
  Listen();
  Client client(path_);
  YieldFor(5ms);
  nest_.Run([&] {
    // A request that blocks the station as long as a dead instrument; the next ones wait for their turn.
    stateCost_ = 100ms;
    client.Send(kState);
    YieldUntil([&] { return !client.Received().empty(); }, 30s);
    stateCost_ = 0ms;
    std::size_t taken = 0;
    for (int i = 0; i < 20; ++i) {
      taken += SendWhatIsTaken(client, kState, std::size_t{1} << 20);
      YieldFor(1ms);
    }
    EXPECT_LT(taken, std::size_t{1} << 20);
  });
}

TEST_F(UnixSocket, AClientThatIsSlowGetsEverythingInOrder) {
  Listen();
  Client slow(path_);
  YieldFor(5ms);
  for (int i = 0; i < 20; ++i) port_.Receive(LongRequest(i));
  std::size_t lines = 0;
  YieldUntil([&] {
    const std::string& all = slow.Received();
    lines = static_cast<std::size_t>(std::count(all.begin(), all.end(), '\n'));
    return lines == 20;
  });
  ASSERT_EQ(lines, 20U);
  std::size_t at = 0;
  for (int i = 0; i < 20; ++i) {
    at = slow.Received().find("\"" + std::to_string(i) + "x", at);
    ASSERT_NE(at, std::string::npos) << i;
  }
}

TEST_F(UnixSocket, ALineThatIsTooLongIsNoRequestAndTheNextOneIs) {
  Listen();
  Client client(path_);
  const std::string piece(1 << 16, 'x');
  for (int i = 0; i < 32; ++i) {
    client.Send(piece);
    YieldFor(1ms);
  }
  client.Send("\n" + std::string(kPanels));
  EXPECT_TRUE(YieldUntil([&] { return client.Received().find("\"id\":1") != std::string::npos; }));
  EXPECT_THAT(client.Received(), HasSubstr("-32700"));
}

TEST_F(UnixSocket, ReplacesASocketThatNobodyListensOnAndTakesItsOwnAway) {
  const int old = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path_.c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(old, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ::close(old);
  Listen();
  EXPECT_TRUE(Client(path_).Connected());
  transport_.reset();
  EXPECT_FALSE(fs::exists(path_));
}

TEST_F(UnixSocket, LeavesAloneWhatTookItsNameMeanwhile) {
  Listen();
  fs::remove(path_);
  std::ofstream(path_) << "precious";
  transport_.reset();
  EXPECT_EQ(fs::file_size(path_), 8U);
}

TEST_F(UnixSocket, LeavesAFileOrAnotherStationsSocketAlone) {
  std::ofstream(path_) << "precious";
  EXPECT_EQ(Failure(), "File exists");
  EXPECT_EQ(fs::file_size(path_), 8U);
  fs::remove(path_);

  // Names beside it are whoever's they are.
  std::ofstream(path_ + "~") << "precious";
  std::ofstream(path_ + "~1") << "precious";
  const ListeningSocket other(path_);
  EXPECT_EQ(fs::file_size(path_ + "~"), 8U);
  EXPECT_EQ(fs::file_size(path_ + "~1"), 8U);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 3) << "nothing is left behind";
  EXPECT_EQ(Failure(), "another program listens there");
  EXPECT_TRUE(fs::exists(path_));

  path_ = (folder_ / "none" / "port").string();
  EXPECT_EQ(Failure(), "No such file or directory");
  path_ = std::string(200, 'x');
  EXPECT_THAT(Failure(), HasSubstr("too long"));
}

}  // namespace
}  // namespace orvane
