#pragma once

#include <QSocketNotifier>
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
///
/// What happens on the line beside bytes (modem lines, damaged bytes, breaks) is looked for whenever bytes come or
/// go, and told ahead of the bytes' own event.
class QtSerialControl final : public SerialControl {
 public:
  QtSerialControl(EventLoop& loop, ComDevices devices);
  ~QtSerialControl() override;

  /// The device went away while the port was open. The port is closed already; `text` names device and cause.
  std::function<void(const std::string& text)> onGone;

  [[nodiscard]] bool PortOpen() const override { return port_ != nullptr; }
  void Open() override;
  void Close() override { port_.reset(); }
  void Output(std::string_view bytes) override;
  void OutputWithNext(std::string_view bytes) override;
  [[nodiscard]] std::string Input() override;

 private:
  struct Port;

  [[nodiscard]] std::string Device() const;
  /// "COM1 (/dev/ttyUSB0): ", which every failure begins with.
  [[nodiscard]] std::string Name() const;
  /// @throws StationFailure when the port is closed.
  [[nodiscard]] std::shared_ptr<Port> OpenPort() const;
  void ReadSome();
  void PostLineEvents();
  void PostReceive();
  void PostGone(const std::string& why);

  EventLoop& loop_;
  ComDevices devices_;
  /// While the port is open. Events that were posted for a port closed since are void: they hold it weakly.
  std::shared_ptr<Port> port_;
};

}  // namespace orvane
