#include "render/dataDictionary.h"

#include <map>

struct HVINTEG_HIDDEN dataDictionary::Impl
{
    std::string name;
    std::map<std::string, dataField> fields;
};

dataDictionary::dataDictionary() : _impl(std::make_unique<Impl>()) {}

dataDictionary::dataDictionary(const dataDictionary& other)
    : _impl(std::make_unique<Impl>(*other._impl))
{
}

dataDictionary& dataDictionary::operator=(const dataDictionary& other)
{
    *_impl = *other._impl;
    return *this;
}

dataDictionary::~dataDictionary() = default;

void dataDictionary::setName(const std::string& name)
{
    _impl->name = name;
}

std::string& dataDictionary::getName()
{
    return _impl->name;
}

const std::string& dataDictionary::getName() const
{
    return _impl->name;
}

void dataDictionary::addField(const dataField& field)
{
    _impl->fields[field.getName()] = field;
}

dataField dataDictionary::getField(const std::string& name) const
{
    const dataField* field = findField(name);
    return field == nullptr ? dataField() : *field;
}

const dataField* dataDictionary::findField(const std::string& name) const
{
    const auto found = _impl->fields.find(name);
    return found == _impl->fields.end() ? nullptr : &found->second;
}
