#include "charger/bench_instruments.h"

#include "platform/input_filter.h"

namespace orvane {
namespace {

constexpr InputRule kDigitsAndPoint{"."};

}  // namespace

void BenchSupply::Connect() {
  FrmBaseBand& panel = panel_.Untouched();
  session_.Connect();
  // A supply that was just initialized has its output on, whatever the next click would have been.
  session_.onReady = [this] {
    panel_->cmdPSVoltageSet.Click();
    panel_->cmdPSVoltageEnable.SetCaption("Enable");
    panel_->cmdPSVoltageEnable.Click();
  };
  session_.onReset = [this] {
    state_.PSVoltageSet = false;
    panel_->cmdPSVoltageEnable.SetCaption("Enable");
  };
  panel.txtPSVoltage.onChange = [this] { FilterInput(panel_->txtPSVoltage, kDigitsAndPoint, "4.21", boxes_); };
  panel.cmdPSVoltageSet.onClick = [this] { SetVoltage(); };
  panel.cmdPSVoltageEnable.onClick = [this] { ToggleOutput(); };
}

void BenchSupply::SetVoltage() {
  if (!session_.Ready()) {
    boxes_.Warning("Initialize Power Supply at first.");
    return;
  }
  session_.Write("VOLT " + panel_->txtPSVoltage.Text());
  state_.PSVoltageSet = true;
}

void BenchSupply::ToggleOutput() {
  constexpr InputRule kVoltage{".", false};
  Button& enable = panel_->cmdPSVoltageEnable;
  if (HoldsRefused(panel_->txtPSVoltage.Text(), kVoltage)) {
    boxes_.Warning("Input Integer which is higher then 0 and has not any blank.");
  } else if (!session_.Ready()) {
    boxes_.Warning("Initialize Power Supply at first.");
  } else if (!state_.PSVoltageSet) {
    boxes_.Warning("Set Voltage at first.");
  } else if (enable.Caption() == "Enable") {
    session_.Write("OUTPUT ON");
    enable.SetCaption("Disable");
  } else {
    session_.Write("OUTPUT OFF");
    enable.SetCaption("Enable");
  }
}

void BenchLoad::Connect(bool switchesOn) {
  FrmBaseBand& panel = panel_.Untouched();
  session_.Connect();
  session_.onReady = [this, switchesOn] {
    panel_->cmdLoaderResisterSet.Click();
    panel_->cmdLoaderCurrentSet.Click();
    if (switchesOn) session_.Write("INPUT ON");
  };
  panel.TxtLoaderCurrent.onChange = [this] { FilterInput(panel_->TxtLoaderCurrent, kDigitsAndPoint, "0.1", boxes_); };
  panel.txtLoaderResister.onChange = [this] {
    FilterInput(panel_->txtLoaderResister, kDigitsAndPoint, "2000", boxes_);
  };
  panel.cmdLoaderCurrentSet.onClick = [this] { SetCurrent(); };
  panel.cmdLoaderResisterSet.onClick = [this] { SetResister(); };
}

void BenchLoad::SetCurrent() {
  if (!session_.Ready()) {
    boxes_.Warning("Loader를 먼저 초기화 해야 합니다.");
    return;
  }
  session_.Write("CURR " + panel_->TxtLoaderCurrent.Text());
}

void BenchLoad::SetResister() {
  if (!session_.Ready()) {
    boxes_.Warning("Initialize Loader.");
    return;
  }
  session_.Write("RES " + panel_->txtLoaderResister.Text());
}

}  // namespace orvane
