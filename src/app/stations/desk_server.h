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
  /// Which unit is under way at a station or comes next there; empty for none.
  std::function<void(int station, const QString& serial)> onUnit = [](int, const QString&) {};

 private:
  void Welcome();
  void Hear(QLocalSocket& page);
  void TakeUnit(const QLocalSocket& page, const QString& serial);

  QLocalServer server_;
  std::map<int, QPointer<QLocalSocket>> pages_;
};

}  // namespace orvane
