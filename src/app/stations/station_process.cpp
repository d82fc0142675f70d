#include "app/stations/station_process.h"

#include <sys/prctl.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>

namespace orvane {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 5s;
constexpr qsizetype kLongestLine = 4096;

}  // namespace

StationProcess::StationProcess(QObject* parent) : QObject(parent) {
  process_.setStandardInputFile(QProcess::nullDevice());
  process_.setStandardOutputFile(QProcess::nullDevice());
  // A desk that is killed leaves no stations behind that nobody can get at.
  process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
  patience_.setSingleShot(true);
  connect(&patience_, &QTimer::timeout, &process_, &QProcess::kill);
  connect(&process_, &QProcess::readyReadStandardError, this, &StationProcess::Hear);
  connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) TakeEnd(tr("It could not be started: %1.").arg(process_.errorString()));
  });
  connect(&process_, &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
    Hear();
    TakeEnd(how == QProcess::NormalExit
                ? tr("It ended with status %1.").arg(status)
                : tr("It was ended by signal %1 (%2).").arg(status).arg(QString::fromLocal8Bit(strsignal(status))));
  });
}

StationProcess::~StationProcess() {
  process_.disconnect(this);
  if (!Runs()) return;
  process_.kill();
  process_.waitForFinished();
}

void StationProcess::Start(const QStringList& command) {
  if (Runs()) return;
  ending_.clear();
  lastLine_.clear();
  heard_.clear();
  process_.start(command.front(), command.mid(1));
}

void StationProcess::Stop() {
  if (!Runs() || patience_.isActive()) return;
  process_.terminate();
  patience_.start(kPatience);
}

void StationProcess::Hear() {
  heard_ += process_.readAllStandardError();
  for (qsizetype end = heard_.indexOf('\n'); end >= 0; end = heard_.indexOf('\n')) {
    const QString line = QString::fromUtf8(heard_.first(std::min(end, kLongestLine))).trimmed();
    heard_.remove(0, end + 1);
    if (line.isEmpty()) continue;
    lastLine_ = line;
    onSaid(line);
  }
  // No line of a station is as long: what stands there is of no use to anybody.
  if (heard_.size() > kLongestLine) heard_.clear();
}

void StationProcess::TakeEnd(const QString& how) {
  patience_.stop();
  ending_ = lastLine_.isEmpty() ? how : how + " " + lastLine_;
  onEnded();
}

}  // namespace orvane
