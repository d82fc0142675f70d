#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>

#include "bench/bytes_of.h"
#include "bench/wires/file_descriptor.h"

/// The program `virtual-bench`, met as any outside client meets it.
namespace orvane::bench::test {
namespace {

constexpr int kPatienceMs = 5000;

/// What comes within the patience, up to `enough` bytes or the other end's end.
std::string ReadUpTo(int fd, std::size_t enough) {
  std::string text;
  while (text.size() < enough) {
    pollfd file{fd, POLLIN, 0};
    char buffer[256];
    if (poll(&file, 1, kPatienceMs) <= 0) {
      break;
    }
    const ssize_t count = read(fd, buffer, std::min(sizeof buffer, enough - text.size()));
    if (count <= 0) {
      break;
    }
    text.append(buffer, static_cast<std::size_t>(count));
  }
  return text;
}

class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    int out[2];
    Check(pipe(out), "pipe");
    output_ = FileDescriptor(out[0], "pipe");
    const FileDescriptor input(out[1], "pipe");
    process_ = fork();
    if (process_ == 0) {
      dup2(out[1], STDOUT_FILENO);
      dup2(out[1], STDERR_FILENO);
      arguments.insert(arguments.begin(), VIRTUAL_BENCH);
      std::vector<char*> words;
      for (std::string& argument : arguments) {
        words.push_back(argument.data());
      }
      words.push_back(nullptr);
      execv(VIRTUAL_BENCH, words.data());
      _exit(127);
    }
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program() {
    if (process_ > 0) {
      (void)End();
    }
  }

  /// The lines of the greeting, by their first word.
  std::map<std::string, std::string> Greeting() {
    std::map<std::string, std::string> places;
    for (;;) {
      const std::string line = Line();
      if (line.empty() || line == "ready") {
        return places;
      }
      places[line.substr(0, line.find(' '))] = line.substr(line.find(' ') + 1);
    }
  }
  std::string Line() {
    std::string line;
    for (;;) {
      const std::string next = ReadUpTo(output_.Get(), 1);
      if (next.empty() || next == "\n") {
        return line;
      }
      line += next;
    }
  }
  std::string Rest() { return ReadUpTo(output_.Get(), 100000); }
  int Wait() {
    int status = 0;
    waitpid(std::exchange(process_, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  int End(int signal = SIGTERM) {
    kill(process_, signal);
    return Wait();
  }

 private:
  FileDescriptor output_;
  pid_t process_ = 0;
};

FileDescriptor OpenDevice(const std::string& path) {
  return {open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open the pseudo-terminal"};
}

int Connect(const std::string& place) {
  const std::size_t colon = place.find(':');
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(place.substr(colon + 1))));
  inet_pton(AF_INET, place.substr(0, colon).c_str(), &address.sin_addr);
  const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
    return fd;
  }
  close(fd);
  return -1;
}

std::string Ask(int fd, const std::string& line, std::size_t enough) {
  EXPECT_EQ(write(fd, line.data(), line.size()), static_cast<ssize_t>(line.size()));
  return ReadUpTo(fd, enough);
}

std::string Exchange(const FileDescriptor& device, const Bytes& command, std::size_t enough) {
  EXPECT_EQ(write(device.Get(), command.data(), command.size()), static_cast<ssize_t>(command.size()));
  const std::string reply = ReadUpTo(device.Get(), enough);
  return HexOf(Bytes(reply.begin(), reply.end()));
}

const Bytes kTi = CommandBytes("02 14 20 20 02");

TEST(OnWires, TheTargetAnswersOnAPseudoTerminalAtThePaceOfItsLine) {
  Program program({});
  auto places = program.Greeting();
  const FileDescriptor device = OpenDevice(places["target"]);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Exchange(device, kTi, 9), "02 14 00 20 00 00 00 20 02");
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took.count(), (53 + 9) * 0.0868 + 0.3) << "faster than the line";
}

TEST(OnWires, AReplyComesWhole) {
  Program program({});
  auto places = program.Greeting();
  const FileDescriptor device = OpenDevice(places["target"]);
  // "mpr 20": 16 bytes
  const Bytes command = CommandBytes("02 14 45 14 00 51 02");
  ASSERT_EQ(write(device.Get(), command.data(), command.size()), static_cast<ssize_t>(command.size()));
  pollfd ready{device.Get(), POLLIN, 0};
  ASSERT_EQ(poll(&ready, 1, kPatienceMs), 1);
  char buffer[256];
  EXPECT_GE(read(device.Get(), buffer, sizeof buffer), 14) << "the first bytes and the last ones in one read";
}

