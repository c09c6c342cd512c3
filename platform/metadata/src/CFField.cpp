#include "CFField.h"

#include "WordTable.h"

namespace {

constexpr std::array<const char*, 6> kTypeWords = {"continuous", "nominal",  "ordinal",
                                                   "flag",       "discrete", "typeless"};
constexpr std::array<const char*, 7> kStorageWords = {nullptr, "integer", "real",     "string",
                                                      "date",  "time",    "timestamp"};
constexpr std::array<const char*, 8> kRoleWords = {"input", "target",     "both",     "partition",
                                                   "split", "freqWeight", "recordId", "none"};

bool sameBase(const CFField* left, const CFField* right)
{
    if (!left || !right)
        return left == right;
    return *left == *right;
}

} // namespace

CFField::CFField(std::string name, FieldType type, StorageType storage, RoleType role)
    : _name(std::move(name)), _type(type), _storage(storage), _role(role)
{
}

void CFField::SetBaseField(CFField base)
{
    // Copies share it, because a base field never changes.
    _baseField = std::make_shared<const CFField>(std::move(base));
}

bool CFField::operator==(const CFField& other) const
{
    return _name == other._name && _label == other._label && _type == other._type &&
           _storage == other._storage && _role == other._role && _values == other._values &&
           _valueLabels == other._valueLabels && _missingValues == other._missingValues &&
           _format == other._format && _geo == other._geo &&
           sameBase(GetBaseField(), other.GetBaseField());
}

const char* WordOf(CFField::FieldType type)
{
    return wordAt(kTypeWords, static_cast<int>(type));
}

const char* WordOf(CFField::StorageType storage)
{
    return wordAt(kStorageWords, static_cast<int>(storage));
}

const char* WordOf(CFField::RoleType role)
{
    return wordAt(kRoleWords, static_cast<int>(role));
}
