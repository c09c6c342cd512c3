#include "support/DottedPath.h"

#include <algorithm>

std::vector<std::string> segmentsOf(const std::string& path)
{
    std::vector<std::string> segments;
    std::size_t begin = 0;
    while (begin < path.size()) {
        const std::size_t end = std::min(path.find('.', begin), path.size());
        if (end > begin)
            segments.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return segments;
}
