#include "FacSTDictionary.h"

#include "ErrorText.h"
#include "Translation.h"
#include "output/StringTable.h"

struct FacSTDictionary::Impl
{
    std::optional<StringTable> table; ///< empty for the host's own
};

FacSTDictionary::FacSTDictionary() : _impl(std::make_unique<Impl>()) {}

FacSTDictionary::FacSTDictionary(const std::string& file) : FacSTDictionary()
{
    _impl->table = readStringTable(file);
    if (!_impl->table)
        throw ErrorText("The string table " + file + " cannot be read.");
}

FacSTDictionary::~FacSTDictionary() = default;

std::string FacSTDictionary::LookUp(const std::string& key) const
{
    if (!_impl->table)
        return translate(key);
    const auto found = _impl->table->find(key);
    return found != _impl->table->end() ? found->second : key;
}
