#include "rfparams/eeprom_test_panel.h"

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr Long kBytes = 65536;
constexpr Long kLastPage = 511;
constexpr Long kPagesAtOnce = 1;
constexpr char32_t kEnter = 13;
constexpr Colour kWhite = 0x00FFFFFF;

bool IsHexadecimal(const std::string& address) { return address.find('x') != std::string::npos; }

Long AddressOf(const std::string& text) {
  return ToLong(IsHexadecimal(text) ? "&H" + text.substr(CharacterOffset(text, 2)) : text);
}

}  // namespace

void EepromTestPanel::Connect() {
  FrmDownLoad& panel = panel_.Untouched();
  panel.onLoad = [this] { Load(); };
  panel.optEepromByte.onClick = [this] { AddressBytes(); };
  panel.optEepromPage.onClick = [this] { AddressPages(); };
  panel.optEepromRead.onClick = [this] {
    panel_->fraEepromDataRead.SetCaption("Data Read");
    panel_->txtEepromDataWrite.SetEnabled(false);
  };
  panel.optEepromWrite.onClick = [this] {
    panel_->fraEepromDataRead.SetCaption("Data Write");
    panel_->txtEepromDataWrite.SetEnabled(true);
  };
  panel.txtEepromDataWrite.onKeyPress = [this](char32_t key) { OnDataKey(key); };
}

void EepromTestPanel::Load() {
  panel_->optEepromRead.Select();
  panel_->optEepromByte.Select();
  panel_->txtEepromDataWrite.SetEnabled(false);
}

void EepromTestPanel::AddressBytes() {
  panel_->lblEepromAddress.SetCaption("Address");
  panel_->lblEepromLength.SetCaption("Length");
  panel_->updEepromStartAddress.SetRange(0, kBytes);
  panel_->updEepromLength.SetRange(0, kBytes);
  panel_->txtEepromLength.SetEnabled(true);
  lengthLimit_ = kBytes;
}

void EepromTestPanel::AddressPages() {
  panel_->lblEepromAddress.SetCaption("Page");
  panel_->lblEepromLength.SetCaption("Page Length");
  panel_->updEepromStartAddress.SetRange(0, kLastPage);
  panel_->updEepromLength.SetRange(0, kPagesAtOnce);
  panel_->txtEepromLength.SetEnabled(false);
  panel_->txtEepromLength.SetText(std::to_string(kPagesAtOnce));
  lengthLimit_ = kPagesAtOnce;
}

void EepromTestPanel::OnDataKey(char32_t key) {
  // Straight out, outside every frame; Enter as well.
  PassOver([&] {
    if (mscomTarget_.PortOpen()) mscomTarget_.Output(BytesOfText(EncodeUtf8(std::u32string(1, key))));
  });
  if (key != kEnter) return;
  const bool last = entries_ == lengthLimit_ - 1;
  TakeEntry();
  if (last) CloseEntry();
  panel_->txtEepromDataWrite.SetText("");
}

void EepromTestPanel::TakeEntry() {
  const std::string& start = panel_->txtEepromStartAddress.Text();
  PassOver([&] { nextAddress_ = CheckedLong(std::int64_t{AddressOf(start)} + entries_); });
  panel_->lstDataReadWindow.AddItem(start + "\t" + std::to_string(entries_) + "\t" +
                                    panel_->txtEepromDataWrite.Text());
  ++entries_;
  panel_->txtEepromDataWriteAddress.SetText(IsHexadecimal(start) ? "0x" + HexText(nextAddress_)
                                                                 : std::to_string(nextAddress_));
}

void EepromTestPanel::CloseEntry() {
  panel_->txtEepromDataWriteAddress.SetText("");
  panel_->txtEepromDataWrite.SetBackColor(kWhite);
  panel_->txtEepromDataWrite.SetEnabled(false);
  panel_->cmdEepromTest.SetBackColor(kButtonFace);
  panel_->cmdEepromTest.SetCaption("EEPROM Test");
}

}  // namespace orvane
