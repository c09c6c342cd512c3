#include "runtime/DataModel.h"

#include <algorithm>

#include "CFMetaData.h"
#include "JobError.h"
#include "expression/FieldTypes.h"

namespace EmbeddedHV {
namespace {

bool isNumber(CFField::StorageType storage)
{
    return storage == CFField::Integer || storage == CFField::Real;
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
    const std::string wanted = foldedName(name);
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const CFField& field) {
        return foldedName(field.GetName()) == wanted;
    });
    return found == fields.end() ? nullptr : &*found;
}

void changeStorage(CFField& field, CFField::StorageType storage)
{
    if (field.GetStorage() == storage)
        return;
    if (isNumber(field.GetStorage()) && isNumber(storage)) {
        field.SetStorage(storage);
        return;
    }
    CFField changed(field.GetName(), field.GetType(), storage, field.GetRole());
    changed.SetLabel(field.GetLabel());
    field = changed;
}

void adoptMetadata(Fields& fields, const Fields& model)
{
    for (CFField& field : fields) {
        const CFField* known = findField(model, field.GetName());
        if (!known)
            continue;
        const CFField::StorageType storage = field.GetStorage();
        field = *known;
        changeStorage(field, storage);
    }
}

} // namespace EmbeddedHV
