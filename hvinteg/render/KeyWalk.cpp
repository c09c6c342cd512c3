#include "render/KeyWalk.h"

KeyWalk KeyWalk::from(const KeyLayout& layout, std::string_view start)
{
    KeyWalk walk(layout);
    for (const KeyLayout::Segment& segment : layout.segments()) {
        std::uint64_t position = 0;
        if (start.size() == layout.keyLength())
            position = CellKey::positionOf(start.substr(segment.offset, segment.width));
        walk.walkThrough(segment, position < segment.leaves ? position : 0);
    }
    return walk;
}

/// Adds a dimension that the walk changes. A dimension without leaves has no keys.
void KeyWalk::walkThrough(const KeyLayout::Segment& segment, std::uint64_t position)
{
    _digits.push_back({_key.size(), segment.width, segment.leaves, position});
    _key.append(segment.width, CellKey::kDigits.front());
    write(_digits.back());
    if (segment.leaves == 0)
        _isAtKey = false;
}

void KeyWalk::write(const Digits& digits)
{
    CellKey::write(digits.position, _key.data() + digits.offset, digits.width);
}

void KeyWalk::next()
{
    // Like an odometer: the last dimension changes fastest and carries over to the previous one.
    for (auto digits = _digits.rbegin(); digits != _digits.rend(); ++digits) {
        const bool isLast = digits->position + 1 == digits->leaves;
        digits->position = isLast ? 0 : digits->position + 1;
        write(*digits);
        if (!isLast)
            return;
    }
    _isAtKey = false;
}
