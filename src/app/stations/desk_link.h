#pragma once

#include <QLocalSocket>
#include <QObject>
#include <functional>

namespace orvane {

/// The way from a station's page to the desk that has started it, and back. Ctrl+Home leads to the desk from every
/// window of the station.
class DeskLink final : public QObject {
 public:
  /// `address` is what the desk has given on the command line: `NUMBER@SOCKET`.
  explicit DeskLink(const QString& address, QObject* parent = nullptr);

  /// The operator leaves for the desk.
  void GoToDesk();
  /// The desk asks for this station's page. Without anything else said its windows come to the front.
  std::function<void()> onFront;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLocalSocket socket_;
};

}  // namespace orvane
