#pragma once

#include <minizip/ioapi.h>

/// How minizip reaches the files of archives: by paths in the host's encoding and spelling, which
/// its own functions would hand to the operating system as they are. Any thread.
zlib_filefunc_def hostFileFunctions();
