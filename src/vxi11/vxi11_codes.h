#pragma once

#include <vxi11.h>

/// The numbers of the protocol that its definition language leaves to the text.
/// Source: VXI-11 TCP/IP Instrument Protocol, revision 1.0, section B.5.
namespace orvane::vxi11 {

enum Error : Device_ErrorCode {
  kNoError = 0,
  kSyntaxError = 1,
  kNotAccessible = 3,
  kInvalidLink = 4,
  kParameterError = 5,
  kNoChannel = 6,
  kNotSupported = 8,
  kOutOfResources = 9,
  kLockedByAnother = 11,
  kNoLockHeld = 12,
  kIoTimeOut = 15,
  kIoError = 17,
  kInvalidAddress = 21,
  kAborted = 23,
  kChannelExists = 29,
};

// Flags of an operation.
inline constexpr Device_Flags kWaitForLock = 0x01;
inline constexpr Device_Flags kEnd = 0x08;
inline constexpr Device_Flags kTermCharSet = 0x80;

// Why a read has ended: any of them together.
inline constexpr int kReasonCount = 1;
inline constexpr int kReasonTermChar = 2;
inline constexpr int kReasonEnd = 4;

}  // namespace orvane::vxi11
