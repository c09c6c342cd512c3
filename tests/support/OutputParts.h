#pragma once

#include <memory>
#include <string>

#include "TnOutput.h"

// Short forms for output that tests create.

using Table = std::unique_ptr<TnPivotTable>;
using Dimension = std::unique_ptr<TnDimension>;
using Group = std::unique_ptr<TnGroup>;

inline TnAnnotation note(const std::string& text, bool keepsMarker = false)
{
    return {TnHandle(TnUTF8String(text).Replicate()), TnHandle(-1), keepsMarker};
}

inline TnNumber number(double value, std::uint8_t type = kFormatGeneral, std::uint8_t decimals = 2)
{
    return {value, TnFormatSpec({40, type, decimals})};
}

inline Dimension dimensionOf(TnPivotTable& table, const std::string& name, TnDimension::Place place,
                             int position = 1, TnPivotTable::Sort sort = TnPivotTable::Unsorted)
{
    Dimension dimension(table.Dimension(TnUTF8String(name), sort));
    dimension->Position(place, position, false, false);
    return dimension;
}
