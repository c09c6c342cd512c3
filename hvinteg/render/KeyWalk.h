#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "render/CellKey.h"

/// Walks through keys of a table in their order, the last dimension fastest.
class KeyWalk
{
public:
    /// All keys from that of a start on. A segment of it that is no position of its dimension
    /// counts as the first one; a start of another length counts as the first key of all.
    static KeyWalk from(const KeyLayout& layout, std::string_view start);

    /// False after the last key.
    bool isAtKey() const { return _isAtKey; }
    const std::string& key() const { return _key; }
    void next();

private:
    /// A dimension that is walked through.
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
