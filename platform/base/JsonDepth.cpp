#include "base/JsonDepth.h"

#include <cstdint>
#include <utility>

namespace base {
namespace {

/// The limit that is exceeded, and the position.
struct Found
{
    std::size_t place = std::string_view::npos;
    std::optional<JsonExcess> excess;
};

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

Found firstExcess(std::string_view json, const JsonBounds& bounds)
{
    int depth = 0;
    std::size_t values = 1;
    bool isInText = false;
    for (std::size_t at = 0; at < json.size(); ++at) {
        const char byte = json[at];
        const bool opens = byte == '[' || byte == '{';
        if (isInText && byte == '\\')
            ++at;
        else if (byte == '"')
            isInText = !isInText;
        else if (isInText)
            continue;
        else if (opens && ++depth > bounds.depth)
            return {at, JsonExcess::Depth};
        else if (byte == ']' || byte == '}')
            --depth;
        // A comma precedes another value, an opening bracket the first value.
        else if ((opens || byte == ',') && ++values > bounds.values)
            return {at, JsonExcess::Values};
    }
    return {};
}

} // namespace

bool JsonNesting::take(std::string_view piece)
{
    for (const char byte : piece) {
        ++_length;
        if (std::exchange(_isEscaped, false))
            continue;
        if (byte == '\n') {
            _isInText = false;
            ++_line;
        } else if (byte == '"')
            _isInText = !_isInText;
        else if (_isInText)
            _isEscaped = byte == '\\';
        else if (byte == '[' || byte == '{')
            ++_depth;
        else if ((byte == ']' || byte == '}') && _depth > 0)
            --_depth;
        if (_depth > _deepest)
            return false;
        if (_recordDepth < 0 && !isBlank(byte))
            _recordDepth = byte == '[' ? 1 : 0;
        if (_depth <= _recordDepth && !_isInText)
            measure(byte);
    }
    return true;
}

/// Takes a byte between records, or the last one of a record.
void JsonNesting::measure(char byte)
{
    const bool isEnd = byte == ',' || byte == ']' || byte == '}';
    if (!isBlank(byte) && !isEnd)
        return;
    _longestLine = longestLine();
    _longest = longestRecord();
    _length = 0;
    _recordLine = _line;
}

std::size_t placeTooDeep(std::string_view json, int deepest)
{
    return firstExcess(json, {deepest, SIZE_MAX}).place;
}

std::optional<JsonExcess> excessOf(std::string_view json, const JsonBounds& bounds)
{
    return firstExcess(json, bounds).excess;
}

} // namespace base
