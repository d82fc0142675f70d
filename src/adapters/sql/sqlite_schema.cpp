#include "adapters/sql/sql_schema.h"

namespace orvane {
namespace {

// Most of a record are its readings and passes: with the run's id and the same names in each row a record would take
// twice its place. They stand in rows of numbers, and the tables that others know are views, which can be written to.
const SchemaStep kFirst{{
    R"(CREATE TABLE run (
  id TEXT NOT NULL PRIMARY KEY, station TEXT, bench TEXT, bench_setup TEXT, program TEXT, kind TEXT, serial TEXT,
  part TEXT, operator TEXT, began TEXT NOT NULL, ended TEXT, seconds REAL, verdict TEXT, complete INTEGER, ending TEXT,
  reason TEXT, commands INTEGER, bytes_out INTEGER, bytes_in INTEGER))",
    "CREATE INDEX run_by_time ON run (began, id)",
    "CREATE INDEX run_by_serial ON run (serial, began)",
    "CREATE INDEX run_by_station ON run (station, began)",
    "CREATE INDEX run_by_verdict ON run (verdict, began)",
    R"(CREATE TABLE run_number (
  number INTEGER PRIMARY KEY, run TEXT NOT NULL UNIQUE REFERENCES run (id) ON DELETE CASCADE))",
    R"(CREATE TRIGGER run_numbered AFTER INSERT ON run BEGIN
  INSERT INTO run_number (run) VALUES (NEW.id);
END)",
    "CREATE TABLE name (number INTEGER PRIMARY KEY, text TEXT NOT NULL UNIQUE)",

    R"(CREATE TABLE step (
  run TEXT NOT NULL REFERENCES run (id) ON DELETE CASCADE, position INTEGER NOT NULL, name TEXT, began_s REAL,
  seconds REAL, complete INTEGER, reason TEXT, PRIMARY KEY (run, position)) WITHOUT ROWID)",

    R"(CREATE TABLE reading_row (
  run INTEGER NOT NULL REFERENCES run_number (number) ON DELETE CASCADE, position INTEGER NOT NULL,
  step INTEGER REFERENCES name (number), name INTEGER NOT NULL REFERENCES name (number), value REAL,
  unit INTEGER REFERENCES name (number), low REAL, high REAL, inside INTEGER, at_s REAL,
  PRIMARY KEY (run, position)) WITHOUT ROWID)",
    "CREATE INDEX reading_by_name ON reading_row (name, run)",
    R"(CREATE VIEW reading (run, position, step, name, value, unit, low, high, inside, at_s) AS
  SELECT n.run, r.position, s.text, m.text, r.value, u.text, r.low, r.high, r.inside, r.at_s
  FROM reading_row r JOIN run_number n ON n.number = r.run JOIN name m ON m.number = r.name
  LEFT JOIN name s ON s.number = r.step LEFT JOIN name u ON u.number = r.unit)",
    R"(CREATE TRIGGER reading_inserted INSTEAD OF INSERT ON reading BEGIN
  INSERT OR IGNORE INTO name (text)
    SELECT NEW.name UNION SELECT NEW.step WHERE NEW.step IS NOT NULL UNION SELECT NEW.unit WHERE NEW.unit IS NOT NULL;
  INSERT INTO reading_row VALUES (
    (SELECT number FROM run_number WHERE run = NEW.run), NEW.position, (SELECT number FROM name WHERE text = NEW.step),
    (SELECT number FROM name WHERE text = NEW.name), NEW.value, (SELECT number FROM name WHERE text = NEW.unit),
    NEW.low, NEW.high, NEW.inside, NEW.at_s);
END)",
    R"(CREATE TRIGGER reading_deleted INSTEAD OF DELETE ON reading BEGIN
  DELETE FROM reading_row
    WHERE run = (SELECT number FROM run_number WHERE run = OLD.run) AND position = OLD.position;
END)",
    R"(CREATE TRIGGER reading_updated INSTEAD OF UPDATE ON reading BEGIN
  DELETE FROM reading WHERE run = OLD.run AND position = OLD.position;
  INSERT INTO reading VALUES (NEW.run, NEW.position, NEW.step, NEW.name, NEW.value, NEW.unit, NEW.low, NEW.high,
    NEW.inside, NEW.at_s);
