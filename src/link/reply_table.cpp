#include "link/reply_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>

#include "base/decimal4.h"
#include "base/failure.h"
#include "base/subscript.h"
#include "base/text.h"
#include "link/charger_window.h"
#include "link/statistics.h"

namespace orvane {
namespace {

constexpr std::size_t kPrefix = 2;  // "&H"

Long UnsignedHex(std::string_view digits) {
  Long value = 0;
  const auto* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, 16);
  if (error != std::errc{} || stop != end) {
    throw StationFailure("Type mismatch: \"&H" + std::string(digits) + "\" is no number.");
  }
  return value;
}

void ShowLine(const ReplyOutlets& out, const std::string& line) { out.console.Append(line + "\r\n"); }

Exchange ShowNothing(const Reply& /*reply*/, const ReplyOutlets& /*out*/) { return Exchange::Over; }

Exchange ShowInitialized(const Reply& /*reply*/, const ReplyOutlets& out) {
  ShowLine(out, "TM Initiailize OK !!");
  return Exchange::Over;
}

Exchange ShowTestModeReady(const Reply& /*reply*/, const ReplyOutlets& out) {
  ShowLine(out, "Target Test Mode ready !!");
  return Exchange::Over;
}

struct StatisticRow {
  Long kind;
  std::string_view label;
  std::size_t fractionBits;
};
constexpr Long kRxLevel = 1;
constexpr Long kPowerMeasure = 2;
constexpr std::array kStatisticRows{
    StatisticRow{kRxLevel, "Rxlevel = ", 1},
    StatisticRow{kPowerMeasure, "PM = ", 6},
};

Exchange ShowStatistic(const Reply& reply, const ReplyOutlets& out) {
  constexpr Long kDecodedStatistic = 1;
  if (reply.Word(7) != kDecodedStatistic) return Exchange::Over;
  const Long kind = reply.Word(11);
  const auto* const row = std::find_if(kStatisticRows.begin(), kStatisticRows.end(),
                                       [&](const StatisticRow& candidate) { return candidate.kind == kind; });
  if (row == kStatisticRows.end()) return Exchange::Over;
  const Decimal4 number = StatisticValue(reply.Word(15), row->fractionBits);
  ShowLine(out, std::string(row->label) + number.Text());
  if (kind == kPowerMeasure) {
    out.main->txtAGCPM.SetText(number.Text());
    out.state.PowerMeasureTimes10 = (number * 10).Text();
    ++out.state.powerReports;
  }
  return Exchange::Over;
}

struct RfItemRow {
  Long item;
  std::string_view label;
  bool isSigned;
  bool toBeacon;
};
constexpr Long kAfcInitialValue = 10;
constexpr std::array kRfItemRows{
    RfItemRow{1, "BCCH ARFCN = ", false, true}, RfItemRow{2, "TCH ARFCN = ", false, false},
    RfItemRow{3, "MON ARFCN = ", false, true},  RfItemRow{8, "AFC Enable Flag = ", false, false},
    RfItemRow{9, "AFC DAC = ", true, false},
};

/// 13 integer and 3 fraction bits: first as a number, then as it stands.
void ShowAfcInitialValue(const Reply& reply, const ReplyOutlets& out) {
  const Long raw = reply.SignedValue();
  ShowLine(out, "AFC Initial Value = " + NumberText(raw / 8.0));
  ShowLine(out, "AFC Initial Value 13.3F = " + std::to_string(raw));
}

Exchange ShowRfItem(const Reply& reply, const ReplyOutlets& out) {
  const Long item = reply.Item();
  if (item == kAfcInitialValue) ShowAfcInitialValue(reply, out);
  const auto* const row = std::find_if(kRfItemRows.begin(), kRfItemRows.end(),
                                       [&](const RfItemRow& candidate) { return candidate.item == item; });
  if (row == kRfItemRows.end()) return Exchange::Over;
  const std::string value = std::to_string(row->isSigned ? reply.SignedValue() : reply.Value());
  ShowLine(out, std::string(row->label) + value);
  if (row->toBeacon) out.main->txtBeacon.SetText(value);
  return Exchange::Over;
}

Exchange ShowRxItem(const Reply& reply, const ReplyOutlets& out) {
  if (reply.Item() == 1) ShowLine(out, "AGC = " + std::to_string(reply.SignedValue()));
  return Exchange::Over;
}

Exchange ShowTxItem(const Reply& reply, const ReplyOutlets& out) {
  if (reply.Item() == 1) ShowLine(out, "Tx power level = " + std::to_string(reply.Value()));
  if (reply.Item() == 4) {
    const std::string value = std::to_string(reply.Value());
    ShowLine(out, "APC DAC value = " + value);
    out.main->txtPowerLevel.SetText(value);
  }
  return Exchange::Over;
}

/// Sixteen up values, then sixteen down values, which stand one behind the other without pads; the first of them is
/// where other replies have their status.
Exchange ShowRampRow(const Reply& reply, const ReplyOutlets& out) {
  constexpr int kFirstValue = 5;
  constexpr int kFirstDownValue = 21;
  const Long row = reply.Item();
  ShowLine(out, "Up Rampe Table #" + std::to_string(row));
  const FrameSpan frame = reply.Span();
  for (int offset = kFirstValue; frame.start + offset <= frame.end - 2; ++offset) {
    const std::string value = std::to_string(reply.Byte(offset));
    At(At(out.ramp.RampTable, row), offset - kFirstValue) = value;
    if (offset == kFirstDownValue) ShowLine(out, "\r\nDown Rampe Table #" + std::to_string(row));
    out.console.Append(value + " ");
  }
  ShowLine(out, "");
  return Exchange::Over;
}

std::string AdcText(std::string_view label, Long item, Long value) {
  return std::string(label) + std::to_string(item) + "  Values = 0x" + HexText(value);
}

Exchange ShowMiscItem(const Reply& reply, const ReplyOutlets& out) {
  const Long item = reply.Item();
  ReplyState& state = out.state;
  if (item == 19) {
    state.AdcEnableValue = reply.Value();
    ShowLine(out, "ADC Enable = " + std::to_string(state.AdcEnableValue));
  } else if (item >= 20 && item <= 28) {
    state.ConvertedAdcValue = reply.Value();
    ShowLine(out, AdcText("Converted ADC", item, state.ConvertedAdcValue));
  } else if (item >= 30 && item <= 38) {
    state.RawAdcValue = reply.Value();
    ShowLine(out, AdcText("Raw ADC", item, state.RawAdcValue));
    if (!PassesChargerWindow(state.RawAdcValue, state, out.baseBand)) return Exchange::LeftOpen;
  } else if (item == 127) {
    state.CurrentTestModeValue = reply.Value();
    if (state.CurrentTestModeValue == 1) ShowLine(out, "Current Test Mode = Test Mode");
    if (state.CurrentTestModeValue == 0) ShowLine(out, "Current Test Mode = Normal Mode");
  }
  return Exchange::Over;
}

Exchange ShowTableWritten(const Reply& reply, const ReplyOutlets& out) {
  if (reply.Item() == 100) ShowLine(out, FirstTenBytes(out.state));
  return Exchange::Over;
}

/// Two thresholds out of flash table 100. The last byte added is the pad ahead of the second one's low byte.
void ShowBatteryVoltages(const Reply& reply, const ReplyOutlets& out) {
  ShowLine(out, "str 100 ok");
  const Long start = reply.Value();
  const Long shutDown = reply.Byte(25) + 256 * reply.Byte(27) + reply.Byte(24);
  TextBox& box = out.baseBand->txtChargerDisplay;
  out.console.AppendConsole(box, "CV_START_VOLTAGE     = 0x0" + HexText(start) + "\r\n");
  out.console.AppendConsole(box, "SHUTDOWN_VOLTAGE    = 0x0" + HexText(shutDown) + "\r\n\r\n\r\n");
  out.console.AppendConsole(box, "Battery Calibartion Success !!!");
}

Exchange ShowTableRead(const Reply& reply, const ReplyOutlets& out) {
  if (reply.Item() == 3) ShowLine(out, "str ok");
  if (reply.Item() == 100) ShowBatteryVoltages(reply, out);
  return Exchange::Over;
}

Exchange ShowEnabled(const Reply& /*reply*/, const ReplyOutlets& out) {
  ShowLine(out, StatusOf(out.state) == 0 ? "\r\nOK!!!!!!!" : "\r\nNot OK!!!!!!!");
  return Exchange::Over;
}

constexpr int kItem = 7;
constexpr int kUnpaddedItem = 4;

constexpr std::array kReplyRows{
    ReplyRow{32, "ti", 0, &ShowInitialized},    ReplyRow{33, "tms", 0, &ShowTestModeReady},
    ReplyRow{36, "sr", 0, &ShowStatistic},      ReplyRow{49, "rfpr", kItem, &ShowRfItem},
    ReplyRow{51, "", 0, &ShowNothing},          ReplyRow{53, "rxpr", kItem, &ShowRxItem},
    ReplyRow{55, "txpr", kItem, &ShowTxItem},   ReplyRow{57, "ttr", kUnpaddedItem, &ShowRampRow},
    ReplyRow{69, "mpr", kItem, &ShowMiscItem},  ReplyRow{82, "stw", kItem, &ShowTableWritten},
    ReplyRow{83, "str", kItem, &ShowTableRead}, ReplyRow{84, "se", 0, &ShowEnabled},
};

constexpr bool CodesRise() {
  return std::adjacent_find(kReplyRows.begin(), kReplyRows.end(), [](const ReplyRow& a, const ReplyRow& b) {
           return a.code >= b.code;
         }) == kReplyRows.end();
}
static_assert(CodesRise());

}  // namespace

