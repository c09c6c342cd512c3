#include "runtime/DataModel.h"

#include <algorithm>
#include <unordered_set>

#include "CFMetaData.h"
#include "JobError.h"
#include "datafile/SqlQuoting.h"
#include "expression/FieldTypes.h"

namespace EmbeddedHV {

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
        std::unordered_set<std::string> names;
        for (std::size_t i = 0; i < model.FieldCount(); ++i) {
            const CFField& field = *model.GetField(i);
            // The database ignores case in names, so it could not distinguish the two.
            if (!names.insert(datafile::foldedName(field.GetName())).second)
                throw CFMetaDataError("two fields are named \"" + field.GetName() +
                                      "\", letter case apart");
            fields.push_back(field);
        }
        if (fields.empty())
            throw CFMetaDataError("it has no field");
        return fields;
    } catch (const CFMetaDataError& error) {
        throw JobError(errorId,
                       {.step = "read", .what = origin + " cannot be used: " + error.what()});
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

FieldIndex::FieldIndex(const Fields& fields)
{
    for (std::size_t i = 0; i < fields.size(); ++i)
        _places.emplace(fields[i].GetName(), i);
}

std::optional<std::size_t> FieldIndex::place(const std::string& name) const
{
    const auto found = _places.find(name);
    return found == _places.end() ? std::nullopt : std::optional(found->second);
}

const CFField* findField(const Fields& fields, const std::string& name)
{
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const CFField& field) { return field.GetName() == name; });
    return found == fields.end() ? nullptr : &*found;
}

const CFField* findFieldAnyCase(const Fields& fields, const std::string& name)
{
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const CFField& field) {
        return datafile::isSameName(field.GetName(), name);
    });
    return found == fields.end() ? nullptr : &*found;
}

std::string columnList(const Fields& fields)
{
    std::string list;
    for (const CFField& field : fields)
        list += (list.empty() ? "" : ", ") + quotedIdentifier(field.GetName());
    return list;
}

std::string unusedName(const Fields& fields, const std::string& base)
{
    std::string name = base;
    while (findFieldAnyCase(fields, name))
        name += "_";
    return name;
}

} // namespace EmbeddedHV
