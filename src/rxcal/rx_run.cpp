#include "rxcal/rx_run.h"

#include <cstdlib>

#include "instruments/dialect.h"
#include "rxcal/missing_stop_button.h"

namespace orvane {

/// What a band with a reference channel has of its own.
struct RxRun::Band {
  std::size_t index;
  const char* name;
  const RxGrid& grid;
  std::size_t first;
  std::size_t last;
  TextBox FrmMPAutoCal::*reference;
  TextBox FrmMPAutoCal::*gMagicDb;
  TextBox FrmMPAutoCal::*gMagicHalfDb;
};

constexpr RxRun::Band RxRun::kGsm{0,
                                  "GSM",
                                  kGsmGrid,
                                  kFirstGsm,
                                  kFirstDcs - 1,
                                  &FrmMPAutoCal::txtGSMArfcn2,
                                  &FrmMPAutoCal::txtMPGMAGICGSM900F80,
                                  &FrmMPAutoCal::txtMPGMAGICGSM900F71};
constexpr RxRun::Band RxRun::kDcs{1,
                                  "DCS",
                                  kDcsGrid,
                                  kFirstDcs,
                                  kFirstEgsm - 1,
                                  &FrmMPAutoCal::txtDCSArfcn4,
                                  &FrmMPAutoCal::txtMPGMAGICDCS1800F80,
                                  &FrmMPAutoCal::txtMPGMAGICDCS1800F71};

struct RxRun::Tables {
  RxBandTable gsm;
  RxBandTable dcs;
  std::array<RxPoint, 3> egsm;
};

RxRun::RxRun(TargetLink& link, ReplyState& reply, TestSet& testSet, PanelRef<FrmAutoCal> autoCal,
             PanelRef<FrmMPAutoCal> panel, CalState& cal, RFState& rf, Boxes& boxes, RunReport& report,
             RxTrail& trail, RunButtons& runButtons, std::function<bool()> downlinkParamSet)
    : link_(link),
      reply_(reply),
      testSet_(testSet),
      autoCal_(autoCal),
      panel_(panel),
      cal_(cal),
      rf_(rf),
      boxes_(boxes),
      report_(report),
      runButtons_(runButtons),
      downlinkParamSet_(std::move(downlinkParamSet)),
      measurement_(link, reply, testSet, autoCal, cal, boxes, report, trail) {}

void RxRun::Connect() {
  panel_.Untouched().cmdMPRxAllAutoCal.onClick = [this] { Run(); };
}

void RxRun::Run() {
  const RunGuard guard(runButtons_, report_, RunKind::Receive);
  if (!link_.InTestMode()) {
    report_.Flaw("The station is not in test mode: nothing was measured.");
  } else if (!Calibrate()) {
    return;
  }
  // Compensations of any size pass: the limit asks for one that is below -5 and above 5 at once.
  link_.RunTargetCommand("rfpw 8 1");
}

bool RxRun::Calibrate() {
  ForgetStop();
  if (!cal_.lossDamage.empty()) report_.Flaw(cal_.lossDamage);
  if (!SetUpTarget() || !SetUpTestSet()) return false;
  panel_->lstMPRxChannelCalResult.Clear();
  panel_->lstMPRxChannelCalResult.AddItem("Band\tCal");
  const RxChannels channels = ReadChannels();
  const auto levels = measurement_.Measure(channels);
  if (!levels) return false;
  Points points;
  for (std::size_t i = 0; i < points.size(); ++i) points[i] = {channels[i], (*levels)[i]};
  const auto tables = BuildTables(points);
  if (!tables) return false;
  StoreCompensations(*tables, points[1].level);
  return true;
}

/// A stop that is left from before is forgotten, but the run does not outlive it.
void RxRun::ForgetStop() {
  if (!cal_.CalStopRequested) return;
  if (cal_.CalMode != "RxALL") cal_.CalStopRequested = false;
  ColourMissingStopButton();
}

bool RxRun::SetUpTarget() {
  link_.RunTargetCommand("rfpw 8 0");
  rxSetValue_ = CheckedInteger(ToInteger(autoCal_->txtAutocalSetPointIL.Text()) - kGeneratorLevelDbm);
  if (!link_.PortOpen()) {
    report_.Flaw("The serial port was closed.");
    boxes_.Warning("Target should be Initialized.");
    return false;
  }
  const std::string setLevel = "rxpw 1 " + std::to_string(rxSetValue_);
  link_.RunTargetCommand(setLevel);
  if (!link_.Succeeded()) {
    report_.Flaw("\"" + setLevel + "\" did not succeed: status " + reply_.TMStatus + ".");
    return false;
  }
  if (!downlinkParamSet_()) report_.Flaw("The Target's measurement reports were not set up.");
  return true;
}

bool RxRun::SetUpTestSet() {
  if (!testSet_.Ready()) {
    report_.Flaw("The test set was not initialized.");
    boxes_.Warning("Initialize Test Set at first.");
    return false;
  }
  if (testSet_.Kind() == Dialect::None) report_.Flaw("The selected test set has no commands: nothing was set there.");
  link_.PaceDelay(3);
  testSet_.WriteShown(LineFor(testSet_.Kind(), Purpose::TestMode));
  testSet_.WriteShown(LineFor(testSet_.Kind(), Purpose::DownlinkFunction, autoCal_->ComboFunction.Text()));
  testSet_.WriteShown(LineFor(testSet_.Kind(), Purpose::BandGsm));
  link_.PaceDelay(21);
  return true;
}

RxChannels RxRun::ReadChannels() {
  RxChannels channels{};
  const auto boxes = panel_->ArfcnBoxes();
  for (std::size_t i = 0; i < channels.size(); ++i) channels[i] = ToInteger(boxes[i]->Text());
  return channels;
}

/// While a table is built the link counts as awaiting a reply: whatever the Target sends is decoded. A gain out of
/// its limits leaves it so.
std::optional<RxRun::Tables> RxRun::BuildTables(const Points& points) {
  dcsReference_ = 0;
  reply_.ReplyDone = false;
  const auto gsm = BuildBand(kGsm, points);
  if (!gsm) return std::nullopt;
  const auto dcs = BuildBand(kDcs, points);
  if (!dcs) return std::nullopt;
  reply_.ReplyDone = true;
  return Tables{*gsm, *dcs, EgsmRows(points[kFirstEgsm], points[kFirstEgsm + 1])};
}

std::optional<RxBandTable> RxRun::BuildBand(const Band& band, const Points& points) {
  RxBandTable table(band.grid, points[band.first]);
  bool hasGMagic = false;
  for (std::size_t i = band.first + 1; i < band.last; ++i) {
    if (!table.PlaceInner(points[i - 1], points[i])) continue;
    if (points[i].channel != ToInteger(((*panel_).*band.reference).Text())) continue;
    if (!StoreGMagic(band, points[i].level)) return std::nullopt;
    hasGMagic = true;
  }
  table.PlaceLast(points[band.last - 1], points[band.last]);
  if (!hasGMagic) report_.Flaw(std::string(band.name) + ": no G-MAGIC, its reference channel was not placed.");
  return table;
}

bool RxRun::StoreGMagic(const Band& band, Integer level) {
  const Integer gain = GMagicOf(level, rxSetValue_);
  const Integer halfDb = CheckedInteger(2L * gain);
  ((*panel_).*band.gMagicDb).SetText(std::to_string(gain));
  ((*panel_).*band.gMagicHalfDb).SetText(std::to_string(halfDb));
  if (band.index == kDcs.index) dcsReference_ = level;
  report_.Read({"rx." + std::string(BandWord(band.index)) + ".gmagic", static_cast<double>(halfDb), "half dB",
                kLowestGMagic, kHighestGMagic});
  if (IsGoodGMagic(halfDb)) {
    rf_.RFParams.BAND[band.index].g_magic = halfDb;
    return true;
  }
  report_.Flaw(std::string(band.name) + ": G-MAGIC of " + std::to_string(halfDb) + " half dB is out of range.");
  boxes_.Warning(" GMagic is out of range. Re-try.");
  cal_.CalStopRequested = true;
  cal_.CalFailed = true;
  autoCal_->cmdAutoCalStop.SetBackColor(kRed);
  return false;
}

/// Rows 0..6 of `agc_bands` belong to each BAND alone, rows 7..9 are the EGSM band in both.
void RxRun::StoreCompensations(const Tables& tables, Integer gsmReference) {
  ListBox& list = panel_->lstMPRxChannelCalResult;
  const auto store = [&](const auto& points, Integer reference, std::size_t firstRow,
                         std::initializer_list<std::size_t> bands) {
    for (std::size_t k = 0; k < points.size(); ++k) {
      const Integer compensation = CompensationOf(reference, points[k].level);
      for (const std::size_t band : bands) {
        rf_.RFParams.BAND[band].agc_bands.at(firstRow + k) = {points[k].channel, compensation};
      }
      list.AddItem(std::to_string(points[k].channel) + "\t" + std::to_string(compensation));
      report_.Read({"rx." + std::to_string(points[k].channel) + ".compensation", static_cast<double>(compensation),
                    "half dB", -kSoundCompensation, kSoundCompensation});
      if (std::abs(compensation) > kSoundCompensation) {
        report_.Flaw("The compensation of channel " + std::to_string(points[k].channel) + " is " +
                         std::to_string(compensation) + " half dB.",
                     FlawKind::OutOfTolerance);
      }
    }
  };
  list.AddItem("GSM Band");
  store(tables.gsm.Rows(), gsmReference, 0, {kGsm.index});
  list.AddItem("DCS Band");
  store(tables.dcs.Rows(), dcsReference_, 0, {kDcs.index});
  list.AddItem("EGSM Band");
  store(tables.egsm, gsmReference, 7, {kGsm.index, kDcs.index});
}

}  // namespace orvane
