#pragma once

#include "audit/auditor.h"
#include "audit/parameter_layout.h"

namespace orvane::proofs {

/// What the unit radiates level by level with what it keeps, its channel codes, and the quality of its modulation.
void AuditTransmitter(const Subject& subject, const Image& image, std::vector<std::string>& objections);

}  // namespace orvane::proofs
