#include <gmock/gmock.h>

#include <array>
#include <set>

#include "base/text.h"
#include "support/face_rows.h"
#include "virtual_station.h"

namespace orvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What a box refuses beyond the codes 32 to 126.
enum class Wide {
  Letters,  ///< The Hangul letters, codes 0xA4A1 to 0xA4D3 of code page 949.
  Nothing,
  All,  ///< Every double-byte character, and control characters: by their sign they are below the digits.
};

/// A box that takes digits and what is `allowed` beside them.
struct NumberBox {
  const char* control;
  std::string_view allowed;
  const char* reset;
  Wide refused = Wide::Letters;
};

constexpr std::array kNumberBoxes{
    NumberBox{"OrvaneMain.cboPrimaryAddress", "", "1", Wide::Nothing},
    NumberBox{"OrvaneMain.txtAFCValue", "-", "-1180"},
    NumberBox{"OrvaneMain.txtAGCValue", "-", "40"},
    NumberBox{"OrvaneMain.txtAGCPowerLevel", "-", "-85"},
    NumberBox{"OrvaneMain.txtBeacon", "-", "20", Wide::Nothing},
    NumberBox{"OrvaneMain.txtServing", "-", "30", Wide::Nothing},
    NumberBox{"OrvaneMain.txtFBFrame", "", "10"},
    NumberBox{"OrvaneMain.txtPMFrame", "", "10"},
    NumberBox{"OrvaneMain.cboFBMode", "", "0"},
    NumberBox{"OrvaneMain.txtPowerLevel", "", "650"},
    NumberBox{"OrvaneMain.txtAPCLoss", "-./", "-0.5"},
    NumberBox{"OrvaneMain.cboDELU", "", "0", Wide::All},
    NumberBox{"OrvaneMain.cboDELD", "", "0", Wide::All},

    NumberBox{"frmAutoCal.txtARFCN", "", "62"},
    NumberBox{"frmAutoCal.txtdcsarfcn", "", "699"},
    NumberBox{"frmAutoCal.txtfreqOffset", "", "699"},
    NumberBox{"frmAutoCal.txtAutoCalAGCARFCN", "", "40"},
    NumberBox{"frmAutoCal.txtAutoCalGMAGICARFCN", "", "700"},
    NumberBox{"frmAutoCal.txtinitialDAC", "", "750"},
    NumberBox{"frmAutoCal.txtAutoCalAFC", "-", "-1180"},
    NumberBox{"frmAutoCal.txtAutocalSetPointIL", "-.", "-48"},
    NumberBox{"frmAutoCal.txtLoss", "-.", "-0.5"},
    NumberBox{"frmAutoCal.txtDCSLoss", "-.", "-0.5"},
    NumberBox{"frmAutoCal.txtRxCableLossGSM", "-.", "-0.5"},
    NumberBox{"frmAutoCal.txtRxCableLossDCS", "-.", "-0.5"},
    NumberBox{"frmAutoCal.txtErrorRate", "-.", "0.1"},
    NumberBox{"frmAutoCal.txtPowerIndexLevel", "./", "13"},

    NumberBox{"frmMPAutoCal.txtGSMArfcn1", "", "0"},
    NumberBox{"frmMPAutoCal.txtGSMArfcn2", "", "40"},
    NumberBox{"frmMPAutoCal.txtGSMArfcn3", "", "124"},
    NumberBox{"frmMPAutoCal.txtEGSMArfcn1", "", "975"},
    NumberBox{"frmMPAutoCal.txtEGSMArfcn2", "", "1023"},
    NumberBox{"frmMPAutoCal.txtDCSArfcn1", "", "512"},
    NumberBox{"frmMPAutoCal.txtDCSArfcn2", "", "574"},
    NumberBox{"frmMPAutoCal.txtDCSArfcn3", "", "636"},
    NumberBox{"frmMPAutoCal.txtDCSArfcn4", "", "700"},
    NumberBox{"frmMPAutoCal.txtDCSArfcn5", "", "760"},
    NumberBox{"frmMPAutoCal.txtDCSArfcn6", "", "822"},
    NumberBox{"frmMPAutoCal.txtDCSArfcn7", "", "885"},
    NumberBox{"frmMPAutoCal.txtMPDAC", "", "750"},
    NumberBox{"frmMPAutoCal.txtMPPattern", "", "0"},
    NumberBox{"frmMPAutoCal.txtDACUseGSM1", "", "700"},
    NumberBox{"frmMPAutoCal.txtDACUseGSM2", "", "50"},
    NumberBox{"frmMPAutoCal.txtDACUseDCS1", "", "750"},
    NumberBox{"frmMPAutoCal.txtDACUseDCS2", "", "750"},
    NumberBox{"frmMPAutoCal.txtTargetLevel1", "", "5"},
    NumberBox{"frmMPAutoCal.txtTargetLevel2", "", "10"},
    NumberBox{"frmMPAutoCal.txtTargetLevel3", "", "15"},
    NumberBox{"frmMPAutoCal.txtTargetLevel4", "", "19"},
    NumberBox{"frmMPAutoCal.txtTargetLevel5", "", "0"},
    NumberBox{"frmMPAutoCal.txtTargetLevel6", "", "5"},
    NumberBox{"frmMPAutoCal.txtTargetLevel7", "", "10"},
    NumberBox{"frmMPAutoCal.txtTargetLevel8", "", "15"},

    NumberBox{"frmBaseBand.cboLoaderPrimAddress", "", "5", Wide::Nothing},
    NumberBox{"frmBaseBand.cboPSPrimAddress", "", "6", Wide::Nothing},
    NumberBox{"frmBaseBand.txtLoaderBoardNumber", "", "0"},
    NumberBox{"frmBaseBand.txtPSBoardNumber", "", "0"},
    NumberBox{"frmBaseBand.TxtLoaderBufferSize", "", "1000"},
    NumberBox{"frmBaseBand.TxtPSBufferSize", "", "1000"},
    NumberBox{"frmBaseBand.TxtLoaderCurrent", ".", "0.1"},
    NumberBox{"frmBaseBand.txtLoaderResister", ".", "2000"},
    NumberBox{"frmBaseBand.txtPSVoltage", ".", "4.21"},
};

