#include "adapters/qt_serial_control.h"

#include <utility>

#include "adapters/serial/serial_device.h"
#include "base/failure.h"

namespace orvane {

struct QtSerialControl::Port {
  Port(const std::string& path, const LineSettings& settings, bool hardwareHandshake)
      : device(path, settings, hardwareHandshake), readable(device.Descriptor(), QSocketNotifier::Read) {}
  Port(const Port&) = delete;
  Port& operator=(const Port&) = delete;
  ~Port() { readable.setEnabled(false); }

  SerialDevice device;
  QSocketNotifier readable;
  std::string received;
  /// Goes out ahead of the next output, in one write with it.
  std::string kept;
  bool receivePosted = false;
};

QtSerialControl::QtSerialControl(EventLoop& loop, ComDevices devices) : loop_(loop), devices_(std::move(devices)) {}
QtSerialControl::~QtSerialControl() = default;

std::string QtSerialControl::Device() const {
  const auto index = static_cast<std::size_t>(setup.commPort - 1);
  if (setup.commPort < 1 || index >= devices_.size()) {
    throw StationFailure("COM" + std::to_string(setup.commPort) + ": there is no such port.");
  }
  return devices_[index];
}

std::string QtSerialControl::Name() const { return "COM" + std::to_string(setup.commPort) + " (" + Device() + "): "; }

void QtSerialControl::Open() {
  const std::string name = Name();
  const auto settings = ParseLineSettings(setup.settings);
  if (!settings) throw StationFailure(name + "invalid settings \"" + setup.settings + "\".");
  try {
    port_ = std::make_shared<Port>(Device(), *settings, setup.handshaking != 0);
  } catch (const SerialFailure& failure) {
    throw StationFailure(name + failure.what());
  }
  QObject::connect(&port_->readable, &QSocketNotifier::activated, &port_->readable, [this] { ReadSome(); });
}

void QtSerialControl::ReadSome() {
  try {
    port_->received += port_->device.Read();
  } catch (const SerialFailure& failure) {
    PostGone(failure.what());
    return;
  }
  PostLineEvents();
  if (!port_->received.empty()) PostReceive();
}

void QtSerialControl::PostLineEvents() {
  for (const int event : port_->device.LineEvents()) {
    loop_.Post([this, event, open = std::weak_ptr(port_)] {
      if (!open.expired() && onComm) onComm(event);
    });
  }
}

void QtSerialControl::PostReceive() {
  if (port_->receivePosted || setup.rThreshold == 0) return;
  port_->receivePosted = true;
  loop_.Post([this, held = std::weak_ptr(port_)] {
    const auto open = held.lock();
    if (!open) return;
    open->receivePosted = false;
    if (onComm) onComm(kCommReceive);
  });
}

void QtSerialControl::PostGone(const std::string& why) {
  // A line that hung up stays readable for ever: no more reads from here on.
  port_->readable.setEnabled(false);
  loop_.Post([this, open = std::weak_ptr(port_), text = Name() + why] {
    if (open.expired()) return;
    Close();
    if (!onGone) throw StationFailure(text);
    onGone(text);
  });
}

std::shared_ptr<QtSerialControl::Port> QtSerialControl::OpenPort() const {
  if (!port_) throw StationFailure("The serial port is not open.");
  return port_;
}

void QtSerialControl::OutputWithNext(std::string_view bytes) { OpenPort()->kept += bytes; }

void QtSerialControl::Output(std::string_view bytes) {
  const auto port = OpenPort();
  PostLineEvents();
  port->kept += bytes;
  try {
    port->device.Write(std::exchange(port->kept, {}));
  } catch (const SerialFailure& failure) {
    const std::string text = Name() + failure.what();
    Close();
    throw StationFailure(text);
  }
}

std::string QtSerialControl::Input() { return port_ ? std::exchange(port_->received, {}) : std::string(); }

}  // namespace orvane
