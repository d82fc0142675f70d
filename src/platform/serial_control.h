#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/numbers.h"

namespace orvane {

/// What the station sets up on the control of the Target's serial line before it opens it.
struct SerialSetup {
  Integer commPort = 1;  ///< "COM1" is 1.
  std::string settings = "9600,N,8,1";
  Integer inBufferSize = 1024;
  Integer outBufferSize = 512;
  Long inputLen = 0;  ///< 0: a read takes all that is there.
  Integer handshaking = 0;
  Integer rThreshold = 0;  ///< 1: every received byte raises a receive event.
};

/// Event codes of the serial control, those that a line of this station can raise.
enum CommEvent : int {
  kCommSend = 1,
  kCommReceive = 2,
  kCommCtsChange = 3,
  kCommDsrChange = 4,
  kCommCdChange = 5,
  kCommRing = 6,
  kCommBreak = 1001,
  kCommFrameError = 1004,
  kCommOverrun = 1006,
  kCommReceiveOverflow = 1008,
  kCommParityError = 1009,
};

/// The control of one serial line.
class SerialControl {
 public:
  SerialControl() = default;
  SerialControl(const SerialControl&) = delete;
  SerialControl& operator=(const SerialControl&) = delete;
  virtual ~SerialControl() = default;

  SerialSetup setup;

  /// Raised by the event loop with the control's event code.
  std::function<void(int commEvent)> onComm;

  [[nodiscard]] virtual bool PortOpen() const = 0;
  /// @throws StationFailure naming the device and the cause: missing, busy, forbidden, gone.
  virtual void Open() = 0;
  virtual void Close() = 0;
  /// Hands all bytes to the line. @throws StationFailure naming the device when it is gone.
  virtual void Output(std::string_view bytes) = 0;
  /// The same for bytes that another Output follows before anything else happens. A line may keep them for it, to
  /// hand both over at once; that Output then tells what fails.
  virtual void OutputWithNext(std::string_view bytes) { Output(bytes); }
  /// All bytes received and not yet taken.
  [[nodiscard]] virtual std::string Input() = 0;
};

}  // namespace orvane
