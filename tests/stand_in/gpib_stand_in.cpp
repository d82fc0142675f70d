// A stand-in for the system's GPIB library: the calls of NI-488.2 that the station makes, with instruments that are
// reached over raw sockets or answer by themselves. What it is to do stands in the environment:
//
//   GPIB_STAND_IN          "1=127.0.0.1:4100 2=127.0.0.1:4101 3=echo": who is at which address. An echo answers each
//                          line that ends in "?" with the line itself, in the order in which they came.
//   GPIB_STAND_IN_FAULTS   "ibrd@2=C100:6 ibwrt/2@1+=8100:2 ibrd@1=cut:3": what a call tells in place of being done,
//                          ibsta:iberr, at its N-th time or from it on, at any address or at one. "cut:N" is a read
//                          that stops after N bytes and is no failure.
//   GPIB_STAND_IN_JOURNAL  a file that gets a line for each call.
#include "stand_in/gpib_stand_in.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <sstream>
#include <string>

#include "stand_in/script.h"

namespace {

using stand_in::Fault;
using stand_in::Journal;
using stand_in::Script;
using stand_in::WordsOf;

constexpr int kErr = 0x8000;
constexpr int kTimo = 0x4000;
constexpr int kEnd = 0x2000;
constexpr int kCmpl = 0x0100;
enum Iberr { kEdvr = 0, kEnol = 2, kEarg = 4, kEabo = 6, kEneb = 7 };

struct Instrument {
  std::string place;
  int socket = -1;
  std::string queue;
};

struct Device {
  int primary = 0;
  int timeOutCode = 0;
  bool endWithLastByte = false;
};

struct StandIn {
  std::map<int, Instrument> instruments;
  Script script;
  std::map<int, Device> devices;
  int lastDevice = 0;
};

struct Status {
  int ibsta = 0;
  int iberr = 0;
  long ibcntl = 0;
};
thread_local Status last;

StandIn FromEnvironment() {
  StandIn standIn;
  auto places = WordsOf("GPIB_STAND_IN");
  for (std::string word; places >> word;) {
    const auto equals = word.find('=');
    standIn.instruments[std::stoi(word)].place = word.substr(equals + 1);
  }
  return standIn;
}

StandIn& TheStandIn() {
  static StandIn standIn = FromEnvironment();
  return standIn;
}

int Told(int ibsta, int iberr = 0, long ibcntl = 0) {
  last = {ibsta | kCmpl, iberr, ibcntl};
  return last.ibsta;
}

/// The device of that number when its call is not struck; else what to return is told already. `cut` gets what a cut
/// read may give.
Device* Begin(const std::string& call, int number, const std::string& argument = "", std::size_t* cut = nullptr) {
  const auto device = TheStandIn().devices.find(number);
  if (device == TheStandIn().devices.end()) {
    Journal(call + " closed");
    Told(kErr, kEdvr);
    return nullptr;
  }
  Journal(call + " " + std::to_string(device->second.primary) + (argument.empty() ? "" : " " + argument));
  const Fault* const fault = TheStandIn().script.Struck(call, device->second.primary);
  if (fault != nullptr && fault->cut >= 0 && cut != nullptr) *cut = static_cast<std::size_t>(fault->cut);
  if (fault == nullptr || fault->cut >= 0) return &device->second;
  Told(fault->ibsta, fault->iberr);
  return nullptr;
}

Instrument* At(int address) {
  const auto found = TheStandIn().instruments.find(address);
  return found == TheStandIn().instruments.end() ? nullptr : &found->second;
}

void HangUp(Instrument& instrument) {
  if (instrument.socket >= 0) ::close(instrument.socket);
  instrument.socket = -1;
  instrument.queue.clear();
}

/// Whether somebody is there.
bool Reach(Instrument& instrument) {
  if (instrument.socket >= 0 || instrument.place == "echo") return true;
  const auto colon = instrument.place.rfind(':');
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (::getaddrinfo(instrument.place.substr(0, colon).c_str(), instrument.place.substr(colon + 1).c_str(), &wanted,
                    &found) != 0) {
    return false;
  }
  instrument.socket = ::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool connected = ::connect(instrument.socket, found->ai_addr, found->ai_addrlen) == 0;
  ::freeaddrinfo(found);
  // A write on the bus is over when the instrument has taken the message: none may wait for company.
  const int on = 1;
  ::setsockopt(instrument.socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  if (!connected) HangUp(instrument);
  return connected;
}

int MillisecondsOf(int timeOutCode) {
  constexpr std::array kMilliseconds{-1, 1, 1, 1, 1, 1, 3, 10, 30, 100, 300, 1000, 3000, 10000, 30000, 100000};
  return kMilliseconds.at(static_cast<std::size_t>(timeOutCode));
}

/// Waits for a line in the queue. @return false when none came in time.
bool AwaitLine(Instrument& instrument, int timeOutCode) {
  while (instrument.queue.find('\n') == std::string::npos) {
    pollfd ready{instrument.socket, POLLIN, 0};
    if (instrument.socket < 0 || ::poll(&ready, 1, MillisecondsOf(timeOutCode)) <= 0) return false;
    std::array<char, 4096> bytes{};
    const auto count = ::recv(instrument.socket, bytes.data(), bytes.size(), 0);
    if (count <= 0) return false;
    instrument.queue.append(bytes.data(), static_cast<std::size_t>(count));
  }
  return true;
}

bool AreArgumentsValid(int primary, int secondary, int timeOutCode) {
  return primary >= 0 && primary <= 30 && (secondary == 0 || (secondary >= 0x60 && secondary <= 0x7E)) &&
         timeOutCode >= 0 && timeOutCode <= 15;
}

}  // namespace

void GpibStandInBegin() {
  for (auto& [address, instrument] : TheStandIn().instruments) HangUp(instrument);
  TheStandIn() = FromEnvironment();
}

int GpibStandInOpenDevices() { return static_cast<int>(TheStandIn().devices.size()); }

int ibdev(int board, int primary, int secondary, int timeOutCode, int endWithLastByte, int endOfString) {
  std::ostringstream line;
  line << "ibdev " << board << " " << primary << " " << secondary << " " << timeOutCode << " " << endWithLastByte
       << " " << endOfString;
  Journal(line.str());
  if (const Fault* const fault = TheStandIn().script.Struck("ibdev", primary)) {
    Told(fault->ibsta, fault->iberr);
    return -1;
  }
  if (board != 0 || !AreArgumentsValid(primary, secondary, timeOutCode)) {
    Told(kErr, board != 0 ? kEneb : kEarg);
    return -1;
  }
  const int number = ++TheStandIn().lastDevice;
  TheStandIn().devices[number] = {primary, timeOutCode, endWithLastByte != 0};
  Told(0);
  return number;
}

int ibwrt(int number, const void* bytes, std::size_t count) {
  const std::string text(static_cast<const char*>(bytes), count);
  const Device* const device = Begin("ibwrt", number, text);
  if (device == nullptr) return last.ibsta;
  Instrument* const instrument = At(device->primary);
  if (instrument == nullptr || !Reach(*instrument)) return Told(kErr, kEnol);
  if (instrument->place == "echo") {
    if (text.ends_with('?') && device->endWithLastByte) instrument->queue += text + "\n";
  } else {
    const std::string message = text + (device->endWithLastByte ? "\n" : "");
    if (::send(instrument->socket, message.data(), message.size(), MSG_NOSIGNAL) < 0) {
      HangUp(*instrument);
      return Told(kErr, kEnol);
    }
  }
  return Told(0, 0, static_cast<long>(count));
}

int ibrd(int number, void* bytes, std::size_t count) {
  std::size_t atMost = count;
  const Device* const device = Begin("ibrd", number, std::to_string(count), &atMost);
  if (device == nullptr) return last.ibsta;
  Instrument* const instrument = At(device->primary);
  if (instrument == nullptr || !AwaitLine(*instrument, device->timeOutCode)) return Told(kErr | kTimo, kEabo);
  std::string& queue = instrument->queue;
  const std::size_t whole = queue.find('\n') + 1;
  const std::size_t size = std::min({whole, count, atMost});
  std::memcpy(bytes, queue.data(), size);
  queue.erase(0, size);
  return Told(size == whole ? kEnd : 0, 0, static_cast<long>(size));
}

int ibtmo(int number, int timeOutCode) {
  Device* const device = Begin("ibtmo", number, std::to_string(timeOutCode));
  if (device == nullptr) return last.ibsta;
  device->timeOutCode = timeOutCode;
  return Told(0);
}

#ifndef GPIB_STAND_IN_WITHOUT_IBCLR
int ibclr(int number) {
  const Device* const device = Begin("ibclr", number);
  if (device == nullptr) return last.ibsta;
  if (Instrument* const instrument = At(device->primary)) HangUp(*instrument);
  return Told(0);
}
#endif

int ibloc(int number) { return Begin("ibloc", number) == nullptr ? last.ibsta : Told(0); }

int ibonl(int number, int online) {
  if (Begin("ibonl", number, std::to_string(online)) == nullptr) return last.ibsta;
  if (online == 0) TheStandIn().devices.erase(number);
  return Told(0);
}

int ibln(int number, int primary, int secondary, short* listens) {
  if (Begin("ibln", number, std::to_string(primary) + " " + std::to_string(secondary)) == nullptr) return last.ibsta;
  Instrument* const instrument = At(primary);
  *listens = instrument != nullptr && Reach(*instrument) ? 1 : 0;
  return Told(0);
}

int ThreadIbsta() { return last.ibsta; }
int ThreadIberr() { return last.iberr; }
long ThreadIbcntl() { return last.ibcntl; }
