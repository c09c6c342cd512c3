#pragma once

#include <string>
#include <utility>

#include "MetadataExport.h"

/// One field of a data model.
class METADATA_API CFField
{
public:
    enum FieldType
    {
        Continuous = 0,
        Nominal = 1,
        Ordinal = 2,
        Flag = 3,
        Discrete = 4,
        Typeless = 5
    };
    enum StorageType
    {
        Unknown = 0,
        Integer = 1,
        Real = 2,
        String = 3,
        Date = 4,
        Time = 5,
        Timestamp = 6
    };
    enum RoleType
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
    const std::string& GetLabel() const { return _label; }
    void SetLabel(std::string label) { _label = std::move(label); }
    void SetType(FieldType type) { _type = type; }
    void SetRole(RoleType role) { _role = role; }

private:
    std::string _name;
    std::string _label;
    FieldType _type;
    StorageType _storage;
    RoleType _role;
};

/// The words of the data model document and the engine; null for a value without a word, which
/// `Unknown` is as well.
METADATA_API const char* WordOf(CFField::FieldType type);
METADATA_API const char* WordOf(CFField::StorageType storage);
METADATA_API const char* WordOf(CFField::RoleType role);
