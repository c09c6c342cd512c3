#include "components/result/CellKey.h"

#include <string_view>

namespace EmbeddedHV {
namespace {

/// The document format fixes these digits. None of them needs a backslash in JSON.
constexpr std::string_view kDigits =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
    " %&()+,-./:;<=>?@[]^_`|~";
static_assert(kDigits.size() == 86);
constexpr char kWildcard = '*';

std::size_t widthOf(std::size_t leaves)
{
    std::size_t width = 1;
    for (std::size_t reach = kDigits.size(); reach < leaves; reach *= kDigits.size())
        ++width;
    return width;
}

std::string digitsOf(std::size_t place, std::size_t width)
{
    std::string digits(width, kDigits.front());
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, place /= kDigits.size())
        *digit = kDigits[place % kDigits.size()];
    return digits;
}

} // namespace

CellKeys::CellKeys(std::vector<std::size_t> leaves) : _leaves(std::move(leaves)) {}

std::string CellKeys::at(const std::vector<std::size_t>& places) const
{
    std::string key;
    for (std::size_t i = 0; i < _leaves.size(); ++i) {
        const std::size_t width = widthOf(_leaves[i]);
        key += places[i] == kAny ? std::string(width, kWildcard) : digitsOf(places[i], width);
    }
    return key;
}

std::size_t CellKeys::cells() const
{
    std::size_t count = 1;
    for (const std::size_t leaves : _leaves)
        count *= leaves;
    return count;
}

std::size_t CellKeys::position(const std::vector<std::size_t>& places) const
{
    std::size_t result = 0;
    for (std::size_t i = 0; i < _leaves.size(); ++i)
        result = result * _leaves[i] + places[i];
    return result;
}

} // namespace EmbeddedHV
