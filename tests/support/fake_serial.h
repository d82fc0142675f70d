#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/event_loop.h"
#include "platform/serial_control.h"

namespace orvane::test {

/// One command frame as it came out of the station.
struct SentCommand {
  std::uint8_t operation = 0;
  std::vector<std::uint8_t> data;  ///< Without escapes.
  std::uint8_t checksum = 0;
};

/// A reply frame in the padded layout: 02 14, then pad and value for operation, status, each data byte and the
/// checksum, then one 02. A value of 0x80 or more travels as pad 01 and the value less 0x80; a travelling byte of 02
/// or 10 has a 10 ahead of its pad.
[[nodiscard]] std::string PaddedReply(std::uint8_t operation, std::uint8_t status,
                                      const std::vector<std::uint8_t>& data = {});

/// Data of a read reply: item, then a 16-bit value, low byte first.
[[nodiscard]] std::vector<std::uint8_t> ItemAndValue(std::uint8_t item, std::uint16_t value);

/// A Target on a line without pace: every command gets `answer(command)` after `delay`, or nothing for an empty text.
class FakeSerial final : public SerialControl {
 public:
  explicit FakeSerial(EventLoop& loop) : loop_(loop) {}

  [[nodiscard]] bool PortOpen() const override { return open_; }
  void Open() override;
  void Close() override { open_ = false; }
  void Output(std::string_view bytes) override;
  void OutputWithNext(std::string_view bytes) override;
  [[nodiscard]] std::string Input() override { return std::exchange(pending_, {}); }

  /// Bytes from the Target, now: raises the receive event.
  void Receive(std::string_view bytes);

  std::function<std::string(const SentCommand&)> answer = [](const SentCommand& command) {
    return PaddedReply(command.operation, 0, command.data);
  };
  TimePoint delay = std::chrono::milliseconds(1);
  /// Text of the failure of `Open` or `Output`; none when empty.
  std::string openFailure;
  std::string outputFailure;
  /// Bytes that have a next output fail with that one, as on a line that keeps them for it.
  bool keepsForNext = false;

  std::vector<std::string> writes;  ///< Every output.
  std::vector<std::string> ahead;   ///< Those that said that another one follows.
  std::vector<SentCommand> commands;

 private:
  void Take(std::string_view bytes);

  EventLoop& loop_;
  bool open_ = false;
  std::string pending_;
  std::string frame_;
};

}  // namespace orvane::test
