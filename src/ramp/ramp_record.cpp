#include "ramp/ramp_record.h"

namespace orvane {

void CopyRampTableToRFParams(const RampState& state, int table, RFParameter& record) {
  const bool firstBand = table < kFirstBandRampTables;
  const auto& values = state.RampTable.at(static_cast<std::size_t>(table));
  RFParameter::Ramp& ramp = record.BAND[firstBand ? 0 : 1].ramp_tables.at(
      static_cast<std::size_t>(firstBand ? table : table - kFirstBandRampTables));
  for (std::size_t k = 0; k < kRampUpValues; ++k) {
    ramp.ramp_up[k] = ToInteger(values[k]);
    ramp.ramp_down[k] = ToInteger(values[k + kRampUpValues]);
  }
}

void CopyRampTablesToRFParams(const RampState& state, RFParameter& record) {
  for (int table = 0; table < kRampTables; ++table) CopyRampTableToRFParams(state, table, record);
}

}  // namespace orvane
