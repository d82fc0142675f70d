#pragma once

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>
#include <functional>
#include <map>

namespace orvane {

/// The desk's end of the wire to the pages of its stations, on a socket that its user alone may use.
class DeskServer final : public QObject {
 public:
  explicit DeskServer(QObject* parent = nullptr);

  /// @return false: nobody can listen there.
  [[nodiscard]] bool Listen(const QString& path);
  /// The page of that station is to come to the front. @return false: it has none.
  bool BringToFront(int station);

  /// An operator has left a station's page for the desk.
  std::function<void()> onDeskAskedFor = [] {};

 private:
  void Welcome();
  void Hear(QLocalSocket& page);

  QLocalServer server_;
  std::map<int, QPointer<QLocalSocket>> pages_;
};

}  // namespace orvane
