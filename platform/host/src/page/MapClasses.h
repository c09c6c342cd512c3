#pragma once

#include <string>
#include <vector>

#include "page/MapData.h"

/// Values that look alike on a map. Its look is a class of the page's style sheet, or a colour that
/// the map's definition names.
struct MapClass
{
    std::string label;
    std::string look;
    std::string colour{};
};

/// The classes of what a colour stands for: parts of a scale, or values of their own. A value on a
/// bound belongs to the class above it, the largest one to the last class.
class MapClasses
{
public:
    MapClasses(const MapChannel& channel, const std::vector<MapItem>& items);

    const std::vector<MapClass>& classes() const { return _classes; }
    /// The class of an item's colour, which it must have.
    const MapClass& classOf(const PageJson& value) const;

private:
    void list(std::vector<std::string> values);
    void divide(const std::vector<double>& bounds);
    void divideAt(std::vector<double> bounds);
    void colour(const MapChannel& channel);
    void shade();

    std::vector<MapClass> _classes;
    std::vector<double> _bounds;      ///< between the parts of a scale
    std::vector<std::string> _values; ///< of categories, in their order
};
