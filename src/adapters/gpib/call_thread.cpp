#include "adapters/gpib/call_thread.h"

#include <utility>

namespace orvane {

CallThread::CallThread() : thread_([this] { Serve(); }) {}

CallThread::~CallThread() {
  {
    const std::lock_guard held(mutex_);
    ends_ = true;
  }
  asked_.notify_one();
  thread_.join();
}

void CallThread::Serve() {
  std::unique_lock held(mutex_);
  while (true) {
    asked_.wait(held, [this] { return ends_ || call_ != nullptr; });
    if (call_ == nullptr) return;
    held.unlock();
    std::exception_ptr failure;
    try {
      (*call_)();
    } catch (...) {
      failure = std::current_exception();
    }
    held.lock();
    failure_ = failure;
    call_ = nullptr;
    over_.notify_one();
  }
}

void CallThread::Run(const std::function<void()>& call, const LongWaits& waits) {
  std::unique_lock held(mutex_);
  call_ = &call;
  asked_.notify_one();
  const auto isOver = [this] { return call_ == nullptr; };
  while (!over_.wait_for(held, waits.UntilGlance(), isOver)) {
    held.unlock();
    waits.Glance();
    held.lock();
  }
  if (const std::exception_ptr failure = std::exchange(failure_, nullptr)) std::rethrow_exception(failure);
}

}  // namespace orvane