/// A box that takes the entries of its list, or a list of its own, alone.
struct ListBoxRow {
  const char* control;
  std::vector<const char*> taken;
  const char* reset;
  const char* words;
};

const std::vector<ListBoxRow> kListBoxes{
    {"OrvaneMain.cboPort", {"COM2", "COM4"}, "COM1", "Input the Item in the List."},
    {"OrvaneMain.cboTarget", {"QM420"}, "QM310", "Input the Item in the List."},
    {"OrvaneMain.cboInstrumentList", {"HP8922M", "4400M(WaveTek)"}, "HP8960", "Input the Item in the List."},
    {"OrvaneMain.cboTimeOut", {"1s", "None"}, "10s", "Input the Item in the List."},
    {"OrvaneMain.cboULPattern", {"All 1", "1010"}, "All 0", "Input the Item in the List."},
    {"OrvaneMain.cboULSlot", {"0", "7"}, "4", "Input the Item in the List."},
    {"frmBaseBand.cboLoaderSecAddress", {"96", "126"}, "None", "Use Number between 96 and 126."},
    {"frmBaseBand.cboPSSecAddress", {"96", "126"}, "None", "Use Number between 96 and 126."},
    {"frmBaseBand.cboLoaderTimeOut", {"1s", "None"}, "10s", "Select the Item."},
    {"frmBaseBand.cboPSTimeOut", {"1s", "None"}, "10s", "Select the Item."},
};

/// Boxes that a change is judged by, or copied from, in another way; the ramp values are more of them.
const std::set<std::string> kOthers{
    "OrvaneMain.txtPSVoltage",    "OrvaneMain.txtVoltageLoss",      "OrvaneMain.txtRampTableIndex",
    "OrvaneMain.txtTxLevelIndex", "frmRampTable.txtRampTableIndex", "frmAutoCal.txtPowerIndex",
    "frmAutoCal.txtinitialLevel", "frmMPAutoCal.txtMPLevel",
};

bool IsRampBox(const std::string& name) {
  return name.find(".txtUP(") != std::string::npos || name.find(".txtDN(") != std::string::npos;
}

std::string WithCharacter(char32_t c) { return "1" + EncodeUtf8(std::u32string(1, c)); }

struct InputFilters : ::testing::Test {
  InputFilters() { station.boxes.shown.clear(); }

  Control& Box(const std::string& fullName) {
    for (Panel* panel : station.Panels().All()) {
      if (!fullName.starts_with(panel->Name() + ".")) continue;
      panel->Touch();
      if (Control* control = panel->Find(fullName.substr(panel->Name().size() + 1))) return *control;
    }
    throw std::invalid_argument(fullName);
  }
  /// What the operator is told when the text is typed in one act.
  std::vector<std::string> Type(Control& control, const std::string& text) {
    if (auto* box = dynamic_cast<TextBox*>(&control)) station.op.Type(*box, text);
    if (auto* combo = dynamic_cast<ComboBox*>(&control)) station.op.Type(*combo, text);
    return Told();
  }
  std::vector<std::string> Press(Control& control, char32_t key) {
    if (auto* box = dynamic_cast<TextBox*>(&control)) station.op.Key(*box, key);
    if (auto* combo = dynamic_cast<ComboBox*>(&control)) station.op.Key(*combo, key);
    return Told();
  }
  std::vector<std::string> Told() {
    for (const orvane::Box& box : station.boxes.shown) {
      EXPECT_EQ(box.title, "Warning");
      EXPECT_EQ(box.icon, BoxIcon::Stop);
    }
    std::vector<std::string> texts = station.boxes.Texts();
    station.boxes.shown.clear();
    return texts;
  }
  void ExpectRefused(Control& control, const std::string& text, const char* reset, const char* words) {
    EXPECT_THAT(Type(control, text), ElementsAre(words)) << text;
    EXPECT_EQ(ShownIn(control), reset) << text;
  }
  void ExpectTaken(Control& control, const std::string& text) {
    EXPECT_THAT(Type(control, text), IsEmpty()) << text;
    EXPECT_EQ(ShownIn(control), text);
  }

