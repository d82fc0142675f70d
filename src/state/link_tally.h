#pragma once

#include <string>

namespace orvane {

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
  /// Replies whose checksum does not fit, from a Target whose checksums are known to fit otherwise.
  long damagedReplies = 0;
  /// Errors that the line itself told: damaged bytes, breaks, bytes lost.
  long lineErrors = 0;
  /// Texts from the line while no reply was awaited, or left over when the next command went out.
  long unaskedTexts = 0;
};

/// Why the exchanges between two tallies cannot be taken for sound, in the operator's words; empty when they can.
/// A failure status needs no words here: it fails the unit by itself.
[[nodiscard]] std::string DoubtsBetween(const LinkTally& before, const LinkTally& after);

}  // namespace orvane
