#pragma once

#include <QLocalSocket>
#include <QObject>
#include <QTimer>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace orvane {

/// A client of one station's automation port, on its socket file. It comes as soon as the station listens, and again
/// where the connection was lost.
class StationClient final : public QObject {
 public:
  using Json = nlohmann::ordered_json;
  /// Of an answer: its result, or its error, the other one null.
  using Answered = std::function<void(const Json& result, const Json& error)>;

  explicit StationClient(QString path, QObject* parent = nullptr);
  ~StationClient() override;

  /// Tries until it has a connection, and whenever that is lost.
  void Begin();
  /// What was said to it until now is heard.
  void End();
  [[nodiscard]] bool IsConnected() const { return socket_.state() == QLocalSocket::ConnectedState; }

  void Ask(const std::string& method, const Json& params, Answered answered);

  std::function<void()> onConnected = [] {};
  /// A notification.
  std::function<void(const std::string& method, const Json& params)> onTold = [](const auto&, const auto&) {};

 private:
  void Try();
  void Hear();
  void Take(const QByteArray& line);

  QString path_;
  QLocalSocket socket_;
  QTimer again_;
  bool wanted_ = false;
  QByteArray heard_;
  int lastId_ = 0;
  std::map<int, Answered> asked_;
};

}  // namespace orvane
