#include "vxi11/xdr_message.h"

#include <stdexcept>

namespace orvane {

void XdrWriter::Run(xdrproc_t routine, void* value) {
  std::string place(xdr_sizeof(routine, value), '\0');
  XDR stream{};
  xdrmem_create(&stream, place.data(), static_cast<u_int>(place.size()), XDR_ENCODE);
  if (routine(&stream, value) == FALSE) throw std::length_error("a value does not fit its definition");
  bytes_.append(place, 0, XDR_GETPOS(&stream));
}

XdrReader::XdrReader(std::string_view bytes) : bytes_(bytes) {
  // The library takes the place for writable; it only reads there.
  xdrmem_create(&stream_, const_cast<char*>(bytes.data()), static_cast<u_int>(bytes.size()), XDR_DECODE);
}

std::string_view XdrReader::Rest() { return bytes_.substr(XDR_GETPOS(&stream_)); }

}  // namespace orvane
