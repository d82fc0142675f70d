// Bytes from a client of the bench's gateway. The first one says in what pieces they come. Their records must be
// those of a plain reading. Each is then taken as a call: its first byte is the procedure, the rest its arguments.
// What the codec reads it must write and read again to the same bytes, and every call gets the answer that its
// procedure has.

#include <rpc/rpc_msg.h>

#include <initializer_list>

#include "bench/bench.h"
#include "bench/plain_records.h"
#include "bench/wires/gateway_core.h"
#include "bench/wires/record_reader.h"
#include "require.h"

namespace {

using namespace orvane;
using namespace orvane::bench;
using orvane::fuzz::Require;

constexpr std::size_t kLongestMessage = 256;
constexpr int kCaller = 1;

struct Reading {
  std::string rewritten;
  bool whole;  ///< nothing was left
};

/// No value when the bytes are none of that type.
template <auto routine>
std::optional<Reading> Read(std::string_view bytes) {
  XdrReader reader(bytes);
  auto value = reader.Take(routine);
  if (!value) return std::nullopt;
  return Reading{XdrWriter().Put(routine, **value).Bytes(), reader.Rest().empty()};
}

/// Whether the bytes are of that type.
template <auto routine>
bool Readable(std::string_view bytes) {
  const auto once = Read<routine>(bytes);
  if (!once) return false;
  const auto again = Read<routine>(once->rewritten);
  Require(again && again->whole && again->rewritten == once->rewritten, "the codec does not read what it wrote");
  return true;
}

template <auto routine>
bool IsResult(std::string_view bytes) {
  const auto result = Read<routine>(bytes);
  return result && result->whole && result->rewritten == bytes;
}

bool Anything(std::string_view) { return true; }

struct Procedure {
  std::uint32_t number;
  bool (*takes)(std::string_view arguments);
  bool (*gives)(std::string_view result);
};

constexpr Procedure kProcedures[] = {
    {CREATE_LINK, &Readable<&xdr_Create_LinkParms>, &IsResult<&xdr_Create_LinkResp>},
    {DEVICE_WRITE, &Readable<&xdr_Device_WriteParms>, &IsResult<&xdr_Device_WriteResp>},
    {DEVICE_READ, &Readable<&xdr_Device_ReadParms>, &IsResult<&xdr_Device_ReadResp>},
    {DEVICE_READSTB, &Readable<&xdr_Device_GenericParms>, &IsResult<&xdr_Device_ReadStbResp>},
    {DEVICE_TRIGGER, &Anything, &IsResult<&xdr_Device_Error>},
    {DEVICE_CLEAR, &Readable<&xdr_Device_GenericParms>, &IsResult<&xdr_Device_Error>},
    {DEVICE_REMOTE, &Readable<&xdr_Device_GenericParms>, &IsResult<&xdr_Device_Error>},
    {DEVICE_LOCAL, &Readable<&xdr_Device_GenericParms>, &IsResult<&xdr_Device_Error>},
    {DEVICE_LOCK, &Readable<&xdr_Device_LockParms>, &IsResult<&xdr_Device_Error>},
    {DEVICE_UNLOCK, &Readable<&xdr_Device_Link>, &IsResult<&xdr_Device_Error>},
    {DEVICE_ENABLE_SRQ, &Anything, &IsResult<&xdr_Device_Error>},
    {DEVICE_DOCMD, &Anything, &IsResult<&xdr_Device_DocmdResp>},
    {DESTROY_LINK, &Readable<&xdr_Device_Link>, &IsResult<&xdr_Device_Error>},
    {CREATE_INTR_CHAN, &Anything, &IsResult<&xdr_Device_Error>},
    {DESTROY_INTR_CHAN, &Anything, &IsResult<&xdr_Device_Error>},
};

bool IsKnownError(std::string_view result) {
  using namespace orvane::vxi11;
  auto error = XdrReader(result).Take(&xdr_Device_ErrorCode);
  for (const Error known : {kNoError, kNotAccessible, kInvalidLink, kNoChannel, kNotSupported, kOutOfResources,
                            kLockedByAnother, kNoLockHeld, kIoTimeOut, kIoError}) {
    if (error && **error == known) return true;
  }
  return false;
}

void Judge(const RpcOutcome& outcome, std::uint32_t procedure, std::string_view arguments) {
  for (const Procedure& row : kProcedures) {
    if (row.number != procedure) continue;
    const bool taken = row.takes(arguments);
    Require(taken != std::holds_alternative<RpcBadArguments>(outcome), "arguments are good or bad, not both");
    if (const auto* result = std::get_if<RpcResult>(&outcome)) {
      Require(row.gives(result->bytes) && IsKnownError(result->bytes), "the result is none of this procedure");
    }
    Require(!std::holds_alternative<RpcNoSuchProcedure>(outcome), "a procedure is missing");
    return;
  }
  Require(std::holds_alternative<RpcNoSuchProcedure>(outcome), "there is a procedure that is none");
}

std::vector<std::string> RecordsOf(std::string_view bytes, std::size_t piece) {
  RecordReader reader(kLongestMessage);
  orvane::bench::test::Records records;
  for (std::size_t at = 0; at < bytes.size(); at += piece) {
    reader.Feed(bytes.substr(at, piece));
    while (auto message = reader.Next()) records.messages.push_back(std::move(*message));
  }
  records.spoilt = reader.Spoilt();
  Require(records == orvane::bench::test::PlainRecords(bytes, kLongestMessage), "records differ");
  return records.messages;
}

std::string CreateLink(const char* device) {
  return XdrWriter().Put(&xdr_Create_LinkParms, Create_LinkParms{0, FALSE, 0, const_cast<char*>(device)}).Bytes();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  // Built once, with its unit and tables; what an input leaves in its instruments is cleared ahead of the next one.
  static Bench bench{BenchOptions{}};
  for (InstrumentLine* instrument :
       {static_cast<InstrumentLine*>(&bench.testSet), static_cast<InstrumentLine*>(&bench.supply)}) {
    for (const char* line : {"*CLS", "*RST"}) (void)instrument->Take(line);
    instrument->Clear();
  }
  GatewayCore core{{{{"gpib0,1"}, bench.testSet}, {{"gpib0,2"}, bench.supply}}};
  // Links 1 and 2, so that a call finds one.
  for (const char* device : {"gpib0,1", "gpib0,2"}) (void)core.Answer({CREATE_LINK, CreateLink(device), kCaller, {}});
  for (const std::string& message : RecordsOf(bytes, data[0] == 0 ? bytes.size() : data[0])) {
    (void)Readable<&xdr_callmsg>(message);
    if (message.empty()) continue;
    const auto procedure = static_cast<std::uint8_t>(message[0]);
    const std::string arguments = message.substr(1);
    Judge(core.Answer({procedure, arguments, kCaller, Reactor::Now()}), procedure, arguments);
  }
  core.Gone(kCaller);
  return 0;
}