TEST(OnWires, EachInstrumentAnswersOnItsSocketAndEndsWithALineFeed) {
  Program program({"--seed", "5"});
  auto places = program.Greeting();
  const FileDescriptor testSet(Connect(places["testset"]), "connect");
  EXPECT_EQ(Ask(testSet.Get(), "CALL:CELL:BAND EGSM\nNONSENSE\nSYST:ERR?\n", 24), "-113,\"Undefined header\"\n");
  const FileDescriptor supply(Connect(places["supply"]), "connect");
  EXPECT_EQ(Ask(supply.Get(), "VOLT 4.21\r\nVOLT?\n", 14), "+4.21000E+000\n");
  const FileDescriptor load(Connect(places["load"]), "connect");
  EXPECT_EQ(Ask(load.Get(), "*ID", 0), "");
  EXPECT_EQ(Ask(load.Get(), "N?\n", 25), "ORVANE,VIRTUAL LOAD,0,1.0") << "a line may come in pieces";
}

TEST(OnWires, TheAdaptersReachTheSameInstruments) {
  Program program({});
  auto places = program.Greeting();
  const FileDescriptor socket(Connect(places["adapter"]), "connect");
  EXPECT_EQ(Ask(socket.Get(), "++addr 2\nVOLT 4.21;OUTPUT ON;OUTP?\n++read eoi\n", 2), "1\n");
  const FileDescriptor terminal = OpenDevice(places["adapter-tty"]);
  EXPECT_EQ(Ask(terminal.Get(), "++addr 2\nVOLT?\n++read eoi\n", 14), "+4.21000E+000\n");
  const FileDescriptor supply(Connect(places["supply"]), "connect");
  EXPECT_EQ(Ask(supply.Get(), "VOLT?\n", 14), "+4.21000E+000\n");
}

TEST(OnWires, AnAdapterHearsNothingWhileItReadsAndServesOneClientAtATime) {
  Program program({});
  auto places = program.Greeting();
  auto first = std::make_optional<FileDescriptor>(Connect(places["adapter"]), "connect");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Ask(first->Get(), "++addr 9\n++read_tmo_ms 300\n++read eoi\n++addr\n", 3), "9\r\n");
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
  const FileDescriptor second(Connect(places["adapter"]), "connect");
  EXPECT_EQ(write(second.Get(), "++addr\n", 7), 7);
  EXPECT_EQ(Ask(first->Get(), "++addr 4\n++addr\n", 3), "4\r\n");
  first.reset();
  EXPECT_EQ(ReadUpTo(second.Get(), 3), "4\r\n");
}

/// A call of the gateway's programs by its words, marked as one record.
std::string CallBytes(std::initializer_list<std::uint32_t> words, std::uint32_t lastFragment = 0x80000000U) {
  std::string bytes;
  const auto put = [&](std::uint32_t word) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) bytes += static_cast<char>(word >> shift & 0xFFU);
  };
  put(static_cast<std::uint32_t>(words.size() * 4) | lastFragment);
  for (const std::uint32_t word : words) put(word);
  return bytes;
}

std::string HexOfText(const std::string& text) { return HexOf(Bytes(text.begin(), text.end())); }

// destroy_link of a link that is none, as call 9, and the answer to it: error 4.
const std::string kDestroyNothing = CallBytes({9, 0, 2, 0x0607AF, 1, 23, 0, 0, 0, 0, 77});
constexpr auto kInvalidLink =
    "80 00 00 1C 00 00 00 09 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 04";

TEST(OnWires, TheGatewayAnswersCallsHoweverTheyCome) {
  Program program({});
  auto places = program.Greeting();
  const FileDescriptor gateway(Connect(places["vxi11"]), "connect");
  const std::size_t size = 32;
  EXPECT_EQ(HexOfText(Ask(gateway.Get(), kDestroyNothing, size)), kInvalidLink);
  EXPECT_EQ(HexOfText(Ask(gateway.Get(), kDestroyNothing + kDestroyNothing, 2 * size)),
            kInvalidLink + std::string(" ") + kInvalidLink);
  const std::string fragments = CallBytes({9, 0, 2}, 0) + CallBytes({0x0607AF, 1, 23, 0, 0, 0, 0, 77});
  for (const char byte : fragments) Ask(gateway.Get(), std::string(1, byte), 0);
  EXPECT_EQ(HexOfText(ReadUpTo(gateway.Get(), size)), kInvalidLink);
}

TEST(OnWires, TheGatewayTellsWhatItDoesNotServe) {
  Program program({});
  auto places = program.Greeting();
  const std::pair<std::string, const char*> rows[] = {
      {CallBytes({9, 0, 2, 0x0607AF, 1, 0, 0, 0, 0, 0}), "00 00 00 00"},   // nothing, carried out
      {CallBytes({9, 0, 2, 100000, 2, 3, 0, 0, 0, 0}), "00 00 00 01"},     // another program
      {CallBytes({9, 0, 2, 0x0607AF, 1, 99, 0, 0, 0, 0}), "00 00 00 03"},  // no such procedure
      {CallBytes({9, 0, 2, 0x0607AF, 1, 23, 0, 0, 0, 0}), "00 00 00 04"},  // no arguments
  };
  for (const auto& [call, status] : rows) {
    const FileDescriptor gateway(Connect(places["vxi11"]), "connect");
    EXPECT_EQ(HexOfText(Ask(gateway.Get(), call, 28)),
              std::string("80 00 00 18 00 00 00 09 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 ") + status);
  }
  const FileDescriptor gateway(Connect(places["vxi11"]), "connect");
  // Another version: both bounds of those that are served follow.
  EXPECT_EQ(
      HexOfText(Ask(gateway.Get(), CallBytes({9, 0, 2, 0x0607AF, 7, 23, 0, 0, 0, 0}), 36)),
      "80 00 00 20 00 00 00 09 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 02 00 00 00 01 00 00 00 01");
}

