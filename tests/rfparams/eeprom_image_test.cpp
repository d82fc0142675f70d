#include "rfparams/eeprom_image.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "base/failure.h"
#include "rfparams/record_by_position.h"

namespace orvane {
namespace {

using ::testing::Each;

std::vector<std::string> Entries(const RFState& rf, int first, int count) {
  const auto begin = rf.EepromImage.begin() + first;
  return {begin, begin + count};
}

/// The byte that goes to the Target for an entry: its last two digits.
int ByteOf(const std::string& entry) {
  return std::stoi(entry.substr(entry.size() < 2 ? 0 : entry.size() - 2), nullptr, 16);
}

/// The image of one record by the layout of the product, in bytes; written apart from the station's own codec.
std::vector<int> ImageOf(const RFParameter& record) {
  std::vector<int> image(1816, 0);
  for (std::size_t n = 0; n < 2; ++n) {
    const auto& band = record.BAND[n];
    const auto byte = [&](std::size_t offset, int value) { image.at(908 * n + offset) = value & 0xFF; };
    const auto word = [&](std::size_t offset, int value) {
      byte(offset, value);
      byte(offset + 1, value >> 8);
    };
    word(0, band.g_magic);
    word(2, band.lna_att);
    word(4, band.lna_switch_thr_low);
    word(6, band.lna_switch_thr_high);
    for (std::size_t i = 0; i < 10; ++i) {
      word(8 + 4 * i, band.agc_bands[i].upper_bound);
      byte(10 + 4 * i, band.agc_bands[i].agc_calib);
    }
    for (std::size_t i = 0; i < 11; ++i) {
      word(48 + 4 * i, band.rx.Temp[i].temperature);
      word(50 + 4 * i, band.rx.Temp[i].agc_calib);
    }
    for (std::size_t i = 0; i < 32; ++i) {
      word(92 + 4 * i, band.tx_Level[i].apc);
      byte(94 + 4 * i, band.tx_Level[i].ramp_index);
      byte(95 + 4 * i, band.tx_Level[i].chan_cal_index);
    }
    for (std::size_t a = 0; a < 4; ++a) {
      for (std::size_t b = 0; b < 8; ++b) {
        word(220 + 32 * a + 4 * b, band.chan_cal_elements[b * 5 + a].arfcn_limit);
        word(222 + 32 * a + 4 * b, band.chan_cal_elements[b * 5 + a].chan_cal);
      }
    }
    for (std::size_t t = 0; t < 16; ++t) {
      for (std::size_t k = 0; k < 16; ++k) {
        byte(348 + 32 * t + k, band.ramp_tables[t].ramp_up[k]);
        byte(364 + 32 * t + k, band.ramp_tables[t].ramp_down[k]);
      }
    }
    for (std::size_t i = 0; i < 5; ++i) {
      word(860 + 4 * i, band.tx.Temp[i].temperature);
      word(862 + 4 * i, band.tx.Temp[i].apc_calib);
      word(884 + 4 * i, band.HighTemp[i].temperature);
      word(886 + 4 * i, band.HighTemp[i].apc_calib);
    }
    byte(880, band.swap_iq);
    word(904, band.tx_High_Power_Volt_Cal);
  }
  return image;
}

RFParameter RandomRecord(unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> any(-32768, 32767);
  RFParameter record;
  test::VisitByPosition(record, [&](int, const std::string&, Integer& v) { v = static_cast<Integer>(any(random)); });
  return record;
}

std::string TwoDigits(int byte) {
  const char* digits = "0123456789ABCDEF";
  return {digits[byte / 16], digits[byte % 16]};
}

TEST(EepromImage, HoldsEveryFieldOfBothBandsAtItsOffset) {
  for (unsigned seed = 1; seed <= 50; ++seed) {
    RFState rf;
    rf.RFParams = RandomRecord(seed);
    TMEEPROMDataMaker(rf);
    const auto expected = ImageOf(rf.RFParams);
    for (std::size_t offset = 0; offset < expected.size(); ++offset) {
      ASSERT_EQ(ByteOf(rf.EepromImage[offset]), expected[offset]) << "offset " << offset << ", seed " << seed;
    }
    EXPECT_EQ(rf.EepromImage[1816], "");
  }
}

TEST(EepromImage, ReadBackGivesWordsAsTheyWereAndBytesWithoutSign) {
  const RFParameter sent = RandomRecord(7);
  const auto bytes = ImageOf(sent);
  RFState rf;
  rf.RFParams = RandomRecord(8);
  const RFParameter before = rf.RFParams;
  for (std::size_t offset = 0; offset < bytes.size(); ++offset) rf.EepromImage[offset] = TwoDigits(bytes[offset]);
  TMEEPROMDataToRFParams(rf);
  EXPECT_EQ(ImageOf(rf.RFParams), bytes);
  for (std::size_t n = 0; n < 2; ++n) {
    EXPECT_EQ(rf.RFParams.BAND[n].g_magic, sent.BAND[n].g_magic);
    EXPECT_EQ(rf.RFParams.BAND[n].rx.Temp[10].agc_calib, sent.BAND[n].rx.Temp[10].agc_calib);
    EXPECT_EQ(rf.RFParams.BAND[n].tx_High_Power_Volt_Cal, sent.BAND[n].tx_High_Power_Volt_Cal);
    EXPECT_EQ(rf.RFParams.BAND[n].agc_bands[9].agc_calib, sent.BAND[n].agc_bands[9].agc_calib & 0xFF);
    EXPECT_EQ(rf.RFParams.BAND[n].tx_Level[31].ramp_index, sent.BAND[n].tx_Level[31].ramp_index & 0xFF);
    EXPECT_EQ(rf.RFParams.BAND[n].tx_Level[31].chan_cal_index, sent.BAND[n].tx_Level[31].chan_cal_index & 0xFF);
    EXPECT_EQ(rf.RFParams.BAND[n].ramp_tables[15].ramp_down[15], sent.BAND[n].ramp_tables[15].ramp_down[15] & 0xFF);
    EXPECT_EQ(rf.RFParams.BAND[n].swap_iq, sent.BAND[n].swap_iq & 0xFF);
  }
  EXPECT_EQ(rf.RFParams.rf_revision, before.rf_revision);
  EXPECT_EQ(rf.RFParams.il2agc_av, before.il2agc_av);
  EXPECT_EQ(rf.RFParams.EEPROM_AFC, before.EEPROM_AFC);
  EXPECT_THAT(test::SpareValues(rf.RFParams), Each(0));
}

TEST(EepromImage, WritesEachValueInItsOwnForm) {
  struct Row {
    Integer value;
    std::vector<std::string> word;
    std::string byte;
    std::string lowByte;
  };
  const std::vector<Row> rows{
      {0, {"0", "00"}, "0", "0"},       {5, {"5", "00"}, "5", "5"},          {255, {"FF", "00"}, "FF", "FF"},
      {256, {"00", "1"}, "100", "00"},  {300, {"2C", "1"}, "12C", "2C"},     {4660, {"34", "12"}, "1234", "34"},
      {-1, {"FF", "FF"}, "FFFF", "FF"}, {-10, {"F6", "FF"}, "FFF6", "F6"},   {-32768, {"00", "80"}, "8000", "00"},
      {-5, {"FB", "FF"}, "FFFB", "FB"}, {32767, {"FF", "7F"}, "7FFF", "FF"},
  };
  for (const Row& row : rows) {
    RFState rf;
    rf.RFParams.BAND[0].g_magic = row.value;
    rf.RFParams.BAND[1].ramp_tables[0].ramp_up[0] = row.value;
    rf.RFParams.BAND[0].agc_bands[0].agc_calib = row.value;
    TMEEPROMDataMaker(rf);
    EXPECT_EQ(Entries(rf, 0, 2), row.word) << row.value;
    EXPECT_EQ(rf.EepromImage[908 + 348], row.byte) << row.value;
    EXPECT_EQ(Entries(rf, 10, 2), (std::vector<std::string>{row.lowByte, "00"})) << row.value;
  }
}

TEST(EepromImage, FillsItsReservedBytesWithZero) {
  RFState rf;
  rf.RFParams = RandomRecord(3);
  TMEEPROMDataMaker(rf);
  for (const int band : {0, 908}) {
    EXPECT_THAT(Entries(rf, band + 881, 3), Each("00"));
    EXPECT_THAT(Entries(rf, band + 906, 2), Each("00"));
    for (int i = 0; i < 10; ++i) EXPECT_EQ(Entries(rf, band + 11 + 4 * i, 1).front(), "00");
  }
}

TEST(EepromImage, LosesTheSignOfOneByteFieldsOnly) {
  RFState rf;
  rf.RFParams.BAND[0].agc_bands[0].agc_calib = -1;
  rf.RFParams.BAND[0].rx.Temp[0].agc_calib = -1;
  TMEEPROMDataMaker(rf);
  EXPECT_EQ(Entries(rf, 10, 2), (std::vector<std::string>{"FF", "00"}));
  TMEEPROMDataToRFParams(rf);
  EXPECT_EQ(rf.RFParams.BAND[0].agc_bands[0].agc_calib, 255);
  EXPECT_EQ(rf.RFParams.BAND[0].rx.Temp[0].agc_calib, -1);
}

TEST(EepromImage, IgnoresItsReservedBytesWhenRead) {
  RFState rf;
  TMEEPROMDataMaker(rf);
  for (const std::size_t offset : {11U, 881U, 882U, 883U, 906U, 907U}) rf.EepromImage[offset] = "no byte";
  EXPECT_NO_THROW(TMEEPROMDataToRFParams(rf));
}

TEST(EepromImage, StopsReadingAtTheFirstEntryThatIsNoNumber) {
  for (const std::string bad : {"", "G1", "0x", "-1", "100000000"}) {
    RFState rf;
    for (std::size_t i = 0; i < 1816; ++i) rf.EepromImage[i] = "01";
    rf.EepromImage[4] = bad;
    rf.EepromImage[5] = "";
    rf.RFParams.BAND[0].lna_switch_thr_low = -7;
    rf.RFParams.BAND[1].g_magic = -8;
    EXPECT_THROW(TMEEPROMDataToRFParams(rf), StationFailure) << bad;
    EXPECT_EQ(rf.RFParams.BAND[0].lna_att, 0x0101) << bad;
    EXPECT_EQ(rf.RFParams.BAND[0].lna_switch_thr_low, -7) << bad;
    EXPECT_EQ(rf.RFParams.BAND[1].g_magic, -8) << bad;
  }
}

}  // namespace
}  // namespace orvane
