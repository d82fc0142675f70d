#include "adapters/sql/sql_connection.h"

#include <QSqlDriver>
#include <QSqlError>
#include <atomic>
#include <cmath>
#include <limits>
#include <utility>

#include "base/text.h"

namespace orvane {
namespace {

QString NewConnectionName() {
  static std::atomic<unsigned> number{0};
  return QStringLiteral("orvane-store-%1").arg(++number);
}

}  // namespace

std::string StorableText(std::string_view text) {
  if (IsAscii(text) && text.find('\0') == std::string_view::npos) return std::string(text);
  constexpr char16_t kPictureOfZero = 0x2400;
  QString wide = QtText(text);
  wide.replace(QChar(u'\0'), QChar(kPictureOfZero));
  return wide.toStdString();
}

QString QtText(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

SqlStatement& SqlStatement::Bind(const QVariant& value) {
  query_.bindValue(bound_++, value);
  return *this;
}

SqlStatement& SqlStatement::BindKnown(std::string_view text) {
  return Bind(text.empty() ? QVariant() : QVariant(QtText(text)));
}

SqlStatement& SqlStatement::BindNumber(const std::optional<double>& number) {
  return Bind(number && !std::isnan(*number) ? QVariant(*number) : QVariant());
}

SqlStatement& SqlStatement::Execute() {
  bound_ = 0;
  if (!query_.exec()) connection_.Fail(query_.lastError());
  return *this;
}

std::size_t SqlStatement::Changed() const {
  const int rows = query_.numRowsAffected();
  return rows > 0 ? static_cast<std::size_t>(rows) : 0;
}

std::string SqlStatement::Text(int column) const { return query_.value(column).toString().toStdString(); }

std::string SqlStatement::Bytes(int column) const { return query_.value(column).toByteArray().toStdString(); }

double SqlStatement::Number(int column) const {
  return Unknown(column) ? std::numeric_limits<double>::quiet_NaN() : query_.value(column).toDouble();
}

std::optional<double> SqlStatement::MaybeNumber(int column) const {
  return Unknown(column) ? std::nullopt : std::optional(query_.value(column).toDouble());
}

SqlConnection::SqlConnection(const SqlEngine& engine, SqlPlace place, int patienceMs,
                             std::function<void(SqlConnection&)> opened)
    : engine_(engine),
      place_(std::move(place)),
      patienceMs_(patienceMs),
      opened_(std::move(opened)),
      connectionName_(NewConnectionName()) {
  try {
    Open();
  } catch (...) {
    Close();
    throw;
  }
}

SqlConnection::~SqlConnection() { Close(); }

void SqlConnection::Open() {
  place_.prepare();
  QSqlDatabase database = QSqlDatabase::addDatabase(QtText(engine_.driver), connectionName_);
  if (!database.isValid()) Fail("needs a driver that this machine has not: " + std::string(engine_.driver));
  place_.address(database);
  if (!database.open()) Fail(database.lastError());
  for (const std::string_view words : engine_.settings) Run(words);
  for (const std::string_view words : engine_.patienceSettings) Run(std::string(words) + std::to_string(patienceMs_));
  opened_(*this);
  usable_ = true;
}

void SqlConnection::Close() {
  prepared_.clear();
  usable_ = false;
  if (QSqlDatabase::contains(connectionName_)) QSqlDatabase::removeDatabase(connectionName_);
}

bool SqlConnection::MakeReady() {
  if (usable_ && !place_.moved()) return false;
  Close();
  Open();
  return true;
}

SqlStatement SqlConnection::Prepared(const std::string& words) {
  std::unique_ptr<QSqlQuery>& query = prepared_[words];
  if (!query) {
    auto made = std::make_unique<QSqlQuery>(QSqlDatabase::database(connectionName_, false));
    made->setForwardOnly(engine_.forwardOnly);
    if (!made->prepare(QtText(words))) {
      prepared_.erase(words);
      Fail(made->lastError());
    }
    query = std::move(made);
  }
  return {*this, *query};
}

void SqlConnection::Run(std::string_view words) {
  QSqlQuery query(QSqlDatabase::database(connectionName_, false));
  if (!query.exec(QtText(words))) Fail(query.lastError());
}

std::optional<std::string> SqlConnection::Ask(std::string_view words) {
  QSqlQuery query(QSqlDatabase::database(connectionName_, false));
  if (!query.exec(QtText(words))) Fail(query.lastError());
  if (!query.next()) return std::nullopt;
  return query.value(0).toString().toStdString();
}

void SqlConnection::Fail(const QSqlError& error) {
  const auto cause = engine_.causeOf(error.nativeErrorCode().toStdString());
  const std::string said = error.databaseText().simplified().toStdString();
  const std::string_view known = WordsFor(cause);
  const std::string detail = said.empty() ? error.driverText().simplified().toStdString() : said;
  const std::string words =
      "The store " + Name() + " " + (known.empty() ? "fails" : std::string(known)) + ": " + detail + ".";
  if (cause == SqlEngine::Cause::Refused) throw RecordRefused(words);
  // One that is merely held stays open: what waits for it may try again.
  held_ = cause == SqlEngine::Cause::Locked;
  usable_ = usable_ && held_;
  throw StoreFault(words);
}

void SqlConnection::Fail(std::string_view words) const {
  throw StoreFault("The store " + Name() + " " + std::string(words) + ".");
}

SqlTransaction::SqlTransaction(SqlConnection& connection, Kind kind) : connection_(connection) {
  connection_.Run(kind == Kind::Writes ? connection_.Engine().beginWriting : connection_.Engine().beginReading);
}

SqlTransaction::~SqlTransaction() {
  if (!open_) return;
  try {
    connection_.Run("ROLLBACK");
  } catch (const StoreFault&) {
    // A connection that is gone takes its transaction with it, and is opened anew.
  }
}

void SqlTransaction::Commit() {
  connection_.Run("COMMIT");
  open_ = false;
}

}  // namespace orvane
