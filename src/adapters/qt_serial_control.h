#pragma once

#include <QSerialPort>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/event_loop.h"
#include "platform/serial_control.h"

namespace orvane {

/// Devices that stand for "COM1" to "COM4".
using ComDevices = std::array<std::string, 4>;

/// The Target's line on a serial device of this machine.
class QtSerialControl final : public SerialControl {
 public:
  QtSerialControl(EventLoop& loop, ComDevices devices) : loop_(loop), devices_(std::move(devices)) {}
  ~QtSerialControl() override { Close(); }

  /// The device went away while the port was open. The port is closed already; `text` names device and cause.
  std::function<void(const std::string& text)> onGone;

  [[nodiscard]] bool PortOpen() const override { return port_ != nullptr; }
  void Open() override;
  void Close() override;
  void Output(std::string_view bytes) override;
  [[nodiscard]] std::string Input() override;

 private:
  [[nodiscard]] std::string Device() const;
  void PostReceive();
  void PostGone(QSerialPort::SerialPortError error);

  EventLoop& loop_;
  ComDevices devices_;
  /// While the port is open. Events that were posted for a port closed since are void: they hold it weakly.
  std::shared_ptr<QSerialPort> port_;
  bool receivePosted_ = false;
};

}  // namespace orvane
