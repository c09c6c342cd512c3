#pragma once

#include <string_view>

namespace datafile {

/// What a message says if the system refuses to enlarge a file: the disk is full, or a limit is
/// reached. Null for all other values of errno.
const char* spaceFaultOf(int code);

/// The same for a message of the database, which contains the system's text.
const char* spaceFaultIn(std::string_view databaseMessage);

} // namespace datafile
