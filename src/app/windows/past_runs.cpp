#include "app/windows/past_runs.h"

#include <unistd.h>

#include <QDir>
#include <QMetaObject>
#include <filesystem>
#include <memory>

#include "adapters/disk_files.h"
#include "adapters/qt/appearance.h"
#include "adapters/sql/open_store.h"
#include "app/records/html_report.h"
#include "base/failure.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

/// A folder of this user alone. @throws std::filesystem::filesystem_error where it is somebody else's.
fs::path ReportFolder() {
  fs::path folder = fs::path(QDir::tempPath().toStdString()) / ("orvane-reports-" + std::to_string(::getuid()));
  std::error_code there;
  fs::create_directory(folder, there);
  fs::permissions(folder, fs::perms::owner_all);
  return folder;
}

PastRuns::Reported ReportOf(const std::string& store, const std::string& run) {
  const auto record = OpenStore(store, {.readOnly = true})->Load(run);
  if (!record) return {"", "There is no run " + run + "."};
  const fs::path page = ReportFolder() / (run + ".html");
  DiskFiles files("", "");
  WriteWhole(files, page.string(), OldFile::Goes, HtmlReport({*record}));
  return {page.string(), ""};
}

}  // namespace

/// Whatever fails there is told in the answer.
template <class Answer, class Work>
void PastRuns::Do(Work work, std::function<void(const Answer&)> told) {
  pool_.start([this, work = std::move(work), told = std::move(told)] {
    auto answer = std::make_shared<Answer>();
    try {
      *answer = work();
    } catch (const std::exception& fault) {
      answer->fault = fault.what();
    }
    // The call takes what it is given with it. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    QMetaObject::invokeMethod(
        &here_, [answer, told] { told(*answer); }, Qt::QueuedConnection);
  });
}

void PastRuns::List(const RunQuery& query, std::function<void(const Listed&)> told) {
  Do<Listed>(
      [store = store_, query] {
        return Listed{OpenStore(store, {.readOnly = true})->List(query), ""};
      },
      std::move(told));
}

void PastRuns::Report(const std::string& run, std::function<void(const Reported&)> told) {
  Do<Reported>([store = store_, run] { return ReportOf(store, run); }, std::move(told));
}

}  // namespace orvane
