#include "app/station.h"

#include "charger/base_band_panel.h"
#include "charger/bench_instruments.h"
#include "charger/charger_manual.h"
#include "charger/charger_parameters.h"
#include "charger/charger_run.h"
#include "console/by_hand/receiver_by_hand.h"
#include "console/by_hand/transmitter_by_hand.h"
#include "console/installed_data.h"
#include "console/main_panel.h"
#include "console/start_up.h"
#include "console/target_connection.h"
#include "instruments/test_set.h"
#include "instruments/test_set_by_hand.h"
#include "instruments/test_set_session.h"
#include "link/reply_decoder.h"
#include "link/target_link.h"
#include "panels/run_guard.h"
#include "ramp/ramp_editor.h"
#include "ramp/ramp_panels.h"
#include "results/results_console.h"
#include "results/results_controls.h"
#include "rfparams/eeprom_test_panel.h"
#include "rfparams/transfer.h"
#include "rxcal/mp_panel.h"
#include "rxcal/pattern_editor.h"
#include "rxcal/result_views.h"
#include "rxcal/rx_run.h"
#include "txcal/cal_panel.h"
#include "txcal/cal_panel_inputs.h"
#include "txcal/result_save.h"
#include "txcal/run_hands.h"
#include "txcal/sequencer.h"
#include "txcal/side_table_groups.h"
#include "txcal/tx_calibration.h"

namespace orvane {

/// The operations of all eight subsystems, each with just what it may touch. Members stand in the order of the
/// arrows: what is below comes first.
struct Station::Operations {
  Operations(const StationPorts& world, const StationWishes& asked, StationState& state, StationPanels& panels)
      : ports(world), wishes(asked), s(state), p(panels) {}

  const StationPorts ports;
  const StationWishes wishes;
  StationState& s;
  StationPanels& p;

  CWGPIB CWGPIB1{"Test set", ports.bus, s.niGlobal, CWGPIB::OnError::Fails};
  CWGPIB CWGPIBPower{"Power supply", ports.bus, s.niGlobal, CWGPIB::OnError::RaisesEvent};
  CWGPIB CWGPIBLoader{"Loader", ports.bus, s.niGlobal, CWGPIB::OnError::RaisesEvent};

  ResultsConsole console{p.main, s.console, ports.files, ports.boxes};
  ResultsControls resultsControls{p.main, console, s.console, s.reply, ports.files, ports.dialogs, ports.boxes};

  ReplyDecoder decoder{ports.loop, s.reply, s.tally, s.cal, s.ramp, p.main, p.baseBand, console};
  TargetLink link{ports.loop, ports.mscomTarget, p.main, console, decoder, s.reply, s.tally, ports.boxes};

  TestSet testSet{CWGPIB1, s.testSet, console};
  TestSetSession testSetSession{p.main, CWGPIB1, s.testSet, s.reply, console, ports.boxes};
  TestSetByHand testSetByHand{p.main, testSet, console, ports.boxes};

  ParameterTransfer transfer{p.downLoad, p.autoCal, s.rf,        s.cal,         s.reply,
                             link,       s.report,  ports.boxes, ports.dialogs, ports.files};

  EepromTestPanel eepromTestPanel{p.downLoad, ports.mscomTarget};

  RampEditorPorts rampPorts{s.ramp, s.rf, s.reply, link, console, ports.files, ports.boxes, ports.dialogs};
  RampEditor mainRampEditor{p.main.ramp, kRampEditorOfMain, rampPorts};
  RampEditor dialogRampEditor{p.rampTable.editor, kRampEditorOfDialog, rampPorts};
  RampTableDialog rampTableDialog{p.rampTable, dialogRampEditor, s.ramp};
  RampDelayBoxes rampDelayBoxes{p.main, ports.boxes};

  RunButtons runButtons{p.autoCal, p.mpAutoCal, p.baseBand};
  CalPanel calPanel{{p.autoCal, p.main, p.downLoad, p.txResult, p.rxResult, p.mpAutoCal, p.rampTable},
                    s.cal,
                    s.rf,
                    link,
                    testSet,
                    ports.files,
                    ports.boxes,
                    ports.dialogs};
  CalPanelInputs calPanelInputs{p.autoCal, ports.boxes};
  SideTableGroups sideTableGroups{p.autoCal, p.main, s.cal, ports.files, ports.boxes, ports.dialogs};
  TxCalibration txCalibration{
      {link, testSet, console, ports.boxes, p.autoCal, p.txResult, s.cal, s.rf, s.ramp, s.report, s.searchTrail},
      runButtons};
  ResultSave resultSave{p.autoCal,          p.downLoad, s.cal,       s.rf,          link,
                        transfer,           s.report,   ports.boxes, ports.dialogs, ports.files,
                        wishes.verifyEeprom};
  RunHands runHands{{p.main, p.autoCal, p.mpAutoCal, p.baseBand, s.cal, s.rf, s.ramp, s.testSet}, s.report, [this] {
                      return s.tally.commands + CWGPIB1.LinesWritten() + CWGPIBPower.LinesWritten() +
                             CWGPIBLoader.LinesWritten();
                    }};
  Sequencer sequencer{{p.autoCal, p.main, p.mpAutoCal, p.txResult, p.baseBand, p.fail, p.pass},
                      link,
                      calPanel,
                      s.cal,
                      s.charger,
                      s.tally,
                      s.report,
                      runHands,
                      runButtons,
                      ports.boxes};

