#pragma once

#include <memory>

#include "Obs.h"
#include "TnCellText.h"
#include "VexaFormat.h"

class VEXA_Variable;

/// How a number is shown.
class HOST_API TnFormatSpec
{
public:
    explicit TnFormatSpec(const VEXA_Format& format) : _format(format) {}
    const VEXA_Format& format() const { return _format; }

private:
    VEXA_Format _format;
};

/// A number in a format. The system missing value shows as a dot.
class HOST_API TnNumber : public TnCellText
{
public:
    /// The system-missing number shows as the host shows it.
    TnNumber(double value, TnFormatSpec format) : _value(value), _format(format) {}
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;
    double value() const { return _value; }
    const VEXA_Format& format() const { return _format.format(); }

private:
    double _value;
    TnFormatSpec _format;
};

/// A variable by its name or its label. The variable need not outlive the text.
class HOST_API TnVariable : public TnCellText
{
public:
    /// What of a variable is shown.
    enum Show : int
    {
        ShowName = 0,
        ShowLabel = 1,    ///< the name where there is no label
        ShowPreferred = 2 ///< as the host is set: the label where there is one
    };
    TnVariable(const VEXA_Variable& variable, Show show);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    TnContent _content;
};

/// A value of a variable: its label, or the value in the variable's format. Neither variable nor
/// value need outlive the text. A string value has as many bytes as the variable is wide.
class HOST_API TnDataValue : public TnCellText
{
public:
    /// What of a value is shown.
    enum Preference : int
    {
        PreferValue = 0,
        PreferLabel = 1, ///< the value where there is no label
        PreferHost = 2   ///< as the host is set: the label where there is one
    };
    TnDataValue(const VEXA_Variable& variable, const OBS* value, Preference preference);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    TnContent _content;
};
