#pragma once

#include <string>
#include <vector>

#include "report/maps/MapData.h"

/// Values with the same look on a map. The look is a class of the page's style sheet, or a colour
/// of the map's definition.
struct MapClass
{
    std::string label;
    std::string look;
    std::string colour{};
};

/// The classes of a colour channel: parts of a scale, or single values. A value on a bound belongs
/// to the class above; the largest one belongs to the last class.
class MapClasses
{
public:
    MapClasses(const MapChannel& channel, const std::vector<MapItem>& items);

    const std::vector<MapClass>& classes() const { return _classes; }
    /// The class of a colour value.
    const MapClass& classOf(const PageJson& value) const;

private:
    void list(std::vector<std::string> values);
    void divide(const std::vector<double>& bounds);
    void divideAt(std::vector<double> bounds);
    void colour(const MapChannel& channel);
    void shade();

    std::vector<MapClass> _classes;
    std::vector<double> _bounds;      ///< between the parts of a scale
    std::vector<std::string> _values; ///< of categories, in order
};
