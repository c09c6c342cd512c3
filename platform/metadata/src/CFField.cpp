#include "CFField.h"

#include <array>
#include <cstddef>

namespace {

// Each table is in the order of its enumeration.
constexpr std::array<const char*, 6> kTypeWords = {"continuous", "nominal",  "ordinal",
                                                   "flag",       "discrete", "typeless"};
constexpr std::array<const char*, 7> kStorageWords = {nullptr, "integer", "real",     "string",
                                                      "date",  "time",    "timestamp"};
constexpr std::array<const char*, 8> kRoleWords = {"input", "target",     "both",     "partition",
                                                   "split", "freqWeight", "recordId", "none"};

template <std::size_t Count>
const char* wordAt(const std::array<const char*, Count>& words, int value)
{
    // Callers cast integers of other tables into the enumerations, so any value may come.
    if (value < 0 || static_cast<std::size_t>(value) >= Count)
        return nullptr;
    return words[static_cast<std::size_t>(value)];
}

} // namespace

CFField::CFField(std::string name, FieldType type, StorageType storage, RoleType role)
    : _name(std::move(name)), _type(type), _storage(storage), _role(role)
{
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
