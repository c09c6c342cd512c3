#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace EmbeddedHV::maps {

/// A kind of shape, and the nesting depth of its coordinates.
struct Kind
{
    std::string_view word;
    std::size_t depth;
};

inline constexpr Kind kKinds[] = {{"Point", 1},   {"MultiPoint", 2},      {"LineString", 2},
                                  {"Polygon", 3}, {"MultiLineString", 3}, {"MultiPolygon", 4}};

/// Null for another word.
inline const Kind* kindOf(std::string_view word)
{
    const auto* const kind = std::ranges::find(kKinds, word, &Kind::word);
    return kind == std::end(kKinds) ? nullptr : kind;
}

/// The points of a shape, and the brackets around them as text with a position for each point.
struct Shape
{
    std::string kind;
    std::string lists;
    std::vector<std::size_t> places; ///< positions of the points in `lists`
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> z;
    std::vector<char> hasZ;
    std::vector<std::size_t> ends; ///< for each list of points, the index after its last point

    /// Drops everything and keeps the memory for the next shape.
    void clear()
    {
        kind.clear();
        lists.clear();
        places.clear();
        x.clear();
        y.clear();
        z.clear();
        hasZ.clear();
        ends.clear();
    }
    bool hasRings() const { return kind == "Polygon" || kind == "MultiPolygon"; }
    bool hasLines() const
    {
        return hasRings() || kind == "LineString" || kind == "MultiLineString";
    }
};

} // namespace EmbeddedHV::maps
