#include "txcal/step_tables.h"

namespace orvane {
namespace {

/// A column of a table as it is read: powers from `from` up to `below`, and a step for each error row.
struct Column {
  const char* from;
  const char* below;
  std::vector<int> steps;  // 0: keep.
};

const std::vector<const char*> kErrorFrom{"0",   "0.1", "0.15", "0.2", "0.25", "0.3",
                                          "0.4", "0.5", "0.7",  "1",   "1.5",  "2"};

const std::vector<Column> kGsmColumns{
    {"-100", "9", {0, 1, 1, 1, 1, 1, 1, 1, 2, 3, 4, 6}},
    {"9", "15", {0, 1, 1, 1, 1, 2, 3, 4, 5, 7, 10, 11}},
    {"15", "19", {0, 2, 2, 2, 5, 6, 8, 10, 12, 14, 18, 24}},
    {"19", "23", {0, 2, 2, 4, 5, 7, 9, 12, 16, 22, 35, 40}},
    {"23", "27", {0, 4, 6, 8, 10, 12, 15, 18, 24, 32, 45, 70}},
    {"27", "30", {0, 4, 10, 12, 16, 20, 24, 32, 40, 52, 70, 100}},
    {"30", "38", {0, 5, 12, 16, 20, 26, 30, 38, 50, 80, 90, 120}},
    {"38", "50", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
};

const std::vector<Column> kDcsColumns{
    {"-100", "4", {0, 1, 1, 1, 1, 1, 1, 1, 1, 2, 3, 4}},
    {"4", "8", {0, 1, 1, 1, 1, 1, 2, 2, 2, 3, 4, 6}},
    {"8", "12", {0, 1, 1, 1, 2, 2, 2, 3, 3, 4, 6, 10}},
    {"12", "16", {0, 1, 1, 2, 2, 3, 4, 5, 6, 8, 12, 18}},
    {"16", "20", {0, 1, 2, 2, 4, 5, 10, 12, 14, 20, 28, 40}},
    {"20", "24", {0, 2, 3, 4, 7, 10, 16, 21, 30, 45, 60, 90}},
    {"24", "35", {0, 5, 10, 12, 15, 20, 24, 34, 56, 80, 100, 130}},
    {"35", "50", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
};

const std::vector<const char*> kChannelErrorFrom{"0",   "0.03", "0.05", "0.1", "0.15", "0.2", "0.25",
                                                 "0.3", "0.4",  "0.5",  "0.7", "1",    "1.5", "2"};

const std::vector<Column> kChannelColumns{
    {"-100", "24", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
    {"24", "35", {0, 1, 2, 3, 4, 5, 7, 10, 15, 20, 30, 40, 50, 60}},
    {"35", "50", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
};

constexpr Decimal4 kTick = Decimal4::FromRaw(1);

/// A step that no table holds, to see whether it is kept.
constexpr Integer kBefore = 777;

struct TableCase {
  const char* name;
  const StepTable& table;
  const std::vector<Column>& columns;
  const std::vector<const char*>& errors;
};

TEST(StepTables, HoldEveryCellAtBothEndsOfItsSpans) {
  const TableCase tables[] = {{"GSM", kGsmSteps, kGsmColumns, kErrorFrom},
                              {"DCS", kDcsSteps, kDcsColumns, kErrorFrom},
                              {"channel", kChannelSteps, kChannelColumns, kChannelErrorFrom}};
  for (const auto& [name, table, columns, errors] : tables) {
    for (const Column& column : columns) {
      ASSERT_EQ(column.steps.size(), errors.size());
      for (std::size_t row = 0; row < errors.size(); ++row) {
        const Integer expected = column.steps[row] == 0 ? kBefore : static_cast<Integer>(column.steps[row]);
        const Decimal4 errorFrom = Decimal4::FromText(errors[row]);
        const Decimal4 errorLast = row + 1 < errors.size() ? Decimal4::FromText(errors[row + 1]) - kTick : 90;
        for (const Decimal4 measured : {Decimal4::FromText(column.from), Decimal4::FromText(column.below) - kTick}) {
          for (const Decimal4 error : {errorFrom, errorLast}) {
            EXPECT_EQ(NextStep(table, measured, error, kBefore), expected)
                << name << " at " << measured.Text() << " dBm, error " << error.Text();
          }
        }
      }
    }
  }
}

TEST(Tolerance, FollowsThePowerMeasuredWhenTheSettingIsBelowPointTwo) {
  const struct {
    const char* setting;
    const char* measured;
    const char* gsm;
    const char* dcs;
  } rows[] = {
      {"0.1", "7", "0.2", "0.2"},        {"0.1", "8", "0.2", "0.2"},       {"0.1", "8.0001", "0.15", "0.15"},
      {"0.1", "14", "0.15", "0.15"},     {"0.1", "14.0001", "0.1", "0.1"}, {"0.1", "28", "0.1", "0.1"},
      {"0.1", "28.0001", "0.1", "0.05"}, {"0.1", "31", "0.1", "0.05"},     {"0.1", "31.0001", "0.05", "0.05"},
      {"0.1", "32", "0.05", "0.05"},     {"0.1", "-60", "0.2", "0.2"},     {"0.1999", "32", "0.05", "0.05"},
      {"-1", "32", "0.05", "0.05"},      {"0.2", "7", "0.2", "0.2"},       {"0.2", "32", "0.2", "0.2"},
      {"0.75", "-60", "0.75", "0.75"},   {"0.75", "33", "0.75", "0.75"},
  };
  for (const auto& row : rows) {
    const Decimal4 setting = Decimal4::FromText(row.setting);
    const Decimal4 measured = Decimal4::FromText(row.measured);
    EXPECT_EQ(ToleranceFor(kGsmTolerances, setting, measured).Text(), row.gsm) << row.setting << " " << row.measured;
    EXPECT_EQ(ToleranceFor(kDcsTolerances, setting, measured).Text(), row.dcs) << row.setting << " " << row.measured;
  }
}

}  // namespace
}  // namespace orvane
