#include "adapters/qt_serial_control.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <optional>
#include <vector>

#include "base/failure.h"

namespace orvane {
namespace {

/// Ample for the 512 bytes of the control's own buffer at any speed that occurs.
constexpr int kWriteLimitMs = 2000;

struct LineSettings {
  int baud = 0;
  QSerialPort::Parity parity = QSerialPort::NoParity;
  QSerialPort::DataBits dataBits = QSerialPort::Data8;
  QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

template <class Value>
struct SettingRow {
  std::string_view text;
  Value value;
};
template <class Value>
SettingRow(const char*, Value) -> SettingRow<Value>;

constexpr std::array kParities{
    SettingRow{"N", QSerialPort::NoParity},    SettingRow{"E", QSerialPort::EvenParity},
    SettingRow{"O", QSerialPort::OddParity},   SettingRow{"M", QSerialPort::MarkParity},
    SettingRow{"S", QSerialPort::SpaceParity},
};
constexpr std::array kDataBits{
    SettingRow{"5", QSerialPort::Data5},
    SettingRow{"6", QSerialPort::Data6},
    SettingRow{"7", QSerialPort::Data7},
    SettingRow{"8", QSerialPort::Data8},
};
constexpr std::array kStopBits{
    SettingRow{"1", QSerialPort::OneStop},
    SettingRow{"1.5", QSerialPort::OneAndHalfStop},
    SettingRow{"2", QSerialPort::TwoStop},
};

template <class Rows, class Value>
bool Look(const Rows& rows, std::string_view text, Value& value) {
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.text == text; });
  if (row == rows.end()) return false;
  value = row->value;
  return true;
}

/// "115200,N,8,1".
std::optional<LineSettings> ParseSettings(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::size_t comma = 0; comma != std::string_view::npos;) {
    comma = text.find(',');
    parts.push_back(text.substr(0, comma));
    if (comma != std::string_view::npos) text.remove_prefix(comma + 1);
  }
  LineSettings settings;
  if (parts.size() != 4) return std::nullopt;
  const auto [end, error] = std::from_chars(parts[0].data(), parts[0].data() + parts[0].size(), settings.baud);
  const bool sound = error == std::errc{} && end == parts[0].data() + parts[0].size() && settings.baud > 0 &&
                     Look(kParities, parts[1], settings.parity) && Look(kDataBits, parts[2], settings.dataBits) &&
                     Look(kStopBits, parts[3], settings.stopBits);
  return sound ? std::optional(settings) : std::nullopt;
}

/// False only for what certainly is none: nothing is known of a device that another program holds.
bool MayBeTerminal(const std::string& device) {
  const int descriptor = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return true;
  const bool terminal = ::isatty(descriptor) == 1;
  ::close(descriptor);
  return terminal;
}

/// What keeps the device from being opened. The system's own answer is asked for first, since the toolkit calls a
/// missing permission and a device in use the same.
std::string WhyNotOpened(const std::string& device, const QSerialPort& port) {
  if (::access(device.c_str(), F_OK) != 0) return "there is no such device.";
  if (::access(device.c_str(), R_OK | W_OK) != 0) {
    return errno == EACCES ? "permission denied. Is the user in the group \"dialout\"?"
                           : std::string(std::strerror(errno)) + ".";
  }
  if (!MayBeTerminal(device)) return "the device is no serial line.";
  if (port.error() == QSerialPort::PermissionError) return "the device is in use by another program.";
  return port.errorString().toStdString() + ".";
}

std::string WhyGone(const std::string& device, QSerialPort::SerialPortError error, const std::string& systemText) {
  if (::access(device.c_str(), F_OK) != 0) return "the device is gone. Is it unplugged?";
  if (error == QSerialPort::ResourceError) return "the device hung up.";
  return systemText + ".";
}

}  // namespace

std::string QtSerialControl::Device() const {
  const auto index = static_cast<std::size_t>(setup.commPort - 1);
  if (setup.commPort < 1 || index >= devices_.size()) {
    throw StationFailure("COM" + std::to_string(setup.commPort) + ": there is no such port.");
  }
  return devices_[index];
}

void QtSerialControl::Open() {
  const std::string device = Device();
  const std::string name = "COM" + std::to_string(setup.commPort) + " (" + device + "): ";
  const auto settings = ParseSettings(setup.settings);
  if (!settings) throw StationFailure(name + "invalid settings \"" + setup.settings + "\".");

  auto port = std::make_shared<QSerialPort>(QString::fromStdString(device));
  port->setBaudRate(settings->baud);
  port->setParity(settings->parity);
  port->setDataBits(settings->dataBits);
  port->setStopBits(settings->stopBits);
  port->setFlowControl(setup.handshaking == 0 ? QSerialPort::NoFlowControl : QSerialPort::HardwareControl);
  if (!port->open(QIODevice::ReadWrite)) throw StationFailure(name + WhyNotOpened(device, *port));
  port->clear();

  QObject::connect(port.get(), &QSerialPort::readyRead, port.get(), [this] { PostReceive(); });
  QObject::connect(port.get(), &QSerialPort::errorOccurred, port.get(),
                   [this](QSerialPort::SerialPortError error) { PostGone(error); });
  receivePosted_ = false;
  port_ = std::move(port);
}

void QtSerialControl::Close() {
  if (!port_) return;
  const auto port = std::move(port_);
  port->disconnect(port.get());
  port->close();
}

void QtSerialControl::PostReceive() {
  if (receivePosted_ || setup.rThreshold == 0) return;
  receivePosted_ = true;
  loop_.Post([this, open = std::weak_ptr(port_)] {
    if (open.expired()) return;
    receivePosted_ = false;
    if (onComm) onComm(kCommReceive);
  });
}

void QtSerialControl::PostGone(QSerialPort::SerialPortError error) {
  constexpr std::array kHarmless{QSerialPort::NoError, QSerialPort::TimeoutError, QSerialPort::NotOpenError,
                                 QSerialPort::UnsupportedOperationError};
  if (std::find(kHarmless.begin(), kHarmless.end(), error) != kHarmless.end()) return;
  // A line that hung up stays readable for ever: no more reads from here on.
  port_->disconnect(port_.get());
  const std::string device = Device();
  std::string text = "COM" + std::to_string(setup.commPort) + " (" + device +
                     "): " + WhyGone(device, error, port_->errorString().toStdString());
  loop_.Post([this, open = std::weak_ptr(port_), text = std::move(text)] {
    if (open.expired()) return;
    Close();
    if (!onGone) throw StationFailure(text);
    onGone(text);
  });
}

void QtSerialControl::Output(std::string_view bytes) {
  const auto port = port_;
  if (!port) throw StationFailure("The serial port is not open.");
  port->write(bytes.data(), static_cast<qint64>(bytes.size()));
  port->flush();
  while (port->bytesToWrite() > 0 && port->waitForBytesWritten(kWriteLimitMs)) {
  }
  if (port->bytesToWrite() == 0) return;
  const std::string device = Device();
  const std::string why = port->error() == QSerialPort::TimeoutError
                              ? "the device takes no bytes."
                              : WhyGone(device, port->error(), port->errorString().toStdString());
  Close();
  throw StationFailure("COM" + std::to_string(setup.commPort) + " (" + device + "): " + why);
}

std::string QtSerialControl::Input() { return port_ ? port_->readAll().toStdString() : std::string(); }

}  // namespace orvane