END)",

    R"(CREATE TABLE pass_row (
  run INTEGER NOT NULL REFERENCES run_number (number) ON DELETE CASCADE,
  reading INTEGER NOT NULL REFERENCES name (number), position INTEGER NOT NULL, dac INTEGER, dbm REAL, tolerance REAL,
  at_s REAL, PRIMARY KEY (run, reading, position)) WITHOUT ROWID)",
    R"(CREATE VIEW pass (run, reading, position, dac, dbm, tolerance, at_s) AS
  SELECT n.run, m.text, p.position, p.dac, p.dbm, p.tolerance, p.at_s
  FROM pass_row p JOIN run_number n ON n.number = p.run JOIN name m ON m.number = p.reading)",
    R"(CREATE TRIGGER pass_inserted INSTEAD OF INSERT ON pass BEGIN
  INSERT OR IGNORE INTO name (text) VALUES (NEW.reading);
  INSERT INTO pass_row VALUES (
    (SELECT number FROM run_number WHERE run = NEW.run), (SELECT number FROM name WHERE text = NEW.reading),
    NEW.position, NEW.dac, NEW.dbm, NEW.tolerance, NEW.at_s);
END)",
    R"(CREATE TRIGGER pass_deleted INSTEAD OF DELETE ON pass BEGIN
  DELETE FROM pass_row
    WHERE run = (SELECT number FROM run_number WHERE run = OLD.run)
      AND reading = (SELECT number FROM name WHERE text = OLD.reading) AND position = OLD.position;
END)",
    R"(CREATE TRIGGER pass_updated INSTEAD OF UPDATE ON pass BEGIN
  DELETE FROM pass WHERE run = OLD.run AND reading = OLD.reading AND position = OLD.position;
  INSERT INTO pass VALUES (NEW.run, NEW.reading, NEW.position, NEW.dac, NEW.dbm, NEW.tolerance, NEW.at_s);
END)",

    R"(CREATE TABLE box (
  run TEXT NOT NULL REFERENCES run (id) ON DELETE CASCADE, position INTEGER NOT NULL, title TEXT, text TEXT,
  answer TEXT, at_s REAL, answered_s REAL, PRIMARY KEY (run, position)) WITHOUT ROWID)",
    R"(CREATE TABLE tag (
  run TEXT NOT NULL REFERENCES run (id) ON DELETE CASCADE, key TEXT NOT NULL, value TEXT, PRIMARY KEY (run, key))
  WITHOUT ROWID)",
    "CREATE TABLE document (sha256 TEXT NOT NULL PRIMARY KEY, kind TEXT NOT NULL, bytes BLOB NOT NULL)",
    R"(CREATE TABLE run_document (
  run TEXT NOT NULL REFERENCES run (id) ON DELETE CASCADE, role TEXT NOT NULL,
  sha256 TEXT NOT NULL REFERENCES document (sha256), PRIMARY KEY (run, role)) WITHOUT ROWID)",
    "CREATE INDEX run_document_by_content ON run_document (sha256)",

    // Who writes a run that has no end yet, and the digests of the rows of one that has.
    R"(CREATE TABLE run_writer (
  run TEXT NOT NULL PRIMARY KEY REFERENCES run (id) ON DELETE CASCADE, host TEXT, boot TEXT, process INTEGER,
  started INTEGER) WITHOUT ROWID)",
    R"(CREATE TABLE run_seal (
  run TEXT NOT NULL PRIMARY KEY REFERENCES run (id) ON DELETE CASCADE, digests BLOB NOT NULL) WITHOUT ROWID)",
    R"(CREATE TABLE station (
  name TEXT NOT NULL PRIMARY KEY, seen TEXT, state TEXT, serial TEXT, step TEXT, progress REAL, box TEXT, program TEXT,
  bench TEXT, waiting INTEGER) WITHOUT ROWID)",
}};

}  // namespace

std::span<const SchemaStep> SqliteSteps() { return {&kFirst, 1}; }

}  // namespace orvane
