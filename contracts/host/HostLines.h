#pragma once

#include "HostExport.h"

/// Message code of IpcPutC for progress: the buffer holds a double, the fraction of the work that
/// is done.
inline constexpr int kIpcProgress = 79;

/// Sends a record to the host's front end: code, sub-code, length of the buffer in bytes, the
/// buffer, and the end mark -1. Ignores a record without the end mark. Any thread.
HOST_API void IpcPutC(const int* code, const int* subCode, const int* length, const void* buffer,
                      const int* end);

/// Shows a line in the host's viewer: two layout numbers, a text in the host's encoding, and its
/// length in bytes. Any thread.
HOST_API void DSPLNS(const int* first, const int* second, const char* text, const int* length);

/// Milliseconds since a fixed time; wraps around at 2^32. Any thread.
HOST_API unsigned int HostMilliseconds();
