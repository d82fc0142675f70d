#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/sql/sql_engine.h"
#include "records/record_store.h"

namespace orvane {

/// A record that a store refuses as it is, whenever it is tried.
class RecordRefused : public StoreFault {
  using StoreFault::StoreFault;
};

/// Where a store is.
struct SqlPlace {
  /// As it stands in every fault: "/var/lib/orvane/records.sqlite".
  std::string name;
  /// Says to a connection that is not open yet where it goes.
  std::function<void(QSqlDatabase&)> address;
  /// Makes what has to be there ahead of opening, and finds out whether what is open is still what lies there.
  /// @throws StoreFault.
  std::function<void()> prepare;
  std::function<bool()> moved;
};

/// One prepared statement while it is used.
class SqlStatement {
 public:
  SqlStatement(class SqlConnection& connection, QSqlQuery& query) : connection_(connection), query_(query) {}
  SqlStatement(const SqlStatement&) = delete;
  SqlStatement& operator=(const SqlStatement&) = delete;
  ~SqlStatement() { query_.finish(); }

  /// The value of the next place.
  SqlStatement& Bind(const QVariant& value);
  /// An empty text is one that is not known.
  SqlStatement& BindKnown(std::string_view text);
  /// What is not a number is not known.
  SqlStatement& BindNumber(const std::optional<double>& number);
  /// @throws StoreFault.
  SqlStatement& Execute();
  [[nodiscard]] bool Next() { return query_.next(); }
  [[nodiscard]] bool ChangedNothing() const { return query_.numRowsAffected() == 0; }
  [[nodiscard]] std::size_t Changed() const;

  [[nodiscard]] bool Unknown(int column) const { return query_.isNull(column); }
  [[nodiscard]] std::string Text(int column) const;
  [[nodiscard]] std::string Bytes(int column) const;
  [[nodiscard]] std::int64_t Whole(int column) const { return query_.value(column).toLongLong(); }
  /// Not a number where none is known.
  [[nodiscard]] double Number(int column) const;
  [[nodiscard]] std::optional<double> MaybeNumber(int column) const;

 private:
  SqlConnection& connection_;
  QSqlQuery& query_;
  int bound_ = 0;
};

/// A connection of its own to one store, for the thread that made it. Behind a failure it is opened anew when it is
/// asked for the next time.
class SqlConnection {
 public:
  /// `opened`: runs behind each opening. @throws StoreFault.
  SqlConnection(const SqlEngine& engine, SqlPlace place, int patienceMs, std::function<void(SqlConnection&)> opened);
  SqlConnection(const SqlConnection&) = delete;
  SqlConnection& operator=(const SqlConnection&) = delete;
  ~SqlConnection();

  [[nodiscard]] const SqlEngine& Engine() const { return engine_; }
  [[nodiscard]] const std::string& Name() const { return place_.name; }
  [[nodiscard]] int PatienceMs() const { return patienceMs_; }
  /// Whether the last failure was that somebody else holds the store.
  [[nodiscard]] bool IsHeld() const { return held_; }
  /// Ahead of each thing that is asked of the store. @return whether it was opened anew. @throws StoreFault.
  bool MakeReady();

  [[nodiscard]] SqlStatement Prepared(const std::string& words);
  /// One statement without values, kept by nobody.
  void Run(std::string_view words);
  /// The first column of its first row; no value for no row.
  [[nodiscard]] std::optional<std::string> Ask(std::string_view words);

  /// The failure of this error. @throws StoreFault, or RecordRefused.
  [[noreturn]] void Fail(const QSqlError& error);
  [[noreturn]] void Fail(std::string_view words) const;

 private:
  void Open();
  void Close();

  const SqlEngine& engine_;
  SqlPlace place_;
  int patienceMs_;
  std::function<void(SqlConnection&)> opened_;
  QString connectionName_;
  std::map<std::string, std::unique_ptr<QSqlQuery>, std::less<>> prepared_;
  bool usable_ = false;
  bool held_ = false;
};

/// What is written in it is there whole or not at all: unless it is committed, nothing is. What is read in it is of
/// one moment.
class SqlTransaction {
 public:
  enum class Kind { Writes, Reads };
  explicit SqlTransaction(SqlConnection& connection, Kind kind = Kind::Writes);
  SqlTransaction(const SqlTransaction&) = delete;
  SqlTransaction& operator=(const SqlTransaction&) = delete;
  ~SqlTransaction();
  void Commit();

 private:
  SqlConnection& connection_;
  bool open_ = true;
};

/// A text as every engine takes it: UTF-8, the character of number 0 shown by its picture.
[[nodiscard]] std::string StorableText(std::string_view text);
[[nodiscard]] QString QtText(std::string_view text);

}  // namespace orvane
