#include "spark/SparkPaths.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace EmbeddedHV {

bool isOfCluster(const std::string& path)
{
    const auto end = path.find(":/");
    // One letter is a drive.
    return end != std::string::npos && end > 1 &&
           std::all_of(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(end),
                       [](unsigned char c) {
                           return std::isalnum(c) != 0 || c == '+' || c == '-' || c == '.';
                       });
}

std::string clusterPath(const std::string& path)
{
    if (isOfCluster(path) || path.starts_with("file:"))
        return path;
    // After "file:", two slashes begin the name of a machine.
    const std::size_t slashes = std::min(path.find_first_not_of('/'), path.size());
    return "file:" + path.substr(slashes > 1 ? slashes - 1 : 0);
}

std::string clusterPattern(const std::string& path)
{
    constexpr std::string_view kPattern = "*?[]{}\\";
    std::string escaped;
    for (const char character : clusterPath(path)) {
        if (kPattern.find(character) != std::string_view::npos)
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

std::string modelIn(const std::string& folder)
{
    return folder + "/" + kModelName;
}

} // namespace EmbeddedHV
