#include <array>

#include "bench/test_set.h"

/// Every header that the test set knows, of both dialects.
namespace orvane::bench {

std::span<const TestSet::Row> TestSet::Rows() {
  using T = TestSet;
  static constexpr std::array kRows{
      Row{"*IDN?", false, &T::Identify},
      Row{"*RST", false, &T::Reset},
      Row{"*CLS", false, &T::ClearErrors},
      Row{"*OPC?", false, &T::OperationComplete},
      Row{"SYSTem:ERRor?", false, &T::NextError},
      Row{"SYSTem:PRESet3", false, &T::Reset},
      Row{"SYSTem:CORRection:SGAin", true, &T::SetCorrection},
      // The HP8960's cell, generator and analyser.
      Row{"CALL:CELL:BAND", true, &T::SetBand},
      Row{"CALL:OPERating:MODE", true, &T::Accept},
      Row{"CALL:FUNCtion:DOWNlink", true, &T::SetFunction},
      Row{"CALL:CELL:RFGenerator:POWer:AMPLitude", true, &T::SetAmplitude},
      Row{"CALL:CELL:POWer:AMPLitude", true, &T::SetAmplitude},
      Row{"CALL:CELL:RFGenerator:FREQuency", true, &T::SetFrequency},
      Row{"CALL:BCH:SEQ", true, &T::SetBroadcastChannel},
      Row{"CALL:TCH:SEQ", true, &T::SetTrafficChannel},
      Row{"CALL:MS:TXLevel:SEQ", true, &T::SetMobileLevel},
      Row{"RFANalyzer:CONTrol:AUTO", true, &T::SetAutoTune},
      Row{"RFANalyzer:MANual:CHANnel:SELected", true, &T::SetAnalyserChannel},
      Row{"RFANalyzer:EXPected:POWer:SELected", true, &T::SetExpectedPower},
      // The HP8960's measurements.
      Row{"SETup:TXPower:CONTinuous", true, &T::SetContinuous},
      Row{"SETup:TXPower:COUNt:SNUMber", true, &T::SetSamples},
      Row{"SETup:TXPower:TRIGger:SOURce", true, &T::Accept},
      Row{"SETup:TXPower:TIMeout:TIME", true, &T::Accept},
      Row{"SETup:TXPower:TIMeout:STATe", true, &T::Accept},
      Row{"SETup:PFERror:BSYNc", true, &T::Accept},
      Row{"INITiate:TXPower", false, &T::StartPower},
      Row{"INITiate:PVTime", false, &T::Accept},
      Row{"INITiate:PFERror", false, &T::StartPhase},
      Row{"INITiate:DONE?", false, &T::WhatIsDone},
      Row{"FETCh:TXPower:POWer?", false, &T::FetchPower, true},
      Row{"FETCh:PFERror:ALL?", false, &T::FetchPhase, true},
      // The HP8922M.
      Row{"CONFigure:RADio", true, &T::SetRadioType},
      Row{"CELL:MODE", true, &T::Accept},
      Row{"CELL:CALL:TCH:ARFCn", true, &T::SetTrafficChannel},
      Row{"CCON:SCEL1:ARFCn", true, &T::SetBroadcastChannel},
      Row{"CELL:MS:TLEVel", true, &T::SetMobileLevel},
      Row{"RFG:AMPLitude1", true, &T::SetAmplitude},
      Row{"RFANalyzer:ARFCn", true, &T::SetAnalyserAndCell},
      Row{"RFANalyzer:AMPLitude1", true, &T::SetExpectedPower},
      Row{"MEASure:FTCPower?", false, &T::MeasurePower, true},
  };
  return kRows;
}

}  // namespace orvane::bench
