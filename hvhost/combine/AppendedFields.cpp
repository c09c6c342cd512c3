#include "hvhost/combine/AppendedFields.h"

#include <map>

#include "datafile/FieldNames.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/FieldTypes.h"

namespace {

/// Collects the fields file by file.
class FieldCollector
{
public:
    FieldCollector(const CombinedInputs& inputs, bool byPosition)
        : _inputs(inputs), _byPosition(byPosition)
    {
    }

    void add(std::size_t input)
    {
        const std::vector<std::string> names = _inputs.dataset(input).names();
        if (_byPosition && input > 0 && names.size() != _fields.size())
            throw CommandFault(ExitStatus::Usage,
                               "--by-position: " + _inputs.name(input) + " has " +
                                   std::to_string(names.size()) + " fields, and " +
                                   _inputs.name(0) + " has " + std::to_string(_fields.size()),
                               "without it, fields match by their names");
        for (std::size_t i = 0; i < names.size(); ++i)
            addColumn(input, static_cast<int>(i), names[i]);
    }

    std::vector<AppendedField> take() { return std::move(_fields); }

private:
    void addColumn(std::size_t input, int column, const std::string& name)
    {
        AppendedField& field = fieldOf(input, column, name);
        field.columns[input] = column;
        const CFField::StorageType storage = _inputs.storage(input, column);
        if (areComparable(field.storage, storage) || !_inputs.hasValues(input, column))
            return;
        for (std::size_t before = 0; before < input; ++before)
            if (field.columns[before] >= 0 && _inputs.hasValues(before, field.columns[before]))
                throw CommandFault(ExitStatus::Usage,
                                   _inputs.name(input) + ": \"" + name + "\" is " +
                                       nounOf(storage) + ", and in " + _inputs.name(before) +
                                       " it is " + nounOf(field.storage),
                                   "hvhost convert makes a text of it, for example with --derive "
                                   "'text=toString(x.id)'");
        field.storage = storage;
    }

    AppendedField& fieldOf(std::size_t input, int column, const std::string& name)
    {
        if (_byPosition && input > 0)
            return _fields[static_cast<std::size_t>(column)];
        const auto [known, isNew] = _places.try_emplace(datafile::foldedName(name), _fields.size());
        if (isNew)
            _fields.push_back(
                {name, _inputs.storage(input, column), std::vector<int>(_inputs.count(), -1)});
        return _fields[known->second];
    }

    const CombinedInputs& _inputs;
    bool _byPosition;
    std::map<std::string, std::size_t> _places;
    std::vector<AppendedField> _fields;
};

} // namespace

std::vector<AppendedField> appendedFields(const CombinedInputs& inputs, bool byPosition)
{
    FieldCollector fields(inputs, byPosition);
    for (std::size_t i = 0; i < inputs.count(); ++i)
        fields.add(i);
    return fields.take();
}

std::vector<std::string> lackingFields(const std::vector<AppendedField>& fields, std::size_t input)
{
    std::vector<std::string> names;
    for (const AppendedField& field : fields)
        if (field.columns[input] < 0)
            names.push_back(field.name);
    return names;
}
