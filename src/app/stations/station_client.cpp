#include "app/stations/station_client.h"

#include <chrono>
#include <utility>

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr auto kAgain = 100ms;
/// No message of a station that is asked for nothing large is as long.
constexpr qsizetype kLongestLine = qsizetype{1} << 20;

}  // namespace

StationClient::StationClient(QString path, QObject* parent) : QObject(parent), path_(std::move(path)) {
  again_.setInterval(kAgain);
  connect(&again_, &QTimer::timeout, this, &StationClient::Try);
  connect(&socket_, &QLocalSocket::connected, this, [this] {
    again_.stop();
    onConnected();
  });
  connect(&socket_, &QLocalSocket::readyRead, this, &StationClient::Hear);
  connect(&socket_, &QLocalSocket::disconnected, this, [this] {
    heard_.clear();
    asked_.clear();
    if (wanted_) again_.start();
  });
}

StationClient::~StationClient() { socket_.disconnect(this); }

void StationClient::Begin() {
  wanted_ = true;
  again_.start();
}

void StationClient::End() {
  wanted_ = false;
  again_.stop();
  // The last words of a station that has ended are still on their way.
  while (socket_.waitForReadyRead(0)) {
  }
  socket_.abort();
}

void StationClient::Try() {
  if (socket_.state() == QLocalSocket::UnconnectedState) socket_.connectToServer(path_);
}

void StationClient::Ask(const std::string& method, const Json& params, Answered answered) {
  if (!IsConnected()) return;
  const int id = ++lastId_;
  asked_[id] = std::move(answered);
  const Json request{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}};
  socket_.write(QByteArray::fromStdString(request.dump()) + '\n');
}

void StationClient::Hear() {
  heard_ += socket_.readAll();
  for (qsizetype end = heard_.indexOf('\n'); end >= 0; end = heard_.indexOf('\n')) {
    const QByteArray line = heard_.first(end);
    heard_.remove(0, end + 1);
    Take(line);
  }
  if (heard_.size() > kLongestLine) socket_.abort();
}

void StationClient::Take(const QByteArray& line) {
  const Json message = Json::parse(line.begin(), line.end(), nullptr, false);
  if (!message.is_object()) return;
  if (message.contains("method") && message["method"].is_string()) {
    onTold(message["method"].get<std::string>(), message.value("params", Json::object()));
    return;
  }
  const Json id = message.value("id", Json());
  const auto asked = id.is_number_integer() ? asked_.find(id.get<int>()) : asked_.end();
  if (asked == asked_.end()) return;
  const Answered answered = std::move(asked->second);
  asked_.erase(asked);
  if (answered) answered(message.value("result", Json()), message.value("error", Json()));
}

}  // namespace orvane
