#include "runtime/DataModel.h"

#include <algorithm>
#include <set>

#include "CFMetaData.h"
#include "JobError.h"
#include "runtime/ColumnTypes.h"

namespace EmbeddedHV {
namespace {

/// Letter case as the database folds it: ASCII only.
std::string folded(std::string name)
{
    for (char& letter : name)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return name;
}

} // namespace

CFField plainField(const std::string& name, CFField::StorageType storage)
{
    return {name, defaultMeasure(storage), storage};
}

std::string dataModelOf(const Fields& fields)
{
    CFMetaData model;
    for (const CFField& field : fields)
        model.AppendField(field);
    std::string xml;
    model.ExportXMLDoc(xml);
    return xml;
}

Fields fieldsOfDataModel(const std::string& xml, const std::string& origin, const char* errorId)
{
    try {
        const CFMetaData model(xml);
        Fields fields;
        for (std::size_t i = 0; i < model.FieldCount(); ++i) {
            const CFField& field = *model.GetField(i);
            if (findFieldAnyCase(fields, field.GetName()))
                throw CFMetaDataError("two fields are named \"" + field.GetName() +
                                      "\", letter case apart");
            fields.push_back(field);
        }
        if (fields.empty())
            throw CFMetaDataError("it has no field");
        return fields;
    } catch (const CFMetaDataError& error) {
        throw JobError(errorId, "read: " + origin + " cannot be used: " + error.what());
    }
}

std::vector<CFField::StorageType> storagesOf(const Fields& fields)
{
    std::vector<CFField::StorageType> storages;
    for (const CFField& field : fields)
        storages.push_back(field.GetStorage());
    return storages;
}

Schema schemaOf(const Fields& fields)
{
    Schema schema;
    schema.reserve(fields.size());
    for (const CFField& field : fields)
        schema.push_back({field.GetName(), valueTypeOf(field.GetStorage())});
    return schema;
}

const CFField* findField(const Fields& fields, const std::string& name)
{
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const CFField& field) { return field.GetName() == name; });
    return found == fields.end() ? nullptr : &*found;
}

const CFField* findFieldAnyCase(const Fields& fields, const std::string& name)
{
    const std::string wanted = folded(name);
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const CFField& field) {
        return folded(field.GetName()) == wanted;
    });
    return found == fields.end() ? nullptr : &*found;
}

std::vector<std::string> uniqueNames(std::vector<std::string> names)
{
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i].empty())
            names[i] = "field" + std::to_string(i + 1);
    std::set<std::string> given;
    for (const std::string& name : names)
        given.insert(folded(name));
    std::set<std::string> used;
    for (std::string& name : names) {
        const std::string base = name;
        // A made-up name avoids the given ones too: theirs should stay theirs.
        for (int number = 1;
             used.contains(folded(name)) || (name != base && given.contains(folded(name)));
             ++number)
            name = base + "_" + std::to_string(number);
        used.insert(folded(name));
    }
    return names;
}

void adoptMetadata(Fields& fields, const Fields& model)
{
    for (CFField& field : fields) {
        const CFField* known = findField(model, field.GetName());
        if (!known)
            continue;
        field.SetType(known->GetType());
        field.SetRole(known->GetRole());
        field.SetLabel(known->GetLabel());
    }
}

} // namespace EmbeddedHV
