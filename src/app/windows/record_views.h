#pragma once

#include <QToolButton>
#include <functional>
#include <string>

#include "app/keeping/record_news.h"
#include "app/windows/past_runs.h"

namespace orvane {

/// Opens a run's report before the operator, or tells why not.
class ReportOpener {
 public:
  /// @param open shows a page, as a browser does
  ReportOpener(PastRuns& runs, std::function<void(const std::string& file)> open)
      : runs_(runs), open_(std::move(open)) {}

  void Open(const std::string& run, QWidget& beside);

 private:
  PastRuns& runs_;
  std::function<void(const std::string& file)> open_;
};

/// Where the record of the last run is: its short id, which opens its report, or that it is lost and why. Nothing
/// before, and while a run is under way.
class RecordButton final : public QToolButton {
 public:
  RecordButton(RecordNews& news, ReportOpener& reports, QWidget* parent);

 private:
  void Look();

  RecordNews& news_;
};

/// The last units, newest first, each with its verdict; a click on one opens its report.
class UnitsButton final : public QToolButton {
 public:
  UnitsButton(PastRuns& runs, ReportOpener& reports, QWidget* parent);

 private:
  void Ask();
  void List(const PastRuns::Listed& listed);

  PastRuns& runs_;
  ReportOpener& reports_;
};

}  // namespace orvane
