#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "app/trace/trace_file.h"
#include "app/trace/trace_record.h"
#include "platform/event_loop.h"

namespace orvane {

/// The record of a run: all that goes over every link, with its time. It looks on, and never fails or waits.
class Trace {
 public:
  /// @throws TraceFault when the file cannot be made.
  Trace(EventLoop& loop, const std::string& path, TraceLimits limits = {});

  /// Each disk that takes no more is told here, once.
  std::function<void(const std::string& text)> onBroken;

  /// One record, now. Failures go to the disk at once; everything else goes when 250 ms have passed, at the latest
  /// when the loop turns again then.
  void Note(std::string_view link, std::string_view event, std::string_view bytes = {}, std::string_view says = {});

 private:
  EventLoop& loop_;
  TimePoint start_;
  /// Shared with the flush that waits in the loop, which may outlive the trace.
  std::shared_ptr<TraceFile> file_;
  bool flushPosted_ = false;
};

}  // namespace orvane
