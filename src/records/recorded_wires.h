#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/boxes.h"
#include "platform/file_dialogs.h"
#include "platform/gpib.h"
#include "platform/serial_control.h"
#include "records/wire_log.h"

namespace orvane {

/// Who hears what passes. It never fails and never waits.
class WireListener {
 public:
  WireListener() = default;
  WireListener(const WireListener&) = delete;
  WireListener& operator=(const WireListener&) = delete;
  virtual ~WireListener() = default;

  virtual void Note(std::string_view link, WireEvent event, std::string_view bytes) = 0;
  /// Around each message to or from an instrument.
  virtual void MessageBegins() = 0;
  virtual void MessageIsOver() = 0;
  /// A box is open. @return a mark of it, for its answer. One that is ended in another way has none.
  [[nodiscard]] virtual std::size_t BoxOpened(const Box& box) = 0;
  virtual void BoxAnswered(std::size_t mark, BoxButton answer) = 0;
};

/// The serial line itself, heard.
class RecordedSerial final : public SerialControl {
 public:
  RecordedSerial(SerialControl& line, WireListener& listener);
  ~RecordedSerial() override { line_.onComm = nullptr; }

  [[nodiscard]] bool PortOpen() const override { return line_.PortOpen(); }
  void Open() override;
  void Close() override;
  void Output(std::string_view bytes) override;
  void OutputWithNext(std::string_view bytes) override;
  [[nodiscard]] std::string Input() override;

  /// The device has vanished, whatever the station was doing: told as a Close with the reason.
  void TellGone(std::string_view why);

 private:
  template <class Act>
  void Heard(Act act);
  void Note(WireEvent event, std::string_view bytes) { listener_.Note(link_, event, bytes); }

  SerialControl& line_;
  WireListener& listener_;
  std::string link_ = "COM1";
};

/// The bus itself, heard.
class RecordedBus final : public GpibBus {
 public:
  RecordedBus(GpibBus& bus, WireListener& listener) : bus_(bus), listener_(listener) {}
  [[nodiscard]] std::unique_ptr<GpibSession> Open(const GpibAddress& address) override;
  [[nodiscard]] std::string RouteOf(const GpibAddress& address) const override { return bus_.RouteOf(address); }

 private:
  GpibBus& bus_;
  WireListener& listener_;
};

/// "GPIB 5"; a board or a secondary address of its own is told: "GPIB 1:5,96".
[[nodiscard]] std::string GpibLinkName(const GpibAddress& address);

/// The desk itself, heard.
class RecordedDesk final : public Boxes, public FileDialogs {
 public:
  RecordedDesk(Boxes& boxes, FileDialogs& dialogs, WireListener& listener)
      : boxes_(boxes), dialogs_(dialogs), listener_(listener) {}

  BoxButton Show(const Box& box) override;
  std::optional<std::string> ShowOpen(FileDialog& dialog) override;
  std::optional<std::string> ShowSave(FileDialog& dialog) override;

 private:
  std::optional<std::string> Ask(FileDialog& dialog, const std::function<std::optional<std::string>()>& ask);

  Boxes& boxes_;
  FileDialogs& dialogs_;
  WireListener& listener_;
};

}  // namespace orvane
