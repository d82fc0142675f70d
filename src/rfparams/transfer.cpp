#include "rfparams/transfer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "base/subscript.h"
#include "link/transfer_watch.h"
#include "platform/save_dialog.h"
#include "rfparams/eeprom_image.h"
#include "rfparams/record_layout.h"
#include "rfparams/rf_text_file.h"

namespace orvane {
namespace {

/// What one "stw 3" and one "str 3" carry.
constexpr int kChunkSize = 32;
constexpr int kRowSize = 16;
/// Rows of the image less one: also what the upload's bar calls its maximum.
constexpr int kLastRow = 113;
/// Where the values of a read reply begin; they stand at every second position.
constexpr int kFirstValue = 9;

constexpr const char* kHeading = "Address\tData";

/// A progress bar that shows for as long as a transfer lasts.
class ShownBar {
 public:
  ShownBar(ProgressBar& bar, Long max) : bar_(bar) {
    bar_.SetMax(max);
    bar_.SetVisible(true);
  }
  ShownBar(const ShownBar&) = delete;
  ShownBar& operator=(const ShownBar&) = delete;
  ~ShownBar() { bar_.SetVisible(false); }

  void Set(Long value) {
    PassOver([&] { bar_.SetValue(value); });
  }

 private:
  ProgressBar& bar_;
};

/// One byte as the command line takes it, cut to its last two digits, and a comma. In one piece: the image has many.
void AppendByteWord(std::string& line, std::string_view entry) {
  if (entry.empty()) {
    line += "0x,";
    return;
  }
  const char upper = entry.size() == 1 ? '0' : entry[entry.size() - 2];
  const std::array word{'0', 'x', upper, entry.back(), ','};
  line.append(word.data(), word.size());
}

/// One byte as the list shows it, in a room that is used again: the image has many.
std::string_view ListRow(std::string& room, int address, std::string_view entry) {
  constexpr std::string_view kBetween = "\t0x";
  constexpr std::size_t kLongestNumber = std::numeric_limits<int>::digits10 + 2;
  room.resize(kLongestNumber + kBetween.size() + entry.size());
  char* const row = room.data();
  char* end = std::to_chars(row, row + kLongestNumber, address).ptr;
  end = std::copy(kBetween.begin(), kBetween.end(), end);
  end = std::copy(entry.begin(), entry.end(), end);
  return {row, static_cast<std::size_t>(end - row)};
}

/// A byte of the image as it goes out: its last two digits, in capitals.
std::string TwoDigits(const std::string& entry) {
  std::string digits = "00" + entry;
  digits.erase(0, digits.size() - 2);
  std::transform(digits.begin(), digits.end(), digits.begin(),
                 [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
  return digits;
}

/// "&H1F" less its prefix.
std::string Digits(const std::string& code) { return code.substr(std::min<std::size_t>(code.size(), 2)); }

/// Tells the report at the end of a transfer which bytes the Target may not have taken, neighbours with one fate in
/// one sentence.
class LostBytes {
 public:
  explicit LostBytes(RunReport& report) : report_(report) {}
  LostBytes(const LostBytes&) = delete;
  LostBytes& operator=(const LostBytes&) = delete;
  ~LostBytes() { Tell(); }

  void Add(int first, int last, const std::string& fate) {
    if (first != last_ + 1 || fate != fate_) {
      Tell();
      first_ = first;
      fate_ = fate;
    }
    last_ = last;
  }
  /// The Target moves on by itself with each piece that it takes, so one that it did not take shifts all behind it.
  void Add(int first, int last, const TargetLink& link) {
    Add(first, last,
        (link.Silent() ? std::string("brought no reply")
                       : "were refused with status " + std::to_string(link.Status())) +
            ": they and all behind them may be wrong.");
  }

 private:
  void Tell() {
    if (fate_.empty()) return;
    report_.Flaw("EEPROM bytes " + std::to_string(first_) + " to " + std::to_string(last_) + " " + fate_);
    fate_.clear();
  }

  RunReport& report_;
  int first_ = 0;
  int last_ = -1;
  std::string fate_;
};

}  // namespace

ParameterTransfer::ParameterTransfer(PanelRef<FrmDownLoad> panel, PanelRef<FrmAutoCal> autoCal, RFState& rf,
                                     const CalState& cal, const ReplyState& reply, TargetLink& link,
                                     RunReport& report, Boxes& boxes, FileDialogs& dialogs, Files& files)
    : panel_(panel),
      autoCal_(autoCal),
      rf_(rf),
      cal_(cal),
      reply_(reply),
      link_(link),
      report_(report),
      boxes_(boxes),
      dialogs_(dialogs),
      files_(files) {}

void ParameterTransfer::Connect() {
  FrmDownLoad& panel = panel_.Untouched();
  panel.cmdEepromDownLoad.onClick = [this] { DownLoad(); };
  panel.cmdUpLoad.onClick = [this] { UpLoad(); };
  panel.optFullDownload.onClick = [this] { panel_->fraBBOption.SetEnabled(false); };
  panel.optPartialDownload.onClick = [this] { panel_->fraBBOption.SetEnabled(true); };
}

void ParameterTransfer::DownLoad() {
  const auto path = dialogs_.ShowOpen(panel_->dlgDownload);
  if (!path) return;
  panel_->downloadFileName = *path;
  panel_->dlgDownload.initialFolder = FolderOf(*path);
  if (!ReadFile(*path)) return;
  panel_->lstDataReadWindow.Clear();
  PassOver([&] { FileToRFParamsConvert(rf_); });
  if (rf_.recordIsWhole) rf_.damage.clear();
  if (panel_->optDownloadFileLoad.Selected() || !link_.InTestMode()) return;
  TMEEPROMDataMaker(rf_);
  const TransferWatch watch(link_, cal_);
  bool whole = true;
  // The partial mode has no content of its own.
  if (panel_->optFullDownload.Selected()) {
    Send("spw 5 0");
    whole = !watch.Stopped() && TMDownLoadProcedure(0, kImageSize - 1) && !watch.Stopped();
  }
  if (whole && panel_->optDownloadFlash.Selected()) Send("se 1");
  if (whole && link_.Succeeded()) {
    boxes_.Alarm("Download is completed.");
  } else {
    boxes_.Warning("Download is not completed. Try to Download again.");
  }
}

bool ParameterTransfer::ReadFile(const std::string& path) {
  return PassOver(
      [&] {
        const auto file = files_.OpenForReading(path, kLargestParameterFile);
        ReadParameterLines(ReadWhole(*file), rf_);
      },
      [this](const StationFailure& failure) { ShowSystemText(failure); });
}

bool ParameterTransfer::TMDownLoadProcedure(Integer first, Integer last) {
  ListBox& list = panel_->lstDataReadWindow;
  list.AddItem(kHeading);
  std::string room;
  for (int i = first; i <= last; ++i) {
    PassOver([&] { list.AddItem(ListRow(room, i, At(rf_.EepromImage, i))); });
  }
  report_.Keep("eeprom.sent", [&] { return EepromBytes(rf_, first, last); });
  TransferWatch watch(link_, cal_);
  LostBytes lost(report_);
  Send("spw 1 0");
  TellDoubt("spw 1 0", "all that was written may stand in the wrong place");
  const int span = last - first;
  const int whole = (span - span % kChunkSize) / kChunkSize;
  ShownBar bar(panel_->prgDownload, whole + 1);
  ShownBar autoCalBar(autoCal_->prgAutoCalDownload, whole + 1);
  for (int c = 0; c <= whole; ++c) {
    const int start = first + kChunkSize * c;
    const int end = std::min<int>(last, start + kChunkSize - 1);
    if (c > 0 && watch.Stopped()) return false;
    const bool sent =
        PassOver([&] { TMEEPROMDataWrite(CheckedInteger(start), CheckedInteger(end)); },
                 [&](const StationFailure& failure) { lost.Add(start, end, "were not sent: " + failure.Text()); });
    if (sent) {
      if (!link_.Succeeded()) lost.Add(start, end, link_);
      watch.PieceSent();
    }
    bar.Set(c + 1);
    autoCalBar.Set(c + 1);
  }
  return true;
}

void ParameterTransfer::TMEEPROMDataWrite(Integer first, Integer last) {
  constexpr std::size_t kTypicalLine = 256;
  std::string line;
  line.reserve(kTypicalLine);
  line += "stw 3 ";
  for (int i = first; i <= last; ++i) AppendByteWord(line, At(rf_.EepromImage, i));
  link_.RunTargetCommand(line);
}

void ParameterTransfer::EEPROMDataWrite(Integer /*first*/, Integer /*last*/) {}

void ParameterTransfer::UpLoad() {
  panel_->dlgDownload.title = "Target RF Parameters Back Up";
  const SaveName name =
      ChooseSaveName(dialogs_, panel_->dlgDownload, files_, boxes_, "Do you want to change a current file to ");
  if (!name.Chosen()) return;
  const auto showSystemText = [this](const StationFailure& failure) { ShowSystemText(failure); };
  std::unique_ptr<Draft> draft;
  if (!PassOver([&] { draft = files_.BeginDraft(name.path, name.old); }, showSystemText)) return;
  Send("spw 5 0");
  Send("spw 1 0");
  ReadImage();
  PassOver([&] { TMEEPROMDataToRFParams(rf_); }, [&](const StationFailure&) { rf_.recordIsWhole = false; });
  RFParamsToDataConvert(rf_);
  PassOver([&] { draft->Finish(ParameterFileText(rf_)); }, showSystemText);
}

void ParameterTransfer::ReadImage() {
  ShownBar bar(panel_->prgDownload, kLastRow);
  ListBox& list = panel_->lstDataReadWindow;
  list.Clear();
  list.AddItem(kHeading);
  for (int row = 0; row <= kLastRow; ++row) {
    // A reply that does not come leaves the bytes of the row before, which are then taken for this one.
    Send("str 3");
    if (!link_.Succeeded()) rf_.recordIsWhole = false;
    const int columns = std::min(kRowSize, kImageSize - kRowSize * row);
    for (int j = 0; j < columns; ++j) {
      const int offset = kRowSize * row + j;
      std::string& entry = At(rf_.EepromImage, offset);
      entry = Digits(At(reply_.ReplyBytes, kFirstValue + 2 * j));
      list.AddItem(std::to_string(offset) + "\t" + entry);
    }
    // The last row is one above the maximum and leaves the bar full.
    bar.Set(row + 1);
  }
}

bool ParameterTransfer::VerifyImage() {
  rf_.eepromReadBack.clear();
  ShownBar bar(panel_->prgDownload, kLastRow + 1);
  const TransferWatch watch(link_, cal_);
  Send("spw 5 0");
  Send("spw 1 0");
  TellDoubt("spw 1 0", "where the EEPROM was read back is not known");
  for (int row = 0; row <= kLastRow; ++row) {
    if (watch.Stopped()) return false;
    const auto bytes = RowRead(row);
    if (!bytes) return true;
    rf_.eepromReadBack.insert(rf_.eepromReadBack.end(), bytes->begin(), bytes->end());
    bar.Set(row + 1);
  }
  report_.Keep("eeprom.read", [&] { return std::string(rf_.eepromReadBack.begin(), rf_.eepromReadBack.end()); });
  TellDifferences();
  return true;
}

std::optional<std::vector<std::uint8_t>> ParameterTransfer::RowRead(int row) {
  std::string why;
  std::vector<std::uint8_t> bytes;
  const int first = kRowSize * row;
  PassOver(
      [&] {
        link_.RunTargetCommand("str 3");
        if (!link_.Succeeded()) {
          why = link_.Silent() ? "no reply" : "status " + std::to_string(link_.Status());
          return;
        }
        for (int j = 0; j < std::min(kRowSize, kImageSize - first); ++j) {
          const Integer value = HexToInteger(Digits(At(reply_.ReplyBytes, kFirstValue + 2 * j)));
          if (value < 0 || value > UINT8_MAX) throw StationFailure(std::to_string(value) + " is no byte");
          bytes.push_back(static_cast<std::uint8_t>(value));
        }
      },
      [&](const StationFailure& failure) { why = failure.Text(); });
  if (why.empty()) return bytes;
  report_.Flaw("The EEPROM was not read back from byte " + std::to_string(first) + " on: " + why + ".");
  return std::nullopt;
}

void ParameterTransfer::TellDifferences() {
  int count = 0;
  std::string first;
  for (std::size_t i = 0; i < rf_.eepromReadBack.size(); ++i) {
    const std::string sent = TwoDigits(At(rf_.EepromImage, static_cast<std::int64_t>(i)));
    const std::string read = TwoDigits(HexText(Integer{rf_.eepromReadBack[i]}));
    if (sent == read) continue;
    if (count++ > 0) continue;
    first = "at 0x" + HexText(static_cast<Integer>(i));
    first.append(": ").append(read).append(", not ").append(sent).append(".");
  }
  if (count == 1) report_.Flaw("1 byte of the EEPROM differs, " + first);
  if (count > 1) report_.Flaw(std::to_string(count) + " bytes of the EEPROM differ, the first " + first);
}

void ParameterTransfer::Send(const std::string& line) {
  PassOver(
      [&] { link_.RunTargetCommand(line); },
      [&](const StationFailure& failure) { report_.Flaw("The command \"" + line + "\" failed: " + failure.Text()); });
}

void ParameterTransfer::TellDoubt(const std::string& line, const std::string& consequence) {
  if (link_.Succeeded()) return;
  report_.Flaw("\"" + line + "\" " + (link_.Silent() ? "brought no reply" : "was refused") + ": " + consequence +
               ".");
}

}  // namespace orvane
