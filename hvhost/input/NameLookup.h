#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// What a user names, for the messages of a failed look-up.
struct NamedThing
{
    std::string origin;           ///< begins the message: an option with its value, or a file
    std::string word{"variable"}; ///< what has the name
    std::string hint{"hvhost info lists the variables"}; ///< if no name is similar
};

/// The place of a name that the user wrote among the known names. An exact match wins, then the
/// only name that differs just in letter case. Throws CommandFault (Usage) if no name matches, with
/// the most similar one, or if several names differ from it just in letter case, with all of them.
/// Names are UTF-8.
std::size_t placeOfName(const std::string& name, const std::vector<std::string>& known,
                        const NamedThing& thing);
