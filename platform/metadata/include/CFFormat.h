#pragma once

#include <cstdint>

#include "MetadataExport.h"

/// How the host prints the values of a field. The data model carries it for the host alone: nobody
/// else reads a meaning out of it.
class METADATA_API CFFormat
{
public:
    CFFormat() = default;
    /// `type` is the host's format type code, `width` the number of columns, `decimals` the digits
    /// behind the decimal sign.
    CFFormat(std::uint8_t type, std::uint16_t width, std::uint8_t decimals)
        : _width(width), _type(type), _decimals(decimals)
    {
    }

    std::uint8_t GetType() const { return _type; }
    std::uint16_t GetWidth() const { return _width; }
    std::uint8_t GetDecimals() const { return _decimals; }

    friend bool operator==(const CFFormat&, const CFFormat&) = default;

private:
    std::uint16_t _width = 0;
    std::uint8_t _type = 0;
    std::uint8_t _decimals = 0;
};
