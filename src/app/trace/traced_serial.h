#pragma once

#include <string>

#include "app/trace/trace.h"
#include "platform/serial_control.h"

namespace orvane {

/// A serial line with a trace of all that passes; otherwise the line itself.
class TracedSerial final : public SerialControl {
 public:
  TracedSerial(SerialControl& line, Trace& trace);
  ~TracedSerial() override { line_.onComm = nullptr; }

  [[nodiscard]] bool PortOpen() const override { return line_.PortOpen(); }
  void Open() override;
  void Close() override;
  void Output(std::string_view bytes) override;
  void OutputWithNext(std::string_view bytes) override;
  [[nodiscard]] std::string Input() override;

 private:
  void NoteOut(std::string_view bytes);
  [[nodiscard]] std::string Link() const { return "COM" + std::to_string(line_.setup.commPort); }
  /// Notes a failure on its way.
  template <class Act>
  void Watched(Act act);

  SerialControl& line_;
  Trace& trace_;
  /// What went out since the last whole command, and the last of what came in since then.
  std::string command_;
  /// Bytes went out for which the next output may answer.
  bool hasAhead_ = false;
  std::string reply_;
};

}  // namespace orvane
