#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "render/CellKey.h"

/// Steps through the keys of a table in order; the last dimension changes fastest.
class KeyWalk
{
public:
    /// Starts at a key. A segment that is not a valid position counts as the first position. If the
    /// start has a wrong length, the walk begins at the first key.
    static KeyWalk from(const KeyLayout& layout, std::string_view start);

    /// False behind the last key.
    bool isAtKey() const { return _isAtKey; }
    const std::string& key() const { return _key; }
    void next();

private:
    /// A dimension that the walk changes.
    struct Digits
    {
        std::size_t offset;
        unsigned width;
        std::uint64_t leaves;
        std::uint64_t position;
    };
    explicit KeyWalk(const KeyLayout& layout) : _isAtKey(!layout.segments().empty()) {}
    void walkThrough(const KeyLayout::Segment& segment, std::uint64_t position);
    void write(const Digits& digits);

    std::string _key;
    std::vector<Digits> _digits;
    bool _isAtKey;
};
