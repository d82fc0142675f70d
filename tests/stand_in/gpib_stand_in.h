#pragma once

#include <cstddef>

extern "C" {

int ibdev(int board, int primary, int secondary, int timeOutCode, int endWithLastByte, int endOfString);
int ibwrt(int number, const void* bytes, std::size_t count);
int ibrd(int number, void* bytes, std::size_t count);
int ibtmo(int number, int timeOutCode);
int ibclr(int number);
int ibloc(int number);
int ibonl(int number, int online);
int ibln(int number, int primary, int secondary, short* listens);
int ThreadIbsta();
int ThreadIberr();
long ThreadIbcntl();

/// Takes the environment up anew; counts of calls begin at 1 again. For tests that load it themselves.
void GpibStandInBegin();
/// Devices that were opened and not closed.
int GpibStandInOpenDevices();
}
