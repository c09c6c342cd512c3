#pragma once

#include <string>

#include <nlohmann/json.hpp>

class InterruptWatch;

/// A JSON file that a command reads completely. Members of objects keep their order.
struct JsonFile
{
    /// Throws CommandFault: as ReadableFile does, and Input for invalid JSON, with the position.
    JsonFile(const std::string& file, const InterruptWatch& watch);

    std::string name; ///< the user's name for it
    std::string text;
    nlohmann::ordered_json json;
};
