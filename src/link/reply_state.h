#pragma once

#include <array>
#include <string>

#include "base/numbers.h"

namespace orvane {

/// Station-wide state of the Target link and what the replies left behind. Codes are texts "&HXX".
struct ReplyState {
  /// False while a reply is awaited.
  bool ReplyDone = true;
  /// Status of the last exchange; "&HFF" from the moment a frame is built until a reply overwrites it.
  std::string TMStatus;
  std::string ReplyOperation;
  std::string ReplyItem;
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

  /// 1: the next raw ADC value serves the 4.2 V limit; otherwise the shut-down limit.
  Integer RawAdcStage = 0;
  Integer RawAdcSkip = 0;
  Integer RawAdcOutOfWindow = 0;
};

/// What the exchanges were like, beside what they said: for the run's report and for whoever wants to show it.
struct LinkTally {
  long commands = 0;
  long bytesOut = 0;
  long bytesIn = 0;
  /// Waits to whose end nothing had come, and replies that bore a failure status.
  long silentWaits = 0;
  long failureStatuses = 0;
  /// Command lines that were refused: nothing went out, and the status of the exchange before stands.
  long refusedLines = 0;
  /// Replies with stray bytes ahead of or behind their frame.
  long strayReplies = 0;
  /// Replies to another operation than the one last sent: perhaps late ones to an earlier command.
  long foreignReplies = 0;
  /// Texts from the line while no reply was awaited, or left over when the next command went out.
  long unaskedTexts = 0;
};

/// Why the exchanges between two tallies cannot be taken for sound, in the operator's words; empty when they can.
/// A failure status needs no words here: it fails the unit by itself.
[[nodiscard]] std::string DoubtsBetween(const LinkTally& before, const LinkTally& after);

/// Numeric value of `TMStatus`: 0 success, 255 nothing came (also for an empty text), others the Target's failure.
[[nodiscard]] int StatusOf(const ReplyState& state);

}  // namespace orvane
