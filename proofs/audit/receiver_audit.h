#pragma once

#include "audit/auditor.h"
#include "audit/parameter_layout.h"

namespace orvane::proofs {

/// Gain constants, channels and compensations of both bands against what the receiver can have reported.
void AuditReceiver(const Subject& subject, const Image& image, std::vector<std::string>& objections);

/// Whether some reading of this receiver gives a compensation that no good unit has. Nothing else is wrong with it
/// then.
[[nodiscard]] bool CompensationMayBeOutOfRange(const Subject& subject);

/// How a power report in its register, with six fraction bits, reads in tenths of a dB. The hundredths stand behind
/// the point without leading zeros: 50 and 3/100 reads as 50.3.
[[nodiscard]] double TenthsRead(int report);

}  // namespace orvane::proofs
