#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
}

/// A source of geometry: a shape file, a zip archive with one, or a layer of a map service.
struct MapOptions
{
    std::string source; ///< a file, or an address with "://"
    std::optional<int> layer;
};
/// Adds the argument and --layer. The options must outlive the application.
void addMap(CLI::App& app, MapOptions& options);
