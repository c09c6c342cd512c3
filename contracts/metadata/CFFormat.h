#pragma once

#include <cstdint>

#include "MetadataExport.h"

/// The host's print format of a field. The data model stores it for the host; nothing else
/// interprets it.
class METADATA_API CFFormat
{
public:
    CFFormat() = default;
    /// `type` is the host's format type code, `width` the number of columns, `decimals` the number
    /// of decimals.
    CFFormat(std::uint8_t type, std::uint16_t width, std::uint8_t decimals)
        : _width(width), _type(type), _decimals(decimals)
    {
    }

    /// The host's format type code.
    std::uint8_t GetType() const { return _type; }
    /// The number of columns.
    std::uint16_t GetWidth() const { return _width; }
    /// The number of decimals.
    std::uint8_t GetDecimals() const { return _decimals; }

    friend bool operator==(const CFFormat&, const CFFormat&) = default;

private:
    std::uint16_t _width = 0;
    std::uint8_t _type = 0;
    std::uint8_t _decimals = 0;
};
