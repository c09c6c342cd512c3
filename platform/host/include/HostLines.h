#pragma once

#include "HostExport.h"

/// Message code of IpcPutC: the buffer holds one double, the part of the work that is done.
inline constexpr int kIpcProgress = 79;

/// Sends one record to the host's front end: a code, a sub-code, the length in bytes of the buffer,
/// the buffer, and an end mark of -1. A record without that mark is not sent. Any thread.
HOST_API void IpcPutC(const int* code, const int* subCode, const int* length, const void* buffer,
                      const int* end);

/// Shows lines in the host's viewer: two layout numbers, a text in the host's encoding, its length
/// in bytes. Any thread.
HOST_API void DSPLNS(const int* first, const int* second, const char* text, const int* length);

/// Milliseconds of wall time since some fixed moment; wraps around after 2^32.
HOST_API unsigned int HostMilliseconds();
