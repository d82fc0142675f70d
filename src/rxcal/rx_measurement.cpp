#include "rxcal/rx_measurement.h"

#include "instruments/dialect.h"
#include "rxcal/missing_stop_button.h"
#include "rxcal/rx_table.h"

namespace orvane {
namespace {

bool BeginsBand(std::size_t i) { return i == kFirstGsm || i == kFirstDcs || i == kFirstEgsm; }

}  // namespace

std::optional<RxLevels> RxMeasurement::Measure(const RxChannels& channels) {
  RxLevels levels{};
  frequency_ = 0;
  trail_.Begin();
  for (std::size_t i = 0; i < channels.size(); ++i) {
    const Integer channel = channels[i];
    trail_.Tune(channel);
    if (BeginsBand(i)) SetUpBand(i, channel);
    SetUpChannel(channel);
    const Carrier carrier = CarrierOf(channel);
    if (IsCw()) WriteFrequency(autoCal_->comboOffset.Text() == "-Offset" ? carrier.low : carrier.high);
    link_.PaceDelay(5 + 11);
    if (!TuneTarget(channel)) return std::nullopt;
    if (BeginsBand(i) && !Settle()) return std::nullopt;
    const auto level = ReadLevel(channel, carrier.low);
    if (!level) return std::nullopt;
    levels[i] = *level;
    report_.Read({"rx." + std::to_string(channel) + ".level", static_cast<double>(*level), "0.1 dB"});
    trail_.Read();
  }
  return levels;
}

void RxMeasurement::SetUpBand(std::size_t i, Integer channel) {
  if (i != kFirstGsm) {
    testSet_.WriteShown(LineFor(testSet_.Kind(), i == kFirstDcs ? Purpose::BandDcs : Purpose::BandGsm));
    link_.PaceDelay(7 + 101);
  }
  // An empty loss goes out as it is: behind the command's head it is never missed.
  const TextBox& loss = IsDcsChannel(channel) ? autoCal_->txtRxCableLossDCS : autoCal_->txtRxCableLossGSM;
  testSet_.WriteShown(LineForEveryKind(Purpose::LossCorrection, loss.Text()));
  if (i == kFirstGsm) {
    testSet_.WriteShown(LineFor(testSet_.Kind(), Purpose::BaseStationLevel, std::to_string(kGeneratorLevelDbm)));
    link_.PaceDelay(7 + 51);
  }
}

void RxMeasurement::SetUpChannel(Integer channel) {
  const std::string number = std::to_string(channel);
  testSet_.WriteShown(LineFor(testSet_.Kind(), Purpose::TrafficChannel, number));
  testSet_.WriteShown(LineFor(testSet_.Kind(), Purpose::BroadcastChannel, number));
  link_.PaceDelay(6);
}

RxMeasurement::Carrier RxMeasurement::CarrierOf(Integer channel) {
  const auto frequency = DownlinkFrequencyMHz(channel);
  if (frequency) {
    frequency_ = *frequency;
  } else if (IsCw()) {
    report_.Flaw("Channel " + std::to_string(channel) + " has no downlink carrier: the one before stayed in force.");
  }
  const Decimal4 offset = Decimal4(ToInteger(autoCal_->txtfreqOffset.Text())) * "0.001"_d4;
  return {frequency_ - offset, frequency_ + offset};
}

void RxMeasurement::WriteFrequency(Decimal4 megahertz) {
  testSet_.WriteShown(LineForEveryKind(Purpose::GeneratorFrequency, megahertz.Text()));
}

bool RxMeasurement::TuneTarget(Integer channel) {
  const std::string number = std::to_string(channel);
  if (!Command("rfpw 2 " + number)) return false;
  link_.PaceDelay(3);
  if (!Command("rfpw 1 " + number)) return false;
  link_.PaceDelay(3);
  return Command("rxpw 8 0");
}

bool RxMeasurement::Settle() {
  for (int round = 0; round < 2; ++round) {
    if (!Command("rfe 1")) return false;
    link_.PaceDelay(11);
    if (!Command("sr 1 2")) return false;
  }
  return true;
}

std::optional<Integer> RxMeasurement::ReadLevel(Integer channel, Decimal4 low) {
  // The run goes on whatever the Target says here, with the reading before if it says nothing.
  Command("rfe 1");
  Report(channel);
  if (!HasReading(" 1> Auto Cal is not Completed. Re-try.")) {
    report_.Flaw("Channel " + std::to_string(channel) + ": the Target gave no reading.");
    autoCal_->cmdAutoCalStop.SetBackColor(kRed);
    return std::nullopt;
  }
  if (IsCw() && autoCal_->comboOffset.Text() == "Average" && !Average(channel, low)) return std::nullopt;
  return ToInteger(reply_.PowerMeasureTimes10);
}

bool RxMeasurement::Average(Integer channel, Decimal4 low) {
  const Integer first = ToInteger(reply_.PowerMeasureTimes10);
  WriteFrequency(low);
  link_.PaceDelay(3);
  if (!Command("rfe 1")) return false;
  Report(channel);
  if (!HasReading(" Auto Cal is not Completed. Re-try.")) ColourMissingStopButton();
  reply_.PowerMeasureTimes10 = NumberText((first + ToDouble(reply_.PowerMeasureTimes10)) / 2.0);
  return true;
}

void RxMeasurement::Report(Integer channel) {
  const long before = reply_.powerReports;
  if (Command("sr 1 2") && reply_.powerReports == before) {
    report_.Flaw("Channel " + std::to_string(channel) + ": the Target's report held no power.");
  }
}

bool RxMeasurement::HasReading(std::string_view words) {
  if (!reply_.PowerMeasureTimes10.empty()) return true;
  boxes_.Warning(std::string(words));
  cal_.CalStopRequested = true;
  cal_.CalFailed = true;
  return false;
}

bool RxMeasurement::Command(const std::string& line) {
  link_.RunTargetCommand(line);
  if (link_.Succeeded()) return true;
  report_.Flaw("\"" + line + "\" did not succeed: status " + reply_.TMStatus + ".");
  return false;
}

}  // namespace orvane
