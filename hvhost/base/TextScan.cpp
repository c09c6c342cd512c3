#include "hvhost/base/TextScan.h"

#include <charconv>

bool TextScan::skip(std::string_view expected)
{
    if (!_rest.starts_with(expected))
        return false;
    _rest.remove_prefix(expected.size());
    return true;
}

std::optional<std::string_view> TextScan::until(std::string_view mark)
{
    return takeTo(_rest.find(mark), mark.size());
}

std::optional<std::string_view> TextScan::untilLast(std::string_view mark)
{
    return takeTo(_rest.rfind(mark), mark.size());
}

std::optional<std::string_view> TextScan::takeTo(std::size_t begin, std::size_t markSize)
{
    if (begin == std::string_view::npos)
        return std::nullopt;
    const std::string_view taken = _rest.substr(0, begin);
    _rest.remove_prefix(begin + markSize);
    return taken;
}

std::optional<std::size_t> TextScan::number()
{
    std::size_t value = 0;
    const char* const end = _rest.data() + _rest.size();
    const auto [last, error] = std::from_chars(_rest.data(), end, value);
    if (error != std::errc())
        return std::nullopt;
    _rest.remove_prefix(static_cast<std::size_t>(last - _rest.data()));
    return value;
}
