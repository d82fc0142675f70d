// An auditor that cannot object is worth nothing: a unit that passed is changed in one place after the other, and
// each change is objected to.

#include "audit/auditor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "audit/parameter_layout.h"
#include "audit/receiver_audit.h"
#include "stand.h"

namespace orvane::proofs {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// What is to be audited of a unit that a station has taken through, and saved to both.
const Subject& Passed() {
  static const Subject subject = [] {
    Stand stand;
    bench::BenchOptions unit;
    unit.seed = 5;
    stand.Insert(unit, true);
    stand.Panels().autoCal.Touch();
    stand.op.Select(stand.Panels().autoCal.optSaveModeEEPROMFile);
    stand.absent.onDialog = [] { return "/out/unit.epm"; };
    stand.TakeThrough();
    EXPECT_TRUE(stand.PassedComplete()) << stand.Steps();
    Subject made = stand.ToAudit();
    made.file = stand.files.content["/out/unit.epm"];
    return made;
  }();
  return subject;
}

void WriteByte(bench::Memory& memory, std::size_t place, int value) {
  const auto byte = static_cast<std::uint8_t>(value);
  memory.Write(place, {&byte, 1});
  memory.Commit();
}

/// The objections to a unit whose EEPROM has one byte moved by so much. Its file was not saved.
std::vector<std::string> WithByteMoved(std::size_t place, int by) {
  Subject subject = Passed();
  subject.file.reset();
  WriteByte(subject.kept, place, subject.kept.Eeprom()[place] + by);
  return Audit(subject);
}

TEST(Auditor, HasNothingAgainstAUnitThatPassed) { EXPECT_THAT(Audit(Passed()), IsEmpty()); }

TEST(Auditor, HasNothingAgainstAFileAlone) {
  Subject subject = Passed();
  subject.toEeprom = false;
  EXPECT_THAT(Audit(subject), IsEmpty());
}

TEST(Auditor, ObjectsToALevelThatIsOff) {
  // A DAC step of the weakest levels is tenths of a dB; of the strongest ones a high byte tells.
  for (const int level : {15, 16, 17, 18, 19}) {
    const auto place = PlaceOf(0, "tx_Level(0).apc (" + std::to_string(level) + ")");
    EXPECT_THAT(WithByteMoved(place, 4), ElementsAre(HasSubstr("GSM level " + std::to_string(level)))) << level;
  }
  for (const int level : {10, 11, 12, 13, 14, 15}) {
    const auto place = PlaceOf(1, "tx_Level(0).apc (" + std::to_string(level) + ")");
    EXPECT_THAT(WithByteMoved(place, -5), ElementsAre(HasSubstr("DCS level " + std::to_string(level)))) << level;
  }
  EXPECT_THAT(WithByteMoved(PlaceOf(0, "tx_Level(0).apc (5)"), 25), testing::Contains(HasSubstr("GSM level 5")));
  EXPECT_THAT(WithByteMoved(PlaceOf(1, "tx_Level(0).apc (0)") + 1, 1), testing::Contains(HasSubstr("DCS level 0")));
}

TEST(Auditor, ObjectsToEveryByteThatNoRunCalibrates) {
  for (std::size_t band = 0; band < 2; ++band) {
    for (const char* field :
         {"lna_att", "rx.Temp(3).agc_calib", "tx_Level(0).ramp_index(7)", "tx_Level(0).apc (25)",
          "chan_cal(0).chan_cal(2)", "ramp_tables(4).ramp_up(3)", "ramp_tables(14).ramp_down(15)",
          "tx.Temp(1).temperature", "swap_iq", "HighTemp(4).apc_calib", "tx_High_Power_Volt_Cal"}) {
      EXPECT_THAT(WithByteMoved(PlaceOf(band, field), 1), ElementsAre(HasSubstr("1 bytes"))) << field;
    }
    EXPECT_THAT(WithByteMoved(band * kBlockBytes + 907, 1), ElementsAre(HasSubstr("1 bytes"))) << "the reserved end";
  }
}

TEST(Auditor, ObjectsToAChannelCodeThatDoesNotFit) {
  for (std::size_t band = 0; band < 2; ++band) {
    EXPECT_THAT(WithByteMoved(PlaceOf(band, "chan_cal(3).chan_cal(0)"), 20), testing::Contains(HasSubstr("code")));
    EXPECT_THAT(WithByteMoved(PlaceOf(band, "chan_cal(3).chan_cal(5)"), 1), ElementsAre(HasSubstr("segment 5")));
    EXPECT_THAT(WithByteMoved(PlaceOf(band, "chan_cal(2).chan_cal(1)"), 1), ElementsAre(HasSubstr("segment 1")));
    EXPECT_THAT(WithByteMoved(PlaceOf(band, "chan_cal(3).arfcn_limit (0)"), 1), ElementsAre(HasSubstr("segment 0")));
  }
}

TEST(Auditor, ObjectsToAReceiverThatItsReadingsDoNotGive) {
  for (std::size_t band = 0; band < 2; ++band) {
    EXPECT_THAT(WithByteMoved(PlaceOf(band, "g_magic"), 4), ElementsAre(HasSubstr("gain constant")));
    for (int row = 0; row < 10; ++row) {
      const std::string name = "agc_bands(" + std::to_string(row) + ").";
      EXPECT_THAT(WithByteMoved(PlaceOf(band, name + "agc_calib"), 4), ElementsAre(HasSubstr("compensation"))) << row;
      EXPECT_THAT(WithByteMoved(PlaceOf(band, name + "agc_calib") + 1, 1), ElementsAre(HasSubstr("compensation")));
      EXPECT_THAT(WithByteMoved(PlaceOf(band, name + "upper_bound"), 1), ElementsAre(HasSubstr("ends at channel")));
    }
  }
}

TEST(Auditor, ObjectsToFlashWords) {
  for (std::size_t word = 0; word < bench::kFlashTableWords; ++word) {
    Subject subject = Passed();
    auto table = subject.kept.FlashTable();
    table[word] = static_cast<std::uint16_t>(table[word] + 4);
    subject.kept.WriteFlashTable(table);
    EXPECT_THAT(Audit(subject), ElementsAre(HasSubstr("Flash table 100"))) << word;
  }
}

TEST(Auditor, ObjectsToWhatWasNeverCommitted) {
  Subject subject = Passed();
  subject.file.reset();
  bench::Memory factory;
  const std::vector<std::uint8_t> working(subject.kept.Eeprom().begin(), subject.kept.Eeprom().end());
  factory.Write(0, working);
  factory.WriteFlashTable(subject.kept.FlashTable());
  subject.kept = factory;
  EXPECT_THAT(Audit(subject), testing::Not(IsEmpty())) << "a loss of power takes it away";
}

TEST(Auditor, ObjectsToAnotherUnitAndToADefectiveOne) {
  Subject subject = Passed();
  subject.seed = 6;
  EXPECT_GT(Audit(subject).size(), 5U) << "one unit's calibration is no other's";
  const auto with = [](bench::Defects defects) {
    Subject broken = Passed();
    broken.defects = defects;
    return Audit(broken);
  };
  EXPECT_THAT(with({.paDead = true}), testing::Contains(HasSubstr("radiates nothing")));
  EXPECT_THAT(with({.paMissingDb = 5}), testing::Contains(HasSubstr("GSM level 5 radiates")));
  EXPECT_THAT(with({.receiverDb = -10}), testing::Contains(HasSubstr("gain constant")));
  EXPECT_THAT(with({.receiverDead = true}), testing::Contains(HasSubstr("gain constant")));
  EXPECT_THAT(with({.rmsPhaseDeg = 7.5}), testing::Contains(HasSubstr("phase error")));
  EXPECT_THAT(with({.adcCounts = 20}), testing::Contains(HasSubstr("Flash table 100")));
}

TEST(Auditor, ObjectsToAFile) {
  const auto with = [](auto change) {
    Subject subject = Passed();
    change(*subject.file);
    return Audit(subject);
  };
  EXPECT_THAT(with([](std::string& file) { file.resize(file.size() / 2); }),
              ElementsAre(HasSubstr("cannot be read")));
  EXPECT_THAT(with([](std::string& file) { file.replace(file.find("low_agc"), 3, "LOW"); }),
              ElementsAre(HasSubstr("cannot be read")));
  const auto number = [](std::string& file, const char* label) {
    const std::size_t at = file.find(std::string(label) + "\t=\t") + std::string(label).size() + 3;
    file.insert(at, "1");
  };
  EXPECT_THAT(with([&](std::string& file) { number(file, "guard_bits"); }), ElementsAre(HasSubstr("guard_bits")));
  EXPECT_THAT(with([&](std::string& file) { number(file, "BAND(1).g_magic"); }),
              ElementsAre(HasSubstr("are not the same")));
}

TEST(PowerReport, ReadsItsHundredthsWithoutLeadingZeros) {
  EXPECT_EQ(TenthsRead(50 * 64), 500);
  EXPECT_EQ(TenthsRead(50 * 64 + 32), 505);
  EXPECT_EQ(TenthsRead(50 * 64 + 2), 503) << "three hundredths";
  EXPECT_EQ(TenthsRead(50 * 64 + 63), 509.8);
}

}  // namespace
}  // namespace orvane::proofs
