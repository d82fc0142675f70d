#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>
#include <string>
#include <vector>

#include "records/record_store.h"

namespace orvane {

/// The runs that a store has, looked up beside the station's thread. It only reads the store.
class PastRuns {
 public:
  /// @param store as OpenStore takes it
  explicit PastRuns(std::string store) : store_(std::move(store)) { pool_.setMaxThreadCount(1); }
  PastRuns(const PastRuns&) = delete;
  PastRuns& operator=(const PastRuns&) = delete;
  ~PastRuns() { pool_.waitForDone(); }

  struct Listed {
    /// The newest first.
    std::vector<RunSummary> runs;
    /// Why there are none, in words; empty when nothing went wrong.
    std::string fault;
  };
  /// `told` is called in a later turn of this thread's event loop.
  void List(const RunQuery& query, std::function<void(const Listed&)> told);

  struct Reported {
    /// The page with the report; empty when there is none.
    std::string file;
    std::string fault;
  };
  /// Makes the report of a run as a page in a folder that nobody else can read.
  void Report(const std::string& run, std::function<void(const Reported&)> told);

 private:
  template <class Answer, class Work>
  void Do(Work work, std::function<void(const Answer&)> told);

  std::string store_;
  /// What is on its way to it when it goes, goes with it.
  QObject here_;
  QThreadPool pool_;
};

}  // namespace orvane
