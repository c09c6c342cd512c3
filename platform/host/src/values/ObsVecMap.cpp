#include "ObsVecMap.h"

#include <algorithm>
#include <compare>
#include <string_view>

namespace {

std::string_view bytesOf(const ObsVecMap::Value& value)
{
    return value.empty() ? std::string_view()
                         : std::string_view(value.front().text, value.size() * sizeof(OBS));
}

// Returns a number below, at or above 0.
int compare(const ObsVecMap::Value& left, const ObsVecMap::Value& right, bool isText)
{
    if (isText || left.empty() || right.empty())
        return bytesOf(left).compare(bytesOf(right));
    const auto order = std::strong_order(left.front().number, right.front().number);
    return std::is_lt(order) ? -1 : std::is_gt(order) ? 1 : 0;
}

// `isText` returns whether the value at an index is a text.
template <typename IsText>
bool isLess(const ObsVecMap::Key& left, const ObsVecMap::Key& right, IsText isText)
{
    for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i)
        if (const int order = compare(left[i], right[i], isText(i)); order != 0)
            return order < 0;
    return left.size() < right.size();
}

} // namespace

bool ObsVecMap::ByBytes::operator()(const Key& left, const Key& right) const
{
    return isLess(left, right, [](std::size_t) { return true; });
}

void ObsVecMap::Set(Key key, double number)
{
    _entries.insert_or_assign(std::move(key), number);
}

const double* ObsVecMap::Find(const Key& key) const
{
    const auto found = _entries.find(key);
    return found != _entries.end() ? &found->second : nullptr;
}

std::vector<ObsVecMap::Entry> ObsVecMap::Sort(const std::vector<VEXA_Format>& formats) const
{
    std::vector<Entry> sorted(_entries.begin(), _entries.end());
    std::sort(sorted.begin(), sorted.end(), [&](const Entry& left, const Entry& right) {
        return isLess(left.first, right.first, [&](std::size_t i) {
            return i < formats.size() && isTextFormat(formats[i]);
        });
    });
    return sorted;
}
