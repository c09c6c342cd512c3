#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CFFormat.h"
#include "CFGeo.h"
#include "CFMissingValues.h"
#include "CFValue.h"
#include "MetadataExport.h"

/// One field of a data model: name, type, storage, role, values and formats. A value type; copies
/// are independent. All texts are UTF-8.
class METADATA_API CFField
{
public:
    /// Measurement level. Callers cast numbers to the enumerations, so any value may occur; an
    /// unknown one has no word.
    enum FieldType : int
    {
        Continuous = 0, ///< numbers on a scale
        Nominal = 1,    ///< categories without an order
        Ordinal = 2,    ///< categories with an order
        Flag = 3,       ///< two categories
        Discrete = 4,   ///< categories; whether they have an order is unknown
        Typeless = 5    ///< unknown
    };
    /// Storage of the values.
    enum StorageType : int
    {
        Unknown = 0,
        Integer = 1,
        Real = 2,
        String = 3,
        Date = 4,     ///< days without a time of day
        Time = 5,     ///< times of day
        Timestamp = 6 ///< points in time
    };
    /// Use of the field in an analysis.
    enum RoleType : int
    {
        Input = 0,           ///< explains or predicts
        Target = 1,          ///< is explained or predicted
        Both = 2,            ///< input and target
        Partition = 3,       ///< divides the records into samples
        Split = 4,           ///< divides the records into groups that are analysed separately
        FrequencyWeight = 5, ///< the number of cases that a record counts for
        RecordId = 6,        ///< identifies a record
        None = 7             ///< not used
    };

    /// A field without label, values and formats.
    CFField(std::string name, FieldType type, StorageType storage, RoleType role = Input);

    /// The name.
    const std::string& GetName() const { return _name; }
    /// The measurement level.
    FieldType GetType() const { return _type; }
    /// The storage of the values.
    StorageType GetStorage() const { return _storage; }
    /// The role.
    RoleType GetRole() const { return _role; }
    /// Sets the name.
    void SetName(std::string name) { _name = std::move(name); }
    /// Sets the measurement level.
    void SetType(FieldType type) { _type = type; }
    /// Sets the storage. The lists of values are unchanged, so their data may be of another kind.
    void SetStorage(StorageType storage) { _storage = storage; }
    /// Sets the role.
    void SetRole(RoleType role) { _role = role; }

    /// The label; empty for none.
    const std::string& GetLabel() const { return _label; }
    /// Sets the label.
    void SetLabel(std::string label) { _label = std::move(label); }

    /// The distinct values, in the order of the categories; empty if unknown.
    const std::vector<CFValue>& GetValues() const { return _values; }
    /// Sets the distinct values.
    void SetValues(std::vector<CFValue> values) { _values = std::move(values); }
    /// The values with labels, even if they do not occur.
    const std::vector<CFValue>& GetValueLabels() const { return _valueLabels; }
    /// Sets the values with labels.
    void SetValueLabels(std::vector<CFValue> labels) { _valueLabels = std::move(labels); }
    /// The missing values; invalid if none are declared.
    const CFMissingValues& GetMissingValues() const { return _missingValues; }
    /// Sets the missing values.
    void SetMissingValues(CFMissingValues missing) { _missingValues = std::move(missing); }

    /// The host's print format; null for none.
    const CFFormat* GetPrivateFormat() const { return _format ? &*_format : nullptr; }
    /// Sets the host's print format.
    void SetPrivateFormat(const CFFormat& format) { _format = format; }
    /// The geospatial properties; null for none.
    const CFGeo* GetGeo() const { return _geo ? &*_geo : nullptr; }
    /// Sets the geospatial properties.
    void SetGeo(CFGeo geo) { _geo = std::move(geo); }
    /// The field whose values this field contains as codes; null for none.
    const CFField* GetBaseField() const { return _baseField.get(); }
    /// Sets the field whose values this field contains as codes.
    void SetBaseField(CFField base);

    /// True if all properties are equal.
    bool operator==(const CFField& other) const;

private:
    std::string _name;
    std::string _label;
    FieldType _type;
    StorageType _storage;
    RoleType _role;
    std::vector<CFValue> _values;
    std::vector<CFValue> _valueLabels;
    CFMissingValues _missingValues;
    std::optional<CFFormat> _format;
    std::optional<CFGeo> _geo;
    /// Never changes, so copies share it.
    std::shared_ptr<const CFField> _baseField;
};

/// The word of the data model and the engine for a measurement level; null for an unknown level.
METADATA_API const char* WordOf(CFField::FieldType type);
/// The word for a storage; null for Unknown and invalid values.
METADATA_API const char* WordOf(CFField::StorageType storage);
/// The word for a role; null for an unknown role.
METADATA_API const char* WordOf(CFField::RoleType role);
