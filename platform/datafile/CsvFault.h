#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace datafile {

/// What the database says of a CSV file that it cannot read, in words of ours.

/// Whether the text has the part.
bool contains(std::string_view text, std::string_view part);

/// What stands between two marks; nullopt if the first one is not there. An `end` that is not there
/// stands for the end of the text.
std::optional<std::string> between(const std::string& text, std::string_view begin,
                                   std::string_view end);

/// The first line of a database message, without the name of its class.
std::string headline(const std::string& databaseMessage);

/// The number of the line that a message about a CSV record speaks of; of any other message
/// nothing.
std::optional<std::string> csvLine(const std::string& databaseMessage);

/// What is wrong with that record.
std::string csvReason(const std::string& databaseMessage);

} // namespace datafile
