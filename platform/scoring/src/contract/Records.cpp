#include "IMCVariable.h"
#include "MCStatus.h"
#include "MCVarList.h"
#include "ValueRecord.h"

MCStatus MCStatus::Error(const std::string& message)
{
    MCStatus status;
    status._error = true;
    status._message = message;
    return status;
}

const IMCVariable* MCVarList::GetVarAt(int index) const
{
    return index >= 0 && index < Size() ? _variables[static_cast<std::size_t>(index)] : nullptr;
}

ValueRecord::ValueRecord(int capacity)
{
    if (capacity <= 0)
        return;
    _names.reserve(static_cast<std::size_t>(capacity));
    _values.reserve(static_cast<std::size_t>(capacity));
}

void ValueRecord::AddValue(const std::string& name, const Value& value)
{
    _names.push_back(name);
    _values.push_back(value);
}

const std::string& ValueRecord::GetName(int index) const
{
    return _names.at(static_cast<std::size_t>(index));
}

Value& ValueRecord::operator[](int index)
{
    return _values.at(static_cast<std::size_t>(index));
}

const Value& ValueRecord::operator[](int index) const
{
    return _values.at(static_cast<std::size_t>(index));
}