const std::string& Reply::Text(int offset) const {
  const int place = frame_.start + offset;
  if (place >= frame_.end) {
    throw StationFailure("Type mismatch: \"&H\" is no number. The Target's reply ends ahead of its place " +
                         std::to_string(offset) + ".");
  }
  return state_.ReplyBytes[static_cast<std::size_t>(place)];
}

Long Reply::Byte(int offset) const { return UnsignedHex(std::string_view(Text(offset)).substr(kPrefix)); }

// The digits are run together, so a low byte of three digits reads as they stand.
Long Reply::Word(int offset) const {
  return UnsignedHex(Text(offset + 2).substr(kPrefix) + Text(offset).substr(kPrefix));
}

Long Reply::SignedValue() const {
  // 32767 counts as negative already: the handset's readers are built on it.
  constexpr Long kSignThreshold = 32767;
  const Long value = Value();
  return value >= kSignThreshold ? value - 65536 : value;
}

const ReplyRow* ReplyRowOf(Long code) {
  const auto* const row = std::find_if(kReplyRows.begin(), kReplyRows.end(),
                                       [&](const ReplyRow& candidate) { return candidate.code == code; });
  return row == kReplyRows.end() ? nullptr : row;
}

std::string FirstTenBytes(const ReplyState& state) {
  return std::accumulate(state.ReplyBytes.begin(), state.ReplyBytes.begin() + 10, std::string());
}

}  // namespace orvane
