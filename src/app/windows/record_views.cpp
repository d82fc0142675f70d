#include "app/windows/record_views.h"

#include <QDateTime>
#include <QMenu>
#include <QPointer>
#include <QToolTip>

#include "adapters/qt/appearance.h"
#include "app/desk.h"
#include "app/records/run_words.h"

namespace orvane {
namespace {

constexpr std::size_t kUnitsListed = 10;

QString ClockOf(const RunIdentity& run) {
  const QDateTime began = QDateTime::fromMSecsSinceEpoch(run.beganMs);
  const bool today = began.date() == QDate::currentDate();
  return began.toString(today ? "HH:mm:ss" : "yyyy-MM-dd HH:mm");
}

/// "14:03:12  A-17  PASS"; a unit without a number has its record's.
QString WordsOf(const RunSummary& run) {
  const std::string_view unit = run.identity.serial.empty() ? ShortId(run.identity.id) : run.identity.serial;
  QString words = ClockOf(run.identity) + "   " + ToQt(unit) + "   " + ToQt(OutcomeText(run.end));
  // A menu takes it for the mark of a key.
  return words.replace("&", "&&");
}

}  // namespace

void ReportOpener::Open(const std::string& run, QWidget& beside) {
  runs_.Report(run, [open = open_, seen = QPointer(&beside)](const PastRuns::Reported& report) {
    if (report.fault.empty()) return open(report.file);
    if (seen) QToolTip::showText(seen->mapToGlobal(QPoint()), ToQt(report.fault), seen);
  });
}

RecordButton::RecordButton(RecordNews& news, ReportOpener& reports, QWidget* parent)
    : QToolButton(parent), news_(news) {
  setObjectName("statusRecord");
  setAutoRaise(true);
  setFocusPolicy(Qt::NoFocus);
  connect(this, &QToolButton::clicked, this, [this, &reports] {
    if (news_.Last() && !news_.Last()->run.empty()) reports.Open(news_.Last()->run, *this);
  });
  // Within a statement of the station nothing may reach for the display, which may have gone.
  news.changed.Connect(ShownSoon(*this, [this] { Look(); }));
  Look();
}

void RecordButton::Look() {
  const std::optional<Kept>& kept = news_.Last();
  setVisible(kept.has_value());
  if (!kept) return;
  const QString fault = ToQt(OneLine(kept->fault));
  const bool isReadable = kept->isKept && kept->fault.empty();
  if (isReadable) {
    setText(tr("Record %1").arg(ToQt(ShortId(kept->run))));
    setToolTip(tr("Record %1: a click opens its report.").arg(ToQt(kept->run)));
  } else {
    setText(kept->run.empty() ? tr("Records: %1").arg(fault)
            : kept->isKept    ? tr("The record lies beside the store.")
                              : tr("The record is lost."));
    setToolTip(fault);
  }
  setAccessibleName(text());
  setEnabled(isReadable);
}

UnitsButton::UnitsButton(PastRuns& runs, ReportOpener& reports, QWidget* parent)
    : QToolButton(parent), runs_(runs), reports_(reports) {
  setObjectName("statusUnits");
  setText(tr("Last units"));
  setToolTip(tr("The last units, newest first: a click on one opens its report."));
  setAutoRaise(true);
  setFocusPolicy(Qt::NoFocus);
  connect(this, &QToolButton::clicked, this, [this] { Ask(); });
}

void UnitsButton::Ask() {
  RunQuery query;
  query.limit = kUnitsListed;
  runs_.List(query, [this, seen = QPointer(this)](const PastRuns::Listed& listed) {
    if (seen) List(listed);
  });
}

void UnitsButton::List(const PastRuns::Listed& listed) {
  auto* menu = new QMenu(this);
  menu->setObjectName("lastUnits");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const RunSummary& run : listed.runs) {
    QAction* const row = menu->addAction(WordsOf(run));
    row->setToolTip(ToQt(run.end ? run.end->reason : ""));
    connect(row, &QAction::triggered, this, [this, id = run.identity.id] { reports_.Open(id, *this); });
  }
  menu->setToolTipsVisible(true);
  if (listed.runs.empty()) {
    menu->addAction(listed.fault.empty() ? tr("No unit has run yet.") : ToQt(OneLine(listed.fault)))
        ->setEnabled(false);
  }
  menu->popup(mapToGlobal(QPoint(0, -menu->sizeHint().height())));
}

}  // namespace orvane
