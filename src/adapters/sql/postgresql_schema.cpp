#include "adapters/sql/sql_schema.h"

namespace orvane {
namespace {

// Ids are compared by their bytes, in the order of their time, so that one month's rows are a range of ids in every
// table. Readings and passes lean on no other row here, and nothing but their run's one row keeps them single: the
// server would look each one up, and an index of each one's place is as large as they are.
const SchemaStep kFirst{{
    "CREATE TABLE schema_version (version integer NOT NULL)",
    R"(CREATE TABLE run (
  id text COLLATE "C" NOT NULL PRIMARY KEY, station text, bench text, bench_setup text, program text, kind text,
  serial text, part text, operator text, began timestamptz NOT NULL, ended timestamptz, seconds double precision,
  verdict text, complete integer, ending text, reason text, commands bigint, bytes_out bigint, bytes_in bigint))",
    "CREATE INDEX run_by_time ON run (began, id)",
    "CREATE INDEX run_by_serial ON run (serial, began)",
    "CREATE INDEX run_by_station ON run (station, began)",
    "CREATE INDEX run_by_verdict ON run (verdict, began)",
    R"(CREATE TABLE step (
  run text COLLATE "C" NOT NULL REFERENCES run (id) ON DELETE CASCADE, position integer NOT NULL, name text,
  began_s double precision, seconds double precision, complete integer, reason text, PRIMARY KEY (run, position)))",
    R"(CREATE TABLE reading (
  run text COLLATE "C" NOT NULL, position integer NOT NULL, step text, name text NOT NULL, value double precision,
  unit text, low double precision, high double precision, inside integer, at_s double precision))",
    "CREATE INDEX reading_by_run ON reading (run)",
    "CREATE INDEX reading_by_name ON reading (name)",
    R"(CREATE TABLE pass (
  run text COLLATE "C" NOT NULL, reading text COLLATE "C" NOT NULL, position integer NOT NULL, dac integer,
  dbm double precision, tolerance double precision, at_s double precision))",
    "CREATE INDEX pass_by_run ON pass (run)",
    R"(CREATE TABLE box (
  run text COLLATE "C" NOT NULL REFERENCES run (id) ON DELETE CASCADE, position integer NOT NULL, title text, text text,
  answer text, at_s double precision, answered_s double precision, PRIMARY KEY (run, position)))",
    R"(CREATE TABLE tag (
  run text COLLATE "C" NOT NULL REFERENCES run (id) ON DELETE CASCADE, key text COLLATE "C" NOT NULL, value text,
  PRIMARY KEY (run, key)))",
    R"(CREATE TABLE document (
  sha256 text COLLATE "C" NOT NULL PRIMARY KEY, kind text NOT NULL, bytes bytea NOT NULL))",
    // What is compressed already is not tried again.
    "ALTER TABLE document ALTER COLUMN bytes SET STORAGE EXTERNAL",
    R"(CREATE TABLE run_document (
  run text COLLATE "C" NOT NULL REFERENCES run (id) ON DELETE CASCADE, role text COLLATE "C" NOT NULL,
  sha256 text COLLATE "C" NOT NULL REFERENCES document (sha256), PRIMARY KEY (run, role)))",
    "CREATE INDEX run_document_by_content ON run_document (sha256)",
    // Who writes a run that has no end yet, and the digests of the rows of one that has.
    R"(CREATE TABLE run_writer (
  run text COLLATE "C" NOT NULL PRIMARY KEY REFERENCES run (id) ON DELETE CASCADE, host text, boot text,
  process bigint, started bigint))",
    R"(CREATE TABLE run_seal (
  run text COLLATE "C" NOT NULL PRIMARY KEY REFERENCES run (id) ON DELETE CASCADE, digests bytea NOT NULL))",
    R"(CREATE TABLE station (
  name text NOT NULL PRIMARY KEY, seen timestamptz, state text, serial text, step text, progress double precision,
  box text, program text, bench text, waiting bigint))",
}};

}  // namespace

std::span<const SchemaStep> PostgresqlSteps() { return {&kFirst, 1}; }

}  // namespace orvane
