#include "base/NearestName.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/AsciiText.h"

namespace base {
namespace {

/// Longer texts are sentences rather than names, and the time grows with the square of the length.
constexpr std::size_t kLongest = 64;
/// Fewer letters are the beginning of too many names.
constexpr std::size_t kShortestBeginning = 3;

/// The number of insertions, deletions, replacements and exchanges of neighbours that turn one text
/// into the other.
std::size_t editDistance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> before;
    std::vector<std::size_t> last;
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        before = std::exchange(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row.back();
}

/// The shortest candidate that begins with the name, or empty.
std::string_view completed(const std::string& name, const std::vector<std::string_view>& candidates)
{
    std::string_view shortest;
    for (const std::string_view candidate : candidates)
        if (lowerCase(candidate.substr(0, name.size())) == name &&
            (shortest.empty() || candidate.size() < shortest.size()))
            shortest = candidate;
    return shortest;
}

} // namespace

std::string_view nearestName(std::string_view name, const std::vector<std::string_view>& candidates)
{
    if (name.size() > kLongest)
        return {};
    const std::string wanted = lowerCase(name);
    std::string_view nearest;
    if (name.size() >= kShortestBeginning)
        nearest = completed(wanted, candidates);
    if (!nearest.empty())
        return nearest;
    std::size_t least = std::max<std::size_t>(1, name.size() / 3) + 1;
    for (const std::string_view candidate : candidates) {
        if (candidate.empty() || candidate.size() > kLongest)
            continue;
        const std::size_t distance = editDistance(wanted, lowerCase(candidate));
        // If every letter would have to change, the name is not similar.
        if (distance < least && distance < std::max(name.size(), candidate.size())) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates)
{
    const std::string_view nearest = nearestName(name, candidates);
    return nearest.empty() ? std::string() : "; did you mean \"" + std::string(nearest) + "\"?";
}

} // namespace base
