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
    return isOfCluster(path) || path.starts_with("file:") ? path : "file:" + path;
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
    return folder + "/_datamodel";
}

} // namespace EmbeddedHV