  VirtualStation station;
};

constexpr const char* kNoNumber = "Input the number without blank.";

TEST_F(InputFilters, ABoxOfNumbersRefusesEachCharacterThatItDoesNotAllow) {
  for (const NumberBox& row : kNumberBoxes) {
    SCOPED_TRACE(row.control);
    Control& box = Box(row.control);
    for (char32_t c = ' '; c <= '~'; ++c) {
      const bool taken = (c >= '0' && c <= '9') || row.allowed.find(static_cast<char>(c)) != std::string_view::npos;
      if (taken) {
        ExpectTaken(box, WithCharacter(c));
      } else {
        ExpectRefused(box, WithCharacter(c), row.reset, kNoNumber);
      }
    }
    for (const char* text : {" 7", "7 ", "1 7", " "}) ExpectRefused(box, text, row.reset, kNoNumber);
  }
}

TEST_F(InputFilters, ABoxOfNumbersRefusesTheWideCharactersOfItsRange) {
  constexpr char32_t kFirst = 0x3131;  // Code 0xA4A1.
  constexpr char32_t kLast = 0x3163;   // Code 0xA4D3.
  for (const NumberBox& row : kNumberBoxes) {
    SCOPED_TRACE(row.control);
    Control& box = Box(row.control);
    for (char32_t c = kFirst; c <= kLast; ++c) {
      if (row.refused == Wide::Nothing) {
        ExpectTaken(box, WithCharacter(c));
      } else {
        ExpectRefused(box, WithCharacter(c), row.reset, kNoNumber);
      }
    }
    for (const char32_t c : std::u32string_view(U"\u3130\u3164\uAC00\t")) {
      if (row.refused == Wide::All) {
        ExpectRefused(box, WithCharacter(c), row.reset, kNoNumber);
      } else {
        ExpectTaken(box, WithCharacter(c));
      }
    }
    ExpectTaken(box, "1\x7F");
  }
}

TEST_F(InputFilters, ABoxOfNumbersTakesAnEmptyTextAndAnyNumber) {
  for (const NumberBox& row : kNumberBoxes) {
    SCOPED_TRACE(row.control);
    for (const char* text : {"7", "", "0123456789"}) ExpectTaken(Box(row.control), text);
  }
}

TEST_F(InputFilters, ABoxOfNumbersIsJudgedAfterEachKey) {
  for (const NumberBox& row : kNumberBoxes) {
    SCOPED_TRACE(row.control);
    Control& box = Box(row.control);
    Type(box, "4");
    EXPECT_THAT(Press(box, '2'), IsEmpty());
    EXPECT_EQ(ShownIn(box), "42");
    EXPECT_THAT(Press(box, 'a'), ElementsAre(kNoNumber));
    EXPECT_EQ(ShownIn(box), row.reset);
    EXPECT_THAT(Press(box, '7'), IsEmpty());
    EXPECT_EQ(ShownIn(box), std::string(row.reset) + "7") << "typing goes on behind the reset text";
  }
}

TEST_F(InputFilters, ABoxWithAListTakesItsEntriesAlone) {
  for (const ListBoxRow& row : kListBoxes) {
    SCOPED_TRACE(row.control);
    Control& box = Box(row.control);
    for (const char* text : row.taken) ExpectTaken(box, text);
    for (const std::string& text : {std::string(row.reset) + " ", std::string("x"), std::string()}) {
      ExpectRefused(box, text, row.reset, row.words);
    }
  }
}

// A box that comes to be judged needs a row above.
TEST_F(InputFilters, EveryBoxThatAnswersAChangeIsInATable) {
  std::set<std::string> listed = kOthers;
  for (const NumberBox& row : kNumberBoxes) listed.insert(row.control);
  for (const ListBoxRow& row : kListBoxes) listed.insert(row.control);
  std::set<std::string> answering;
  for (Panel* panel : station.Panels().All()) {
    for (Control* control : panel->Controls()) {
      const auto* box = dynamic_cast<TextBox*>(control);
      const auto* combo = dynamic_cast<ComboBox*>(control);
      const std::string name = panel->Name() + "." + control->Name();
      const bool answers = (box != nullptr && box->onChange) || (combo != nullptr && combo->onChange);
      if (answers && !IsRampBox(name)) answering.insert(name);
    }
  }
  EXPECT_EQ(answering, listed);
}

}  // namespace
}  // namespace orvane::test
