#include <map>

#include "adapters/sql/sqlite_place.h"
#include "records/store_test.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class StoreSchemaOf : public StoreTest {};
ON_BOTH_ENGINES(StoreSchemaOf);

// Other programs are held to these names and to their order.
TEST_P(StoreSchemaOf, HasTheTablesAndColumnsThatOthersKnow) {
  const std::map<std::string, std::string> tables{
      {"run",
       "id,station,bench,bench_setup,program,kind,serial,part,operator,began,ended,seconds,verdict,complete,ending,"
       "reason,"
       "commands,bytes_out,bytes_in"},
      {"step", "run,position,name,began_s,seconds,complete,reason"},
      {"reading", "run,position,step,name,value,unit,low,high,inside,at_s"},
      {"pass", "run,reading,position,dac,dbm,tolerance,at_s"},
      {"box", "run,position,title,text,answer,at_s,answered_s"},
      {"tag", "run,key,value"},
      {"document", "sha256,kind,bytes"},
      {"run_document", "run,role,sha256"},
      {"station", "name,seen,state,serial,step,progress,box,program,bench,waiting"}};
  Open();
  for (const auto& [table, columns] : tables) {
    const std::string words =
        OnSqlite() ? "SELECT group_concat(name, ',') FROM pragma_table_info('" + table + "')"
                   : "SELECT string_agg(column_name, ',' ORDER BY ordinal_position) FROM information_schema.columns "
                     "WHERE table_name = '" +
                         table + "'";
    EXPECT_EQ(Ask(words), columns) << table;
  }
  EXPECT_EQ(Ask(OnSqlite() ? "PRAGMA user_version" : "SELECT version FROM schema_version"), "1");
  if (OnSqlite()) {
    EXPECT_EQ(Ask("PRAGMA journal_mode"), "wal");
  }
}

TEST_P(StoreSchemaOf, KeepsARecordAsOthersReadIt) {
  ASSERT_TRUE(Open()->Finish(SmallRecord(1)));
  const std::string began =
      OnSqlite() ? "began" : "to_char(began AT TIME ZONE 'UTC', 'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')";
  EXPECT_EQ(Ask("SELECT id, " + began + ", verdict, complete, ending, reason IS NULL, commands FROM run"),
            IdOf(1) + "|2026-11-22T03:05:05.678Z|PASS|1|verdict|" + (OnSqlite() ? "1" : "t") + "|373");
  EXPECT_EQ(Ask("SELECT position, step, name, value, unit, low, high, inside FROM reading ORDER BY position"),
            OnSqlite()
                ? "0|receive|rx.512.level|-602.0|0.1 dB|||\n1|receive|rx.512.compensation|-6.0|half dB|-5.0|5.0|0\n"
                  "2||road.seconds|31.415|second|||"
                : "0|receive|rx.512.level|-602|0.1 dB|||\n1|receive|rx.512.compensation|-6|half dB|-5|5|0\n"
                  "2||road.seconds|31.415|second|||");
  EXPECT_EQ(Ask("SELECT reading, position, dac, dbm FROM pass WHERE run = '" + IdOf(1) + "' ORDER BY position"),
            OnSqlite() ? "tx.gsm.level.5|0|512|31.1\ntx.gsm.level.5|1|584|32.0015"
                       : "tx.gsm.level.5|0|512|31.1\ntx.gsm.level.5|1|584|32.0015");
  EXPECT_EQ(Ask("SELECT position, answer, answered_s IS NULL FROM box WHERE answer IS NULL"),
            OnSqlite() ? "1||1" : "1||t");
  EXPECT_EQ(Ask("SELECT key, value FROM tag ORDER BY key"), "line|A\nshift|late");
  // Of "900 0.5\r\n1800 0.9\r\n", by sha256sum.
  EXPECT_EQ(Ask("SELECT r.role, d.sha256, d.kind FROM run_document r JOIN document d ON d.sha256 = r.sha256 "
                "WHERE r.role = 'cable_loss'"),
            "cable_loss|da7782347445f810c859fd7d3bf7e6e6db1425df7f7c8c0a48bf26febc41636f|text");
}

TEST_P(StoreSchemaOf, KeepsEachContentOnceAndCompressedWhereThatIsShorter) {
  const auto store = Open();
  ASSERT_TRUE(store->Finish(SmallRecord(1)));
  ASSERT_TRUE(store->Finish(SmallRecord(2)));
  EXPECT_EQ(Ask("SELECT count(*) FROM document"), "3") << "two traces and one file of losses";
  EXPECT_EQ(Ask("SELECT count(*) FROM run_document"), "4");
  EXPECT_EQ(Ask("SELECT count(*) FROM document WHERE kind = 'trace+zstd' AND length(bytes) < 100"), "2");
  EXPECT_EQ(Ask("SELECT count(*) FROM document WHERE kind = 'text'"), "1") << "too short to be compressed";
}

