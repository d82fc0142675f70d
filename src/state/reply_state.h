#pragma once

#include <array>
#include <string>

#include "base/numbers.h"
#include "state/frame_data.h"

namespace orvane {

/// What is known of how one Target forms the checksums of its replies: nothing yet of one that is met anew.
struct ChecksumWatch {
  /// Replies in a row that bore theirs, up to those that prove it.
  int fitsInARow = 0;
  /// Replies without it, as long as nothing is proven.
  int unproven = 0;
};

/// Station-wide state of the Target link and what the replies left behind. Codes are texts "&HXX".
struct ReplyState {
  /// False while a reply is awaited.
  bool ReplyDone = true;
  /// Status of the last exchange; "&HFF" from the moment a frame is built until a reply overwrites it.
  std::string TMStatus;
  std::string ReplyOperation;
  std::string ReplyItem;
  /// The data of the last command's frame, escaped in place.
  ::orvane::FrameData FrameData{};
  /// Received bytes that are not yet decoded.
  std::string ReplyBuffer;
  /// One text a received byte; never cleared as a whole, so a missing reply leaves the one before.
  std::array<std::string, 201> ReplyBytes;
  /// Turns of the gathering spin; 10000 is its end.
  double ReplySpin = 0;
  bool ReplyHandled = false;
  bool PlainReplyMode = false;
  Long SyncDelay = 0;
  std::string TargetMode;
  std::string CommEventText;
  std::string CommErrorText;

  Long AdcEnableValue = 0;
  Long ConvertedAdcValue = 0;
  Long RawAdcValue = 0;
  Long CurrentTestModeValue = 0;
  std::string PowerMeasureTimes10;
  /// How many reports have set it: a reading that is older than its command can be told by this alone.
  long powerReports = 0;
  ChecksumWatch checksums;

  /// 1: the next raw ADC value serves the 4.2 V limit; otherwise the shut-down limit.
  Integer RawAdcStage = 0;
  Integer RawAdcSkip = 0;
  Integer RawAdcOutOfWindow = 0;
};

/// `ReplySpin` at the end of a gathering.
inline constexpr double kGatheredSpin = 10000;

/// Bytes of a reply are coming in.
[[nodiscard]] bool Gathering(const ReplyState& state);

/// Numeric status of an exchange to which nothing came.
inline constexpr int kNothingCame = 255;

/// Numeric value of `TMStatus`: 0 success, 255 nothing came (also for an empty text), others the Target's failure.
[[nodiscard]] int StatusOf(const ReplyState& state);

}  // namespace orvane
