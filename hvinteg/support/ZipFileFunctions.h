#pragma once

#include <minizip/ioapi.h>

/// File functions for minizip that take paths in the host's encoding and spelling. minizip's own
/// functions would pass them to the operating system unchanged. Any thread.
zlib_filefunc_def hostFileFunctions();
