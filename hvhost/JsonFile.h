#pragma once

#include <string>

#include <nlohmann/json.hpp>

class InterruptWatch;

/// A JSON file that a command reads whole. Members of objects keep their order.
struct JsonFile
{
    /// Throws CommandFault: as ReadableFile, and Input for a text that is no JSON, with the place
    /// where it is not.
    JsonFile(const std::string& file, const InterruptWatch& watch);

    std::string name; ///< what the user calls it
    std::string text;
    nlohmann::ordered_json json;
};
