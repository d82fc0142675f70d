#include "program/wired_bench.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <sstream>
#include <stdexcept>

#include "bench/wires/file_descriptor.h"

namespace orvane::test {
namespace {

Arguments CommandOf(Arguments arguments) {
  arguments.insert(arguments.begin(), VIRTUAL_BENCH_PROGRAM);
  return arguments;
}

}  // namespace

WiredBench::WiredBench(const Arguments& arguments) : child_(CommandOf(arguments)) {
  for (std::string what; what != "ready";) {
    const auto line = child_.NextLine();
    if (!line) throw std::runtime_error("the bench is not ready: " + child_.WaitForEnd().errors);
    std::istringstream words(*line);
    words >> what;
    words >> places_[what];
  }
}

WiredBench::~WiredBench() {
  if (!child_.Runs()) return;
  child_.Terminate();
  const auto end = child_.WaitForEnd();
  EXPECT_EQ(end.status, 0) << end.errors;
}

std::string WiredBench::Ask(const std::string& what, const std::string& line) const {
  const std::string& place = Place(what);
  const auto colon = place.rfind(':');
  sockaddr_in there{};
  there.sin_family = AF_INET;
  there.sin_port = htons(static_cast<std::uint16_t>(std::stoi(place.substr(colon + 1))));
  ::inet_pton(AF_INET, place.substr(0, colon).c_str(), &there.sin_addr);
  const bench::FileDescriptor wire(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket");
  bench::Check(::connect(wire.Get(), reinterpret_cast<const sockaddr*>(&there), sizeof there), "connect");
  const std::string whole = line + "\n";
  bench::Check(static_cast<int>(::send(wire.Get(), whole.data(), whole.size(), MSG_NOSIGNAL)), "send");
  std::string answer;
  while (!answer.ends_with('\n')) {
    std::array<char, 256> bytes;
    const auto count = ::recv(wire.Get(), bytes.data(), bytes.size(), 0);
    if (count <= 0) throw std::runtime_error(what + " answers nothing to " + line);
    answer.append(bytes.data(), static_cast<std::size_t>(count));
  }
  answer.pop_back();
  return answer;
}

Arguments WiredBench::Options() {
  return {"--com1",       Place("target"),
          "--instrument", "1=tcp:" + Place("testset"),
          "--instrument", "2=tcp:" + Place("supply"),
          "--instrument", "5=tcp:" + Place("load")};
}

}  // namespace orvane::test
