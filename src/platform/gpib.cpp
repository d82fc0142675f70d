#include "platform/gpib.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

using namespace std::chrono_literals;

struct TimeOutRow {
  std::string_view text;
  TimePoint span;
};

// Source: the time-out codes of NI-488.2 (TNONE, T10us ... T100s), by index.
constexpr std::array kTimeOuts{
    TimeOutRow{"None", 1000s},  TimeOutRow{"10us", 10us},   TimeOutRow{"30us", 30us},   TimeOutRow{"100us", 100us},
    TimeOutRow{"300us", 300us}, TimeOutRow{"1ms", 1ms},     TimeOutRow{"3ms", 3ms},     TimeOutRow{"10ms", 10ms},
    TimeOutRow{"30ms", 30ms},   TimeOutRow{"100ms", 100ms}, TimeOutRow{"300ms", 300ms}, TimeOutRow{"1s", 1s},
    TimeOutRow{"3s", 3s},       TimeOutRow{"10s", 10s},     TimeOutRow{"30s", 30s},     TimeOutRow{"100s", 100s},
};

constexpr int kErr = 0x8000;
constexpr int kTimo = 0x4000;
constexpr int kEnol = 2;
constexpr int kEabo = 6;

}  // namespace

GpibError GpibTimeOut(const std::string& text) { return {text, kErr | kTimo, kEabo}; }
GpibError GpibAbsent(const std::string& text) { return {text, kErr, kEnol}; }

TimePoint GpibTimeOutOf(Integer code) {
  const auto last = static_cast<Integer>(kTimeOuts.size() - 1);
  return kTimeOuts[static_cast<std::size_t>(std::clamp<Integer>(code, 0, last))].span;
}

int GpibTimeOutCodeOf(TimePoint span) {
  const auto* row =
      std::find_if(kTimeOuts.begin() + 1, kTimeOuts.end(), [&](const TimeOutRow& r) { return r.span >= span; });
  return row == kTimeOuts.end() ? 0 : static_cast<int>(row - kTimeOuts.begin());
}

int GpibTimeOutCode(std::string_view text) {
  const auto* row = std::find_if(kTimeOuts.begin(), kTimeOuts.end(), [&](const auto& r) { return r.text == text; });
  return row == kTimeOuts.end() ? -1 : static_cast<int>(row - kTimeOuts.begin());
}

const std::vector<std::string>& GpibTimeOutTexts() {
  static const std::vector<std::string> texts = [] {
    std::vector<std::string> all;
    for (const auto& row : kTimeOuts) all.emplace_back(row.text);
    return all;
  }();
  return texts;
}

void CWGPIB::Configure() { session_ = bus_.Open(address); }

void CWGPIB::Guarded(const std::function<void()>& work) {
  try {
    if (!session_) throw GpibAbsent(name_ + ": there is no session. Initialize the instrument at first.");
    work();
  } catch (const GpibError& error) {
    status_ = {error.ibsta, error.iberr};
    const std::string& text = error.Text();
    if (policy_ == OnError::Fails) {
      throw StationFailure(text + "\r\nibsta = &H" + HexText(Long{error.ibsta}) +
                           ", iberr = " + std::to_string(error.iberr));
    }
    if (onErrorEvent) onErrorEvent({address.primary, bus_.RouteOf(address), text});
  }
}

void CWGPIB::Write(std::string_view text) {
  Guarded([&] {
    const TimePoint timeOut = GpibTimeOutOf(timeOutCode);
    if (IsAscii(text)) {
      session_->Write(text, timeOut);
    } else {
      session_->Write(BytesOfText(text), timeOut);
    }
    ++linesWritten_;
  });
}

std::string CWGPIB::Read() {
  std::string reply;
  Guarded([&] {
    reply = TextOfBytes(
        session_->Read(static_cast<std::size_t>(std::max<Integer>(readSize, 0)), GpibTimeOutOf(timeOutCode)));
    ++repliesRead_;
  });
  return reply;
}

void CWGPIB::Release() {
  if (!session_) return;
  // A session that is let go must not be used again, even when the instrument does not answer the farewell.
  const auto session = std::move(session_);
  try {
    session->Local();
  } catch (const GpibError& error) {
    status_ = {error.ibsta, error.iberr};
  }
}

}  // namespace orvane
