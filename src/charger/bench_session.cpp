#include "charger/bench_session.h"

#include "base/text.h"
#include "platform/input_filter.h"

namespace orvane {
namespace {

constexpr Colour kInitialized = 0x00FFC0C0;
/// Combo boxes let the Hangul letters pass.
constexpr InputRule kDigits{};
constexpr InputRule kComboDigits{"", false};

}  // namespace

void BenchSession::Connect() {
  BenchSessionFace& face = panel_.Untouched().*row_.face;
  face.initialize.onClick = [this] { Initialize(); };
  face.reset.onClick = [this] { Reset(); };
  control_.onErrorEvent = [this](const GpibFault& fault) { OnError(fault); };
  ConnectInputLimits();
}

void BenchSession::ConnectInputLimits() {
  BenchSessionFace& face = panel_.Untouched().*row_.face;
  face.boardNumber.onChange = [this, &box = face.boardNumber] { FilterInput(box, kDigits, "0", boxes_); };
  face.bufferSize.onChange = [this, &box = face.bufferSize] { FilterInput(box, kDigits, "1000", boxes_); };
  face.primAddress.onChange = [this, &box = face.primAddress] {
    FilterInput(box, kComboDigits, row_.primAddressReset, boxes_);
  };
  face.secAddress.onChange = [this, &box = face.secAddress] {
    FilterItem(box, box.Items(), "None", boxes_, "Use Number between 96 and 126.");
  };
  face.timeOut.onChange = [this, &box = face.timeOut] {
    FilterItem(box, box.Items(), "10s", boxes_, "Select the Item.");
  };
}

void BenchSession::Initialize() {
  if (const auto words = MissingInput(); !words.empty()) {
    boxes_.Alarm(std::string(words));
    return;
  }
  state_.faults.Settle(control_.address.primary);
  Configure();
  state_.configured.Emit();
  control_.Write("*IDN?");
  if (state_.*row_.error) {
    state_.*row_.error = false;
    return;
  }
  console_.ShowData(main_->txtResults, control_.Read());
  state_.*row_.ready = true;
  if (onReady) onReady();
  ((*panel_).*row_.face).initialize.SetBackColor(kInitialized);
}

std::string_view BenchSession::MissingInput() const {
  const BenchSessionFace& face = (*panel_).*row_.face;
  if (face.boardNumber.Text().empty()) return "Input Board Number";
  if (face.primAddress.Text().empty()) return "Select Primary Address";
  if (face.secAddress.Text().empty()) return "Select Secondary Address";
  if (face.timeOut.Text().empty()) return row_.inputTimeOut;
  if (face.bufferSize.Text().empty()) return "Input Buffer Size";
  if (((*panel_).*row_.value).Text().empty()) return row_.inputValue;
  return {};
}

void BenchSession::Configure() {
  const BenchSessionFace& face = (*panel_).*row_.face;
  const std::string& secondary = face.secAddress.Text();
  control_.address = {ToInteger(face.boardNumber.Text()), ToInteger(face.primAddress.Text()),
                      secondary == "None" ? Integer{0} : ToInteger(secondary)};
  state_.*row_.address = control_.address;
  control_.readSize = ToInteger(face.bufferSize.Text());
  const int code = GpibTimeOutCode(face.timeOut.Text());
  if (code >= 0) control_.timeOutCode = static_cast<Integer>(code);
  control_.optionFlag = false;
  control_.Configure();
}

void BenchSession::Reset() {
  if (!Ready()) {
    boxes_.Warning("Initialize Loader.");
    return;
  }
  control_.Write("*RST");
  control_.Release();
  ShowAsNew();
}

void BenchSession::LetGo() {
  control_.Drop();
  if (Ready()) ShowAsNew();
}

void BenchSession::ShowAsNew() {
  state_.*row_.ready = false;
  ((*panel_).*row_.face).initialize.SetBackColor(kButtonFace);
  if (onReset) onReset();
}

/// The box has its fixed words; which instrument failed, and how, is told ahead of it.
void BenchSession::OnError(const GpibFault& fault) {
  const NiGlobal status = control_.Status();
  state_.faults.Tell(fault);
  boxes_.Show({"Unable to open device\ribsta = &H" + HexText(Long{status.ibsta}) +
                   "\riberr = " + std::to_string(status.iberr),
               "Error",
               BoxIcon::Stop,
               {BoxButton::Ok}});
  state_.*row_.error = true;
}

}  // namespace orvane
