#include "adapters/gpib/ni488_library.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include "base/numbers.h"

namespace orvane {
namespace {

// Source: the status bits and error codes of NI-488.2.
constexpr int kErr = 0x8000;
constexpr int kTimo = 0x4000;
constexpr int kEnd = 0x2000;
constexpr int kEabo = 6;

struct ErrorRow {
  int iberr;
  std::string_view meaning;
};
constexpr std::array kErrors{
    ErrorRow{0, "the system's call failed"},
    ErrorRow{1, "the board is not the controller in charge"},
    ErrorRow{2, "nobody listens"},
    ErrorRow{3, "the board is not addressed"},
    ErrorRow{4, "an argument is not valid"},
    ErrorRow{5, "the board is not the system controller"},
    ErrorRow{kEabo, "the transfer was aborted"},
    ErrorRow{7, "there is no such board"},
    ErrorRow{8, "direct memory access failed"},
    ErrorRow{10, "another transfer is going on"},
    ErrorRow{11, "the board is not able to"},
    ErrorRow{12, "a file operation failed"},
    ErrorRow{14, "the bus failed"},
    ErrorRow{15, "serial poll bytes were lost"},
    ErrorRow{16, "the service request line is stuck"},
    ErrorRow{20, "a table failed"},
};

std::string_view MeaningOf(int iberr) {
  const auto* row = std::find_if(kErrors.begin(), kErrors.end(), [&](const ErrorRow& r) { return r.iberr == iberr; });
  return row == kErrors.end() ? "no known error" : row->meaning;
}

struct Closer {
  void operator()(void* library) const { ::dlclose(library); }
};

std::string LastFault() {
  const char* const fault = ::dlerror();
  return fault == nullptr ? "no cause is told" : fault;
}

template <class Call>
void Find(void* library, const std::string& name, const char* symbol, Call*& call) {
  call = reinterpret_cast<Call*>(::dlsym(library, symbol));
  if (call == nullptr) {
    throw Ni488Missing("the system's GPIB library " + name + " lacks " + symbol + ", which the station needs.");
  }
}

}  // namespace

bool Ni488Status::Failed() const { return (ibsta & kErr) != 0; }
// The station never stops a transfer itself, so one that was aborted is one that took too long.
bool Ni488Status::TimedOut() const { return Failed() && ((ibsta & kTimo) != 0 || iberr == kEabo); }
bool Ni488Status::End() const { return (ibsta & kEnd) != 0; }

std::string Ni488Status::Text() const {
  std::string text = "ibsta &H" + HexText(Long{ibsta});
  if (Failed()) text += ", iberr " + std::to_string(iberr) + " (" + std::string(MeaningOf(iberr)) + ")";
  return text;
}

Ni488Library Ni488Library::Load(const std::string& name) {
  std::unique_ptr<void, Closer> library(::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL));
  if (!library) throw Ni488Missing("the system's GPIB library cannot be loaded: " + LastFault() + ".");
  Ni488Library calls;
  Find(library.get(), name, "ibdev", calls.ibdev);
  Find(library.get(), name, "ibwrt", calls.ibwrt);
  Find(library.get(), name, "ibrd", calls.ibrd);
  Find(library.get(), name, "ibtmo", calls.ibtmo);
  Find(library.get(), name, "ibclr", calls.ibclr);
  Find(library.get(), name, "ibloc", calls.ibloc);
  Find(library.get(), name, "ibonl", calls.ibonl);
  Find(library.get(), name, "ibln", calls.ibln);
  Find(library.get(), name, "ThreadIbsta", calls.ThreadIbsta);
  Find(library.get(), name, "ThreadIberr", calls.ThreadIberr);
  Find(library.get(), name, "ThreadIbcntl", calls.ThreadIbcntl);
  (void)library.release();
  return calls;
}

}  // namespace orvane
