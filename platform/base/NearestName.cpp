#include "base/NearestName.h"

#include <algorithm>
#include <numeric>

namespace base {
namespace {

/// Longer texts are sentences rather than names, and the time grows with the square of the length.
constexpr std::size_t kLongest = 64;

std::string lowered(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

/// The number of insertions, deletions and replacements that turn one text into the other.
std::size_t editDistance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i] == right[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
        }
    }
    return row.back();
}

} // namespace

std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates)
{
    if (name.size() > kLongest)
        return {};
    const std::string wanted = lowered(name);
    std::size_t least = std::max<std::size_t>(1, name.size() / 3) + 1;
    std::string_view nearest;
    for (const std::string_view candidate : candidates) {
        if (candidate.empty() || candidate.size() > kLongest)
            continue;
        const std::size_t distance = editDistance(wanted, lowered(candidate));
        // If every letter would have to change, the name is not similar.
        if (distance < least && distance < std::max(name.size(), candidate.size())) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest.empty() ? std::string() : "; did you mean \"" + std::string(nearest) + "\"?";
}

} // namespace base
