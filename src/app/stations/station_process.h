#pragma once

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>

namespace orvane {

/// The process of one station: started by hand, watched over, ended with the desk. One that has ended stays ended
/// until somebody starts it again.
class StationProcess final : public QObject {
 public:
  explicit StationProcess(QObject* parent = nullptr);
  ~StationProcess() override;

  /// The first word is the program.
  void Start(const QStringList& command);
  /// Asks it to end, and ends it where it has not within five seconds. Not waited for.
  void Stop();
  [[nodiscard]] bool Runs() const { return process_.state() != QProcess::NotRunning; }
  /// How it has ended, in a sentence, with its own last words; empty while it runs and before it was started.
  [[nodiscard]] const QString& Ending() const { return ending_; }

  std::function<void()> onEnded = [] {};
  /// A line that it said on standard error.
  std::function<void(const QString& line)> onSaid = [](const QString&) {};

 private:
  void Hear();
  void TakeEnd(const QString& how);

  QProcess process_;
  QTimer patience_;
  QByteArray heard_;
  QString lastLine_;
  QString ending_;
};

}  // namespace orvane
