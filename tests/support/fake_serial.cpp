#include "support/fake_serial.h"

#include "base/failure.h"

namespace orvane::test {
namespace {

constexpr std::size_t kFrameSize = 53;

SentCommand Unescaped(const std::string& frame) {
  SentCommand command;
  command.operation = static_cast<std::uint8_t>(frame.at(2));
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 3; i < frame.size() && frame[i] != 0x02; ++i) {
    if (frame[i] == 0x10) ++i;
    bytes.push_back(static_cast<std::uint8_t>(frame.at(i)));
  }
  if (!bytes.empty()) {
    command.checksum = bytes.back();
    bytes.pop_back();
  }
  command.data = std::move(bytes);
  return command;
}

}  // namespace

std::string PaddedReply(std::uint8_t operation, std::uint8_t status, const std::vector<std::uint8_t>& data) {
  std::string frame = "\x02\x14";
  const auto travel = [&](std::uint8_t value) {
    const std::uint8_t low = value & 0x7F;
    if (low == 0x02 || low == 0x10) frame += '\x10';
    frame += value >= 0x80 ? '\x01' : '\0';
    frame += static_cast<char>(low);
  };
  std::uint8_t checksum = operation ^ status;
  travel(operation);
  travel(status);
  for (const std::uint8_t byte : data) {
    travel(byte);
    checksum ^= byte;
  }
  travel(checksum);
  return frame + '\x02';
}

std::vector<std::uint8_t> ItemAndValue(std::uint8_t item, std::uint16_t value) {
  return {item, static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>(value >> 8)};
}

void FakeSerial::Open() {
  if (!openFailure.empty()) throw StationFailure(openFailure);
  open_ = true;
}

void FakeSerial::OutputWithNext(std::string_view bytes) {
  if (!outputFailure.empty() && !keepsForNext) throw StationFailure(outputFailure);
  ahead.emplace_back(bytes);
  Take(bytes);
}

void FakeSerial::Output(std::string_view bytes) {
  if (!outputFailure.empty()) throw StationFailure(outputFailure);
  Take(bytes);
}

void FakeSerial::Take(std::string_view bytes) {
  writes.emplace_back(bytes);
  frame_ += bytes;
  while (frame_.size() >= kFrameSize) {
    commands.push_back(Unescaped(frame_.substr(0, kFrameSize)));
    frame_.erase(0, kFrameSize);
    const std::string reply = answer ? answer(commands.back()) : "";
    if (!reply.empty()) loop_.PostAt(loop_.Now() + delay, [this, reply] { Receive(reply); });
  }
}

void FakeSerial::Receive(std::string_view bytes) {
  if (!open_) return;
  pending_ += bytes;
  if (onComm) onComm(kCommReceive);
}

}  // namespace orvane::test
