#pragma once

#include <string>
#include <utility>
#include <vector>

#include "HostExport.h"
#include "Obs.h"
#include "VexaFormat.h"
#include "VexaValueLabelMap.h"

/// How the values of a variable may be read. Numbers outside the enumeration may stand in for "as
/// the variable has it".
enum class MeasurementLevel : int
{
    Unknown = 0,
    Nominal = 1,
    Ordinal = 2,
    Scale = 3
};

/// What an analysis does with a variable.
enum VEXA_Role : int
{
    kRoleInput = 0,
    kRoleTarget = 1,
    kRoleBoth = 2,
    kRoleNone = 3,
    kRolePartition = 4
};

/// One variable of a dataset. A plain value: copies are independent. Texts are in the host's
/// encoding.
class HOST_API VEXA_Variable
{
public:
    /// `type` is 0 for a numeric variable, the width in bytes for a string variable.
    explicit VEXA_Variable(int type);

    const std::string& GetName() const { return _name; }
    /// Null if the variable has no label.
    const char* GetLabel() const { return _label.empty() ? nullptr : _label.c_str(); }
    /// The label, or the name of a variable without one.
    const std::string& GetPreferredLabel() const { return _label.empty() ? _name : _label; }
    /// 0 for a numeric variable, the width in bytes for a string variable.
    int GetType() const { return _type; }
    /// The print format as the dictionary has it; and in full, which shows the whole of a text, be
    /// the format ever so narrow.
    const VEXA_Format& GetFormat() const { return _format; }
    VEXA_Format GetFormatEx() const;
    const VEXA_Format& GetWriteFormat() const { return _writeFormat; }
    MeasurementLevel GetMeasurementLevel() const { return _level; }
    /// As in VEXA_Role.
    int GetRole() const { return _role; }
    const VEXA_ValueLabelMap& GetValueLabels() const { return _labels; }
    /// Tells variables apart that may have the same name; given once per process.
    unsigned long long GetID() const { return _id; }

    /// The user-missing values: the result is their number, 1 to 3, for single values; 0 for none;
    /// -2 for a range from `first` to `second`; -3 for such a range and the value `third`. A range
    /// without a lower end begins at the lowest number, one without an upper end goes to the
    /// highest. Texts are filled up with blanks. The pointers last until the variable is
    /// changed; those that the result has no use for become null.
    int GetMissingValues(const OBS*& first, const OBS*& second, const OBS*& third) const;
    /// How many bytes each text of GetMissingValues takes: 8, or as many as a conversion between
    /// encodings has made of them.
    std::size_t MissingTextWidth() const { return _missingUnits * sizeof(OBS); }
    bool HasMissingValues() const { return _missingCode != 0; }
    bool IsUserMissing(double value) const;
    /// `text` has as many bytes as GetType says.
    bool IsUserMissing(const char* text) const;

    void SetName(std::string name) { _name = std::move(name); }
    void SetLabel(std::string label) { _label = std::move(label); }
    /// The print format, and the write format too until that is set by itself.
    void SetFormat(const VEXA_Format& format);
    void SetWriteFormat(const VEXA_Format& format) { _writeFormat = format; }
    void SetMeasurementLevel(MeasurementLevel level) { _level = level; }
    void SetRole(int role) { _role = role; }
    void SetValueLabels(VEXA_ValueLabelMap labels) { _labels = std::move(labels); }
    /// Up to three values; a numeric variable takes numbers, a string variable texts, of which the
    /// first 8 bytes count (or as many more as a conversion between encodings has made of these).
    void SetMissingValues(const std::vector<double>& values);
    void SetMissingValues(const std::vector<std::string>& texts);
    /// A range, with one value more if there is one.
    void SetMissingRange(double from, double to);
    void SetMissingRange(double from, double to, double value);
    void ClearMissingValues();
    void NewID();

private:
    std::string _name;
    std::string _label;
    int _type;
    VEXA_Format _format;
    VEXA_Format _writeFormat;
    MeasurementLevel _level = MeasurementLevel::Unknown;
    int _role = kRoleInput;
    VEXA_ValueLabelMap _labels;
    int _missingCode = 0;
    std::vector<OBS> _missing; ///< one after the other, of the same number of units each
    std::size_t _missingUnits = 1;
    unsigned long long _id;
};

inline bool VEXA_Variable::IsUserMissing(double value) const
{
    switch (_missingCode) {
    case 0:
        return false;
    case -3:
        if (value == _missing[2].number)
            return true;
        [[fallthrough]];
    case -2:
        return value >= _missing[0].number && value <= _missing[1].number;
    default:
        for (const OBS& missing : _missing)
            if (value == missing.number)
                return true;
        return false;
    }
}
