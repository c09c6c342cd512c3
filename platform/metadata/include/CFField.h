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

/// One field of a data model: a name, how its values are stored and read, and what is known of
/// them. A value type; a copy goes its own way. All text is UTF-8.
class METADATA_API CFField
{
public:
    /// Callers cast numbers into the enumerations, so any value may come; one that is not listed
    /// has no word.
    enum FieldType : int
    {
        Continuous = 0,
        Nominal = 1,
        Ordinal = 2,
        Flag = 3,
        Discrete = 4,
        Typeless = 5
    };
    /// What the values are, as they are stored.
    enum StorageType : int
    {
        Unknown = 0,
        Integer = 1,
        Real = 2,
        String = 3,
        Date = 4,
        Time = 5,
        Timestamp = 6
    };
    /// What an analysis takes the field for.
    enum RoleType : int
    {
        Input = 0,
        Target = 1,
        Both = 2,
        Partition = 3,
        Split = 4,
        FrequencyWeight = 5,
        RecordId = 6,
        None = 7
    };

    CFField(std::string name, FieldType type, StorageType storage, RoleType role = Input);

    const std::string& GetName() const { return _name; }
    FieldType GetType() const { return _type; }
    StorageType GetStorage() const { return _storage; }
    RoleType GetRole() const { return _role; }
    void SetName(std::string name) { _name = std::move(name); }
    void SetType(FieldType type) { _type = type; }
    /// Leaves the lists of values as they are, whose data may then be of another kind.
    void SetStorage(StorageType storage) { _storage = storage; }
    void SetRole(RoleType role) { _role = role; }

    /// Empty for a field without a label.
    const std::string& GetLabel() const { return _label; }
    void SetLabel(std::string label) { _label = std::move(label); }

    /// The distinct values, in the order of the categories; empty if they are not known.
    const std::vector<CFValue>& GetValues() const { return _values; }
    void SetValues(std::vector<CFValue> values) { _values = std::move(values); }
    /// The values that have labels, whether they occur or not.
    const std::vector<CFValue>& GetValueLabels() const { return _valueLabels; }
    void SetValueLabels(std::vector<CFValue> labels) { _valueLabels = std::move(labels); }
    /// Not valid if nothing is declared.
    const CFMissingValues& GetMissingValues() const { return _missingValues; }
    void SetMissingValues(CFMissingValues missing) { _missingValues = std::move(missing); }

    /// The host's print format; null if there is none. A copy is kept.
    const CFFormat* GetPrivateFormat() const { return _format ? &*_format : nullptr; }
    void SetPrivateFormat(const CFFormat& format) { _format = format; }
    /// The geospatial properties; null if the field has none.
    const CFGeo* GetGeo() const { return _geo ? &*_geo : nullptr; }
    void SetGeo(CFGeo geo) { _geo = std::move(geo); }
    /// The field whose values this one stands for in codes; null if it stands for itself.
    const CFField* GetBaseField() const { return _baseField.get(); }
    void SetBaseField(CFField base);

    /// Whether all of it is the same.
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
    /// Never changes, so that copies may share it.
    std::shared_ptr<const CFField> _baseField;
};

/// The words of the data model document and the engine; null for a value without a word, which
/// `Unknown` is as well.
METADATA_API const char* WordOf(CFField::FieldType type);
METADATA_API const char* WordOf(CFField::StorageType storage);
METADATA_API const char* WordOf(CFField::RoleType role);