  RxRun rxRun{link, s.reply,     testSet,  p.autoCal, p.mpAutoCal, s.cal,
              s.rf, ports.boxes, s.report, s.rxTrail, runButtons,  [this] {
                return calPanel.DownlinkParamSet(); }};
  MpPanel mpPanel{p.mpAutoCal, p.autoCal, s.cal, link, ports.boxes, [this] { calPanel.DownloadSaveFileName(); }};
  PatternEditor patternEditor{p.mpAutoCal, s.pattern, ports.files, ports.boxes, ports.dialogs};
  ResultViews resultViews{p.txResult, p.rxResult, p.fail, p.pass, p.main};

  BaseBandPanel baseBandPanel{p.baseBand, s.charger, ports.boxes};
  BenchSupply benchSupply{CWGPIBPower, p.baseBand, p.main, s.charger, console, ports.boxes};
  BenchLoad benchLoad{CWGPIBLoader, p.baseBand, p.main, s.charger, console, ports.boxes};
  ChargerManual chargerManual{link, s.reply, p.baseBand, p.main, console, ports.boxes};
  ChargerParameterPanel chargerParameters{link, p.baseBand, s.cal, console, ports.boxes, s.report};
  ChargerRun chargerRun{link, s.reply, CWGPIBPower, p.baseBand, s.charger, s.cal, ports.boxes, s.report, runButtons};

  InstalledData installedData{p.main, p.autoCal,   p.downLoad,  s.rf,          s.ramp,
                              s.cal,  ports.files, ports.boxes, wishes.tables, wishes.digestOf};
  StartUp startUp{p.main, s.console, s.reply, s.testSet, installedData, testSetSession, testSet, link};
  TargetConnection targetConnection{p.main, p.baseBand, p.autoCal, s.console,  ports.mscomTarget,
                                    link,   testSet,    console,   ports.boxes};
  ReceiverByHand receiverByHand{p.main, link, ports.boxes};
  TransmitterByHand transmitterByHand{p.main, link, s.reply, ports.boxes};
  MainPanel mainPanel{p.main, p.autoCal, p.baseBand, p.downLoad, ports.boxes};

  /// Who answers which control stands in each class's Connect.
  void Connect() {
    resultsControls.Connect();
    link.Connect();
    testSetSession.Connect();
    testSetByHand.Connect();
    transfer.Connect();
    eepromTestPanel.Connect();
    mainRampEditor.Connect();
    dialogRampEditor.Connect();
    rampTableDialog.Connect();
    rampDelayBoxes.Connect();
    calPanel.Connect();
    calPanelInputs.Connect();
    sideTableGroups.Connect();
    txCalibration.Connect();
    resultSave.Connect();
    sequencer.Connect();
    rxRun.Connect();
    mpPanel.Connect();
    patternEditor.Connect();
    resultViews.Connect();
    baseBandPanel.Connect();
    benchSupply.Connect();
    benchLoad.Connect(wishes.safeOff);
    chargerManual.Connect();
    chargerParameters.Connect();
    chargerRun.Connect();
    startUp.Connect();
    targetConnection.Connect();
    receiverByHand.Connect();
    transmitterByHand.Connect();
    mainPanel.Connect();
  }
};

Station::Station(const StationPorts& ports, const StationWishes& wishes)
    : nest_(ports.boxes), operations_(std::make_unique<Operations>(ports, wishes, state_, panels_)) {
  operations_->Connect();
  ports.mscomTarget.onComm = [this](int commEvent) {
    nest_.Run([this, commEvent] { operations_->link.OnComm(commEvent); });
  };
  nest_.beforeHand = [this] { operations_->runHands.ActBegins(); };
  nest_.behindHand = [this] { operations_->runHands.ActEnds(); };
  nest_.onStopped.emplace_back([this] { operations_->link.Rest(); });
}

Station::~Station() { operations_->ports.mscomTarget.onComm = nullptr; }

void Station::LetBenchGo() {
  operations_->benchSupply.LetGo();
  operations_->benchLoad.LetGo();
}

void Station::Start() {
  nest_.Run([this] { panels_.main.Show(); });
}

}  // namespace orvane
