#include "adapters/sql/conninfo.h"

#include <QString>
#include <QUrl>
#include <QUrlQuery>
#include <algorithm>
#include <cctype>

namespace orvane {
namespace {

bool IsBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

void SkipBlanks(std::string_view& rest) {
  while (!rest.empty() && IsBlank(rest.front())) rest.remove_prefix(1);
}

/// A value up to the next blank, or in quotes; a backslash takes the character behind it as it is.
std::optional<std::string> TakeValue(std::string_view& rest) {
  const bool quoted = !rest.empty() && rest.front() == '\'';
  if (quoted) rest.remove_prefix(1);
  std::string value;
  while (!rest.empty()) {
    if (quoted ? rest.front() == '\'' : IsBlank(rest.front())) break;
    if (rest.front() == '\\' && rest.size() > 1) rest.remove_prefix(1);
    value += rest.front();
    rest.remove_prefix(1);
  }
  if (!quoted) return value;
  if (rest.empty()) return std::nullopt;
  rest.remove_prefix(1);
  return value;
}

std::optional<Conninfo> OfWords(std::string_view rest) {
  Conninfo conninfo;
  for (SkipBlanks(rest); !rest.empty(); SkipBlanks(rest)) {
    const auto equals = rest.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    std::string key(rest.substr(0, equals));
    while (!key.empty() && IsBlank(key.back())) key.pop_back();
    const bool plain = std::all_of(key.begin(), key.end(), [](char c) { return (c >= 'a' && c <= 'z') || c == '_'; });
    if (key.empty() || !plain) return std::nullopt;
    rest.remove_prefix(equals + 1);
    SkipBlanks(rest);
    const auto value = TakeValue(rest);
    if (!value) return std::nullopt;
    conninfo[key] = *value;
  }
  return conninfo;
}

std::optional<Conninfo> OfUri(std::string_view behindScheme) {
  const QUrl url(QStringLiteral("postgresql:") +
                     QString::fromUtf8(behindScheme.data(), static_cast<qsizetype>(behindScheme.size())),
                 QUrl::StrictMode);
  if (!url.isValid()) return std::nullopt;
  Conninfo conninfo;
  const auto add = [&](const char* key, const QString& value) {
    if (!value.isEmpty()) conninfo[key] = value.toStdString();
  };
  add("host", url.host(QUrl::FullyDecoded));
  add("port", url.port() < 0 ? QString() : QString::number(url.port()));
  add("user", url.userName(QUrl::FullyDecoded));
  add("password", url.password(QUrl::FullyDecoded));
  add("dbname", url.path(QUrl::FullyDecoded).mid(1));
  for (const auto& [key, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded)) {
    conninfo[key.toStdString()] = value.toStdString();
  }
  return conninfo;
}

}  // namespace

std::optional<Conninfo> ConninfoOf(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return std::nullopt;
  return text.starts_with("//") ? OfUri(text) : OfWords(text);
}

std::string NameOf(const Conninfo& conninfo) {
  std::string name = "postgresql:";
  for (const char* const key : {"host", "port", "dbname"}) {
    const auto word = conninfo.find(key);
    if (word != conninfo.end()) name += (name.back() == ':' ? "" : " ") + word->first + "=" + word->second;
  }
  return name;
}

std::string QuotedValue(std::string_view value) {
  std::string quoted = "'";
  for (const char c : value) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

void BoundWaiting(Conninfo& conninfo, int patienceMs) {
  // Whole seconds, and libpq takes 1 for 2.
  constexpr int kLeastSeconds = 2;
  conninfo.emplace("connect_timeout", std::to_string(std::max(kLeastSeconds, (patienceMs + 999) / 1000)));
  conninfo.emplace("tcp_user_timeout", std::to_string(std::max(patienceMs, 1000)));
  conninfo.emplace("application_name", "orvane");
}

}  // namespace orvane
