#pragma once

#include <string>
#include <utility>
#include <vector>

#include "HostExport.h"
#include "Obs.h"
#include "VexaFormat.h"
#include "VexaValueLabelMap.h"

/// How the values of a variable may be interpreted. Callers use numbers outside the enumeration for
/// "the variable's own level".
enum class MeasurementLevel : int
{
    Unknown = 0, ///< not declared
    Nominal = 1, ///< categories without an order
    Ordinal = 2, ///< categories with an order
    Scale = 3    ///< numbers on a scale
};

/// The use of a variable in an analysis.
enum VEXA_Role : int
{
    kRoleInput = 0,    ///< explains or predicts
    kRoleTarget = 1,   ///< is explained or predicted
    kRoleBoth = 2,     ///< input and target
    kRoleNone = 3,     ///< not used
    kRolePartition = 4 ///< divides the cases into samples
};

/// One variable of a dataset. A value type. Texts are in the host's encoding.
class HOST_API VEXA_Variable
{
public:
    /// `type` is 0 for a numeric variable, the width in bytes for a string variable.
    explicit VEXA_Variable(int type);

    /// The name.
    const std::string& GetName() const { return _name; }
    /// Null if the variable has no label.
    const char* GetLabel() const { return _label.empty() ? nullptr : _label.c_str(); }
    /// The label, or the name if there is no label.
    const std::string& GetPreferredLabel() const { return _label.empty() ? _name : _label; }
    /// 0 for a numeric variable, the width in bytes for a string variable.
    int GetType() const { return _type; }
    /// The print format of the dictionary.
    const VEXA_Format& GetFormat() const { return _format; }
    /// The print format, at least as wide as a string variable's values.
    VEXA_Format GetFormatEx() const;
    /// The write format.
    const VEXA_Format& GetWriteFormat() const { return _writeFormat; }
    /// The measurement level.
    MeasurementLevel GetMeasurementLevel() const { return _level; }
    /// The role, a number of VEXA_Role.
    int GetRole() const { return _role; }
    /// The value labels.
    const VEXA_ValueLabelMap& GetValueLabels() const { return _labels; }
    /// Identifies the variable in the process: variables may have equal names. A copy has the same
    /// id until NewID.
    unsigned long long GetID() const { return _id; }

    /// Returns the user-missing values. The result is 1 to 3 for that many single values, 0 for
    /// none, -2 for the range from `first` to `second`, and -3 for such a range and the value
    /// `third`. A range without a lower limit begins at the lowest number, one without an upper
    /// limit ends at the highest. Texts are padded with blanks. Unused pointers become null. The
    /// pointers are valid until the variable changes.
    int GetMissingValues(const OBS*& first, const OBS*& second, const OBS*& third) const;
    /// The number of bytes of each text in GetMissingValues: 8, or more after a conversion between
    /// encodings.
    std::size_t MissingTextWidth() const { return _missingUnits * sizeof(OBS); }
    /// Whether there are user-missing values.
    bool HasMissingValues() const { return _missingCode != 0; }
    /// Whether a number is user-missing.
    bool IsUserMissing(double value) const;
    /// Whether a text is user-missing. `text` has as many bytes as GetType returns; trailing blanks
    /// are ignored.
    bool IsUserMissing(const char* text) const;

    /// Sets the name.
    void SetName(std::string name) { _name = std::move(name); }
    /// Sets the label; an empty text removes it.
    void SetLabel(std::string label) { _label = std::move(label); }
    /// Sets the print format, and also the write format as long as both are equal.
    void SetFormat(const VEXA_Format& format);
    /// Sets the write format.
    void SetWriteFormat(const VEXA_Format& format) { _writeFormat = format; }
    /// Sets the measurement level.
    void SetMeasurementLevel(MeasurementLevel level) { _level = level; }
    /// Sets the role, a number of VEXA_Role.
    void SetRole(int role) { _role = role; }
    /// Replaces all value labels.
    void SetValueLabels(VEXA_ValueLabelMap labels) { _labels = std::move(labels); }
    /// Sets up to three single user-missing values of a numeric variable; further ones are ignored.
    void SetMissingValues(const std::vector<double>& values);
    /// Sets up to three single user-missing values of a string variable. Only the first 8 bytes of
    /// a value count, or more after a conversion between encodings.
    void SetMissingValues(const std::vector<std::string>& texts);
    /// Sets a range of user-missing values, limits included.
    void SetMissingRange(double from, double to);
    /// Sets a range and a single value.
    void SetMissingRange(double from, double to, double value);
    /// Removes all user-missing values.
    void ClearMissingValues();
    /// Gives the variable a new id.
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
    std::vector<OBS> _missing; ///< one after the other, each of the same number of units
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
