#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "HostExport.h"

/// A host format: how wide, of which kind and with how many decimals a value is shown. The type
/// codes are the host's.
struct VEXA_Format
{
    std::uint16_t width = 8;
    std::uint8_t type = 5;
    std::uint8_t decimals = 2;
};
static_assert(sizeof(VEXA_Format) == 4, "a format is stored in four bytes");

/// One variable of a dataset. A plain value: copies are independent.
class HOST_API VEXA_Variable
{
public:
    /// `type` is 0 for a numeric variable, the width in bytes for a string variable.
    explicit VEXA_Variable(int type) : _type(type)
    {
        if (type > 0)
            _format = {static_cast<std::uint16_t>(type), kStringFormat, 0};
    }

    /// Name and label are in the host's encoding.
    const std::string& GetName() const { return _name; }
    const std::string& GetLabel() const { return _label; }
    /// 0 for a numeric variable, the width in bytes for a string variable.
    int GetType() const { return _type; }
    /// The print format, as the dictionary has it, and in full where the two differ.
    const VEXA_Format& GetFormat() const { return _format; }
    const VEXA_Format& GetFormatEx() const { return _format; }

    void SetName(std::string name) { _name = std::move(name); }
    void SetLabel(std::string label) { _label = std::move(label); }
    void SetFormat(const VEXA_Format& format) { _format = format; }

private:
    static constexpr std::uint8_t kStringFormat = 1;

    std::string _name;
    std::string _label;
    int _type;
    VEXA_Format _format;
};
