#include "CFMetaData.h"

#include "DataModelReader.h"
#include "DataModelWriter.h"

CFMetaData::CFMetaData(const std::string& xml, const CFUpperFunc* upper) : _upper(upper)
{
    readDataModel(xml, *this);
}

void CFMetaData::AppendField(const CFField& field)
{
    const std::size_t index = _fields.size();
    if (!_byName.emplace(field.GetName(), index).second)
        throw CFMetaDataError("There is already a field named \"" + field.GetName() + "\".");
    _fields.push_back(field);
    if (_upper)
        _byUpperName.emplace(_upper->ToUpper(field.GetName()), index);
}

void CFMetaData::ReplaceField(std::size_t index, const CFField& field)
{
    CFField& old = _fields.at(index);
    if (old.GetName() != field.GetName())
        throw CFMetaDataError("The field \"" + field.GetName() + "\" cannot replace \"" +
                              old.GetName() + "\".");
    old = field;
}

const CFField* CFMetaData::GetField(std::size_t index) const
{
    return index < _fields.size() ? &_fields[index] : nullptr;
}

const CFField* CFMetaData::GetField(const std::string& name) const
{
    const int index = GetFieldIndex(name);
    return index < 0 ? nullptr : &_fields[static_cast<std::size_t>(index)];
}

int CFMetaData::GetFieldIndex(const std::string& name) const
{
    // Prefer the exact name: two names may be equal in upper case.
    if (const auto found = _byName.find(name); found != _byName.end())
        return static_cast<int>(found->second);
    if (!_upper)
        return -1;
    const auto found = _byUpperName.find(_upper->ToUpper(name));
    return found == _byUpperName.end() ? -1 : static_cast<int>(found->second);
}

void CFMetaData::ExportXMLDoc(std::string& xml) const
{
    xml = writeDataModel(*this);
}