// Tables that are views can be written to as others can.
TEST_P(StoreSchemaOf, TakesRowsThatSomebodyElseWrites) {
  const auto store = Open();
  const std::string said = Ask(
      "INSERT INTO run (id, station, bench, kind, began, ended, verdict, complete, ending) VALUES "
      "('0a', 's', 'real', 'whole', '2026-11-22T03:04:05.678Z', '2026-11-22T03:05:05.678Z', 'PASS', 1, 'verdict');"
      "INSERT INTO reading (run, position, step, name, value, unit, low, high, inside, at_s) VALUES "
      "('0a', 0, 'receive', 'rx.512.level', -600, '0.1 dB', NULL, NULL, NULL, 0.5), "
      "('0a', 1, NULL, 'road.seconds', 31, NULL, NULL, NULL, NULL, 31);"
      "INSERT INTO pass (run, reading, position, dac, dbm, tolerance, at_s) VALUES ('0a', 'tx.gsm.level.5', 0, 5, "
      "1.5, 0.3, 2);"
      "UPDATE reading SET value = value - 1 WHERE name = 'rx.512.level';"
      "DELETE FROM reading WHERE name = 'road.seconds';"
      "UPDATE pass SET dac = 6;");
  const auto record = store->Load("0a");
  ASSERT_TRUE(record) << said;
  EXPECT_EQ(record->identity.beganMs, kFirstBeganMs);
  EXPECT_EQ(record->readings,
            (std::vector<RecordedReading>{{"receive", "rx.512.level", -601, "0.1 dB", {}, {}, 0.5}}))
      << said;
  EXPECT_EQ(record->passes, (std::vector<RecordedPass>{{"tx.gsm.level.5", 0, 6, 1.5, 0.3, 2}})) << said;
  EXPECT_THAT(store->Check("0a"), IsEmpty());
  EXPECT_THAT(store->CheckStore(), IsEmpty());
}

TEST_P(StoreSchemaOf, ANewerStoreIsRefusedWithBothNumbersAndLeftAsItIs) {
  ASSERT_TRUE(Open()->Finish(SmallRecord(1)));
  static_cast<void>(Ask(OnSqlite() ? "PRAGMA user_version = 7" : "UPDATE schema_version SET version = 7"));
  for (const bool readOnly : {false, true}) {
    EXPECT_THAT(FaultOf([&] { Open({.readOnly = readOnly}); }),
                HasSubstr(" has version 7, and this program knows versions up to 1 only."));
  }
  EXPECT_EQ(Ask("SELECT count(*) FROM run"), "1");
  EXPECT_EQ(Ask(OnSqlite() ? "PRAGMA user_version" : "SELECT version FROM schema_version"), "7");
}

TEST_P(StoreSchemaOf, ProgramsThatSetItUpAtTheSameTimeAllComeThrough) {
  constexpr int kPrograms = 6;
  std::vector<pid_t> programs;
  for (int i = 0; i < kPrograms; ++i) {
    programs.push_back(Forked([&, i] {
      if (!Open({.patienceMs = 60'000})->Finish(SmallRecord(i))) throw StoreFault("left alone");
    }));
  }
  for (const pid_t program : programs) EXPECT_EQ(EndOf(program), 0);
  EXPECT_EQ(Open()->List({}).size(), static_cast<std::size_t>(kPrograms));
  EXPECT_THAT(Open()->CheckStore(), IsEmpty());
}

// With a first version and a second one of the test's own.
class SchemaStepsOf : public StoreTest {
 protected:
  void TakeUpBy(std::size_t steps) const {
    static const SchemaStep kSteps[] = {
        {{"CREATE TABLE schema_version (version integer)", "CREATE TABLE thing (a text)"}},
        {{"ALTER TABLE thing ADD COLUMN b text", "UPDATE thing SET b = a || '!'"}},
        {{"ALTER TABLE thing ADD COLUMN c text", "UPDATE absent SET c = b"}},
    };
    SqlConnection(SqliteEngine(), SqlitePlace(folder_.Path("records.sqlite"), false, 60'000), 60'000,
                  [&](SqlConnection& connection) { TakeUp(connection, std::span(kSteps).first(steps)); });
  }
};
INSTANTIATE_TEST_SUITE_P(On, SchemaStepsOf, testing::Values("Sqlite"), NameOfEngine);

TEST_P(SchemaStepsOf, AnOlderStoreIsTakenUpWithWhatIsInIt) {
  TakeUpBy(1);
  static_cast<void>(Ask("INSERT INTO thing (a) VALUES ('kept')"));
  std::vector<pid_t> programs;
  for (int i = 0; i < 4; ++i) programs.push_back(Forked([&] { TakeUpBy(2); }));
  for (const pid_t program : programs) EXPECT_EQ(EndOf(program), 0);
  EXPECT_EQ(Ask("SELECT a, b FROM thing"), "kept|kept!");
  EXPECT_EQ(Ask("PRAGMA user_version"), "2");
}

TEST_P(SchemaStepsOf, AStepThatFailsLeavesTheStoreAsItWas) {
  TakeUpBy(1);
  static_cast<void>(Ask("INSERT INTO thing (a) VALUES ('kept')"));
  EXPECT_THAT(FaultOf([&] { TakeUpBy(3); }), HasSubstr("no such table: absent"));
  EXPECT_EQ(Ask("SELECT * FROM thing"), "kept");
  EXPECT_EQ(Ask("PRAGMA user_version"), "1");
}

}  // namespace
}  // namespace orvane::test