TEST(OnWires, WhoeverSendsTheGatewayNoCallsIsDroppedAndNobodyElse) {
  Program program({});
  auto places = program.Greeting();
  const FileDescriptor good(Connect(places["vxi11"]), "connect");
  for (const std::string& bytes :
       {std::string("GET / HTTP/1.1\r\n\r\n"), CallBytes({9, 1, 2, 3}), CallBytes({}), std::string(4, '\xFF')}) {
    const FileDescriptor bad(Connect(places["vxi11"]), "connect");
    EXPECT_EQ(Ask(bad.Get(), bytes, 1), "");
  }
  EXPECT_EQ(HexOfText(Ask(good.Get(), kDestroyNothing, 32)), kInvalidLink);
}

TEST(OnWires, TheSupplyFeedsTheTarget) {
  Program program({});
  auto places = program.Greeting();
  const FileDescriptor supply(Connect(places["supply"]), "connect");
  EXPECT_EQ(Ask(supply.Get(), "VOLT 4.21;OUTPUT ON;OUTP?\n", 2), "1\n");
  const FileDescriptor device = OpenDevice(places["target"]);
  // "mpr 20": 4200 mV at the contacts
  EXPECT_EQ(Exchange(device, CommandBytes("02 14 45 14 00 51 02"), 16),
            "02 14 00 45 00 00 00 14 00 68 10 00 10 00 29 02");
}

TEST(OnWires, AnAbsentInstrumentRefusesAndAnUnpluggedTargetIsGone) {
  Program program({"--fault", "supply-absent", "--fault", "unplugged@2"});
  auto places = program.Greeting();
  EXPECT_EQ(Connect(places["supply"]), -1);
  const FileDescriptor device = OpenDevice(places["target"]);
  EXPECT_NE(Exchange(device, kTi, 9), "");
  EXPECT_EQ(Exchange(device, kTi, 9), "") << "the read ends at once: nobody is there any more";
  EXPECT_NE(access(places["target"].c_str(), F_OK), 0);
}

TEST(OnWires, EndsCleanlyAndTellsItsCounters) {
  for (const int signal : {SIGTERM, SIGINT}) {
    Program program({});
    auto places = program.Greeting();
    const FileDescriptor device = OpenDevice(places["target"]);
    (void)Exchange(device, kTi, 9);
    EXPECT_EQ(program.End(signal), 0);
    EXPECT_NE(program.Rest().find("counters target commands 1 in 53 out 9\n"), std::string::npos);
  }
}

TEST(OnWires, TheStoreOutlivesTheProgram) {
  const auto directory = std::filesystem::temp_directory_path() / ("wires-store-" + std::to_string(getpid()));
  const auto name = directory.string() + "-tty";
  {
    Program program({"--store", directory.string(), "--target", name});
    (void)program.Greeting();
    const FileDescriptor device = OpenDevice(name);
    EXPECT_EQ(Exchange(device, CommandBytes("02 14 52 03 55 04 02"), 11), "02 14 00 52 00 00 00 03 00 51 02");
    EXPECT_EQ(Exchange(device, CommandBytes("02 14 54 01 00 55 02"), 9), "02 14 00 54 00 00 00 54 02");
    EXPECT_EQ(program.End(), 0);
  }
  EXPECT_FALSE(std::filesystem::is_symlink(name));
  {
    Program program({"--store", directory.string()});
    const FileDescriptor device = OpenDevice(program.Greeting()["target"]);
    EXPECT_EQ(Exchange(device, CommandBytes("02 14 53 03 50 02"), 12), "02 14 00 53 00 00 00 03 00 55 00 00");
  }
  std::filesystem::remove_all(directory);
}

TEST(OnWires, BadOptionsEndWithOneLineThatNamesThem) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {{{"--fault", "wrong"}, "fault=wrong"},
                                                                    {{"--seed", "x"}, "--seed"},
                                                                    {{"--load", "nowhere"}, "nowhere"},
                                                                    {{"--colour", "red"}, "--colour"},
                                                                    {{"--store", "/dev/null/x"}, "store="}};
  for (const auto& [arguments, named] : cases) {
    Program program(arguments);
    const std::string said = program.Rest();
    EXPECT_NE(said.find(named), std::string::npos) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_EQ(program.Wait(), 64) << named;
  }
}

}  // namespace
}  // namespace orvane::bench::test
