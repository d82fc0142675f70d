#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

#include "adapters/gpib/long_waits.h"

namespace orvane {

/// A thread that makes calls which block for as long as they like, so that whoever made them can be told of the wait.
/// One call after the other: who asks for one waits until it is over.
class CallThread {
 public:
  CallThread();
  CallThread(const CallThread&) = delete;
  CallThread& operator=(const CallThread&) = delete;
  /// Behind the last call.
  ~CallThread();

  /// Whatever the call throws comes out of here.
  void Run(const std::function<void()>& call, const LongWaits& waits);

 private:
  void Serve();

  std::mutex mutex_;
  std::condition_variable asked_;
  std::condition_variable over_;
  /// The call that is asked for, until it is over.
  const std::function<void()>* call_ = nullptr;
  std::exception_ptr failure_;
  bool ends_ = false;
  std::thread thread_;
};

}  // namespace orvane
