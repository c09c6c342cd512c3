#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "datafile/FaultParts.h"

namespace datafile {

/// Converts the database's messages about unreadable CSV files to our own wording.

/// Whether `text` contains `part`.
bool contains(std::string_view text, std::string_view part);

/// The text between two marks; nullopt if `begin` is missing. If `end` is missing, the rest of the
/// text.
std::optional<std::string> between(const std::string& text, std::string_view begin,
                                   std::string_view end);

/// The first line of a database message, without the name of its class.
std::string headline(const std::string& databaseMessage);

/// The line number in a message about a CSV record; nullopt for another message.
std::optional<std::uint64_t> csvLine(const std::string& databaseMessage);

/// The reason in a message about a CSV record.
std::string csvReason(const std::string& databaseMessage);

/// The parts of an error of the step read about a CSV record on this line.
FaultParts csvParts(const std::string& path, std::uint64_t line,
                    const std::string& databaseMessage);

} // namespace datafile
