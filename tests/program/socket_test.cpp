// The automation port on a socket file, with clients that come and go.

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstring>
#include <optional>
#include <stdexcept>

#include "program/programs.h"

namespace orvane::test {
namespace {

constexpr int kLimitMs = 30000;

/// A connection to a socket file.
class Connection : public Line {
 public:
  explicit Connection(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    // The station may still be on its way to its listening.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(kLimitMs);
    while (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error("no connection to " + path);
    }
  }
  ~Connection() override { ::close(socket_); }

  void Send(const std::string& line) override {
    const std::string whole = line + "\n";
    if (::send(socket_, whole.data(), whole.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(whole.size())) {
      throw std::runtime_error("nobody takes the line");
    }
  }
  [[nodiscard]] std::optional<std::string> NextLine() override {
    while (text_.find('\n') == std::string::npos) {
      pollfd ready{socket_, POLLIN, 0};
      if (::poll(&ready, 1, kLimitMs) <= 0) return std::nullopt;
      std::array<char, 65536> bytes;
      const auto count = ::read(socket_, bytes.data(), bytes.size());
      if (count <= 0) return std::nullopt;
      text_.append(bytes.data(), static_cast<std::size_t>(count));
    }
    const auto end = text_.find('\n');
    std::string line = text_.substr(0, end);
    text_.erase(0, end + 1);
    return line;
  }
  [[nodiscard]] bool Silent() const {
    pollfd ready{socket_, POLLIN, 0};
    return text_.empty() && ::poll(&ready, 1, 0) == 0;
  }

 private:
  int socket_;
  std::string text_;
};

/// A client with a connection of its own.
class SocketClient : public Client {
 public:
  explicit SocketClient(const std::string& path) : SocketClient(std::make_unique<Connection>(path)) {}
  [[nodiscard]] Connection& Wire() { return *connection_; }

 private:
  explicit SocketClient(std::unique_ptr<Connection> connection)
      : Client(*connection), connection_(std::move(connection)) {}
  std::unique_ptr<Connection> connection_;
};

/// A station on the embedded bench that listens on a socket file.
class SocketStation : public testing::Test {
 protected:
  void Start(const std::string& bench = "virtual") {
    process_.emplace(Orvane({"--bench", bench, "--automation", "unix:" + path_}));
  }

  TempFolder folder_;
  std::string path_ = folder_ / "socket";
  std::optional<Child> process_;
};

TEST_F(SocketStation, ItsFileIsForItsOwnerAloneAndGoneAtTheEnd) {
  Start();
  SocketClient client(path_);
  struct stat facts {};
  ASSERT_EQ(::stat(path_.c_str(), &facts), 0);
  EXPECT_TRUE(S_ISSOCK(facts.st_mode));
  EXPECT_EQ(facts.st_mode & 0777, 0600U);
  client.Click("OrvaneMain.cmdExit");
  client.Await("exit");
  EXPECT_EQ(process_->WaitForEnd().status, 0);
  EXPECT_NE(::access(path_.c_str(), F_OK), 0);
}

TEST_F(SocketStation, ServesOneClientAtATime) {
  Start();
  std::optional<SocketClient> first(path_);
  EXPECT_EQ(first->ErrorOf("panels"), 0);
  SocketClient second(path_);
  const int waiting = second.Send("panels");
  EXPECT_EQ(first->ErrorOf("panels"), 0);
  EXPECT_TRUE(second.Wire().Silent());
  first.reset();
  EXPECT_TRUE(second.AnswerTo(waiting)["result"].is_array());
}

TEST_F(SocketStation, OutlivesAClientThatLeavesInsideARunAndTellsTheNextOneItsVerdict) {
  Start();
  {
    SocketClient first(path_);
    first.InitializeInstruments();
    first.SendClick("OrvaneMain.cmdTargetInitialize");
    first.AwaitState("CalMode", "ALL");
  }
  SocketClient second(path_);
  EXPECT_EQ(second.State("CalMode"), "ALL") << "the run goes on";
  EXPECT_EQ(second.Await("verdict")["result"], "PASS");
  EXPECT_EQ(second.Others(), 0U) << "the first client's answer is not the second's";
  EXPECT_EQ(second.ErrorOf("click", {{"control", "OrvaneMain.cmdResultClear"}}), 0);
}

TEST_F(SocketStation, TellsTheNextClientOfABoxThatTheFirstLeftOpen) {
  Start();
  {
    SocketClient first(path_);
    first.answersBoxes = false;
    first.SendClick("OrvaneMain.cmdTargetReset");
    first.Await("box");
  }
  SocketClient second(path_);
  second.answersBoxes = false;
  const Json box = second.Await("box");
  EXPECT_EQ(box["text"], "Port is already closed.");
  EXPECT_EQ(second.ErrorOf("answer", {{"id", box["id"]}, {"button", "OK"}}), 0);
  EXPECT_EQ(second.ErrorOf("click", {{"control", "OrvaneMain.cmdResultClear"}}), 0);
}

TEST_F(SocketStation, ThatIsKilledLeavesAFileWhichTheNextOneTakesOver) {
  Start();
  { SocketClient client(path_); }
  EXPECT_EQ(RunOrvane({"--automation", "unix:" + path_}).status, 64) << "another station listens there";
  process_->Kill();
  ASSERT_EQ(::access(path_.c_str(), F_OK), 0);
  process_.emplace(Orvane({"--bench", "virtual", "--initialize", "--automation", "unix:" + path_}));
  EXPECT_EQ(process_->WaitForEnd().status, 0);
}

}  // namespace
}  // namespace orvane::test
