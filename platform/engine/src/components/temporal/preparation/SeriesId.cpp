#include "components/temporal/preparation/SeriesId.h"

#include <charconv>

namespace EmbeddedHV {

std::string seriesIdOf(const std::vector<int>& codes, int metric)
{
    std::string id;
    for (const int code : codes)
        id += std::to_string(code) + "-";
    return id + std::to_string(metric);
}

std::vector<int> numbersOfSeriesId(const std::string& id, std::size_t dimensions)
{
    std::vector<int> numbers;
    const char* at = id.data();
    const char* const end = at + id.size();
    while (numbers.size() <= dimensions) {
        int number = 0;
        const auto [next, error] = std::from_chars(at, end, number);
        if (error != std::errc() || number < 1)
            return {};
        numbers.push_back(number);
        if (next == end)
            return numbers.size() == dimensions + 1 ? numbers : std::vector<int>();
        if (*next != '-')
            return {};
        at = next + 1;
    }
    return {};
}

} // namespace EmbeddedHV
