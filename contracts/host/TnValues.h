#pragma once

#include <memory>

#include "Obs.h"
#include "TnCellText.h"
#include "VexaFormat.h"

class VEXA_Variable;

/// The format of a number.
class HOST_API TnFormatSpec
{
public:
    /// Copies the format.
    explicit TnFormatSpec(const VEXA_Format& format) : _format(format) {}
    /// The format.
    const VEXA_Format& format() const { return _format; }

private:
    VEXA_Format _format;
};

/// A number in a format.
class HOST_API TnNumber : public TnCellText
{
public:
    /// The system-missing value is shown as a dot.
    TnNumber(double value, TnFormatSpec format) : _value(value), _format(format) {}
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;
    /// The number.
    double value() const { return _value; }
    /// Its format.
    const VEXA_Format& format() const { return _format.format(); }

private:
    double _value;
    TnFormatSpec _format;
};

/// The name or label of a variable. The variable may be destroyed afterwards.
class HOST_API TnVariable : public TnCellText
{
public:
    /// Which text of the variable is shown.
    enum Show : int
    {
        ShowName = 0,
        ShowLabel = 1,    ///< the name if there is no label
        ShowPreferred = 2 ///< the host's choice: the label if there is one
    };
    /// Copies what it needs from the variable.
    TnVariable(const VEXA_Variable& variable, Show show);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    TnContent _content;
};

/// A value of a variable: its label, or the value in the variable's format. Variable and value may
/// be destroyed afterwards. A string value has as many bytes as the variable's width.
class HOST_API TnDataValue : public TnCellText
{
public:
    /// Which text of the value is shown.
    enum Preference : int
    {
        PreferValue = 0,
        PreferLabel = 1, ///< the value if there is no label
        PreferHost = 2   ///< the host's choice: the label if there is one
    };
    /// Copies what it needs from variable and value.
    TnDataValue(const VEXA_Variable& variable, const OBS* value, Preference preference);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    TnContent _content;
};
