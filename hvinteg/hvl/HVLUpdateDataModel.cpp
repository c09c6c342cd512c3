#include "hvl/HVLUpdateDataModel.h"

#include <utility>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "support/Conversions.h"

namespace {

/// Makes CFDatum::ToString return the shortest text with the same value.
constexpr int kShortest = -1;

/// Leaves out a null or text limit: the engine treats a missing key as no limit.
void putLimit(JNIJSONObject& range, const char* key, const CFDatum& limit)
{
    if (limit.IsReal())
        range.put(key, limit.GetReal());
    else if (limit.IsInteger())
        range.put(key, static_cast<long long>(limit.GetInteger()));
}

/// The engine expects limits as numbers and single values as texts, whatever the storage.
void putMissing(JNIJSONObject& object, const CFMissingValues& missing)
{
    putLimit(object, "minValue", missing.GetRange().GetLower());
    putLimit(object, "maxValue", missing.GetRange().GetUpper());
    if (missing.GetValues().empty())
        return;
    JNIJSONArray values;
    for (const CFValue& value : missing.GetValues())
        values.add(value.GetDatum().ToString(kShortest).c_str());
    object.put("Value", &values);
}

/// The name is only written with an id.
void putSystem(JNIJSONObject& object, const CFGeo& geo)
{
    if (geo.GetWkid() > 0) {
        object.put("wkid", Integer2String(geo.GetWkid()).c_str());
        object.put("csname", geo.GetCsname().c_str());
        object.put("isProjected", geo.IsProjected());
    }
    if (!geo.GetWkt().empty())
        object.put("wkt", geo.GetWkt().c_str());
}

void putEnvelope(JNIJSONObject& object, const CFGeo::Envelope& envelope)
{
    JNIJSONObject corners;
    corners.put("leftUpperX", envelope.leftUpperX);
    corners.put("leftUpperY", envelope.leftUpperY);
    corners.put("rightLowerX", envelope.rightLowerX);
    corners.put("rightLowerY", envelope.rightLowerY);
    object.put("GeoEnvelope", &corners);
}

} // namespace

HVLUpdateDataModel::HVLUpdateDataModel(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(UpdateDataModelFunction);
}

HVLUpdateDataModel::HVLUpdateDataModel(const HVLUpdateDataModel& other) = default;

HVLUpdateDataModel& HVLUpdateDataModel::operator=(const HVLUpdateDataModel& other) = default;

HVLUpdateDataModel::~HVLUpdateDataModel() = default;

/// The entry of a field. A new entry has only the field's name.
JNIJSONObject& HVLUpdateDataModel::entryOf(const std::string& field)
{
    if (const auto known = _fields.find(field); known != _fields.end())
        return *known->second;
    auto entry = std::make_shared<JNIJSONObject>();
    entry->put("name", field.c_str());
    return *_fields.emplace(field, std::move(entry)).first->second;
}

/// Creates the entry even if there is no word for the value.
void HVLUpdateDataModel::updateWord(const std::string& field, const char* key, const char* word)
{
    JNIJSONObject& entry = entryOf(field);
    if (word != nullptr)
        entry.put(key, word);
}

void HVLUpdateDataModel::Update(const std::string& field, const std::string& label)
{
    entryOf(field).put("displayLabel", label.c_str());
}

void HVLUpdateDataModel::Update(const std::string& field, CFField::FieldType type)
{
    updateWord(field, "measure", WordOf(type));
}

void HVLUpdateDataModel::Update(const std::string& field, CFField::StorageType storage)
{
    updateWord(field, "storage", WordOf(storage));
}

void HVLUpdateDataModel::Update(const std::string& field, CFField::RoleType role)
{
    updateWord(field, "role", WordOf(role));
}

void HVLUpdateDataModel::Update(const std::string& field, const std::vector<CFValue>& valueLabels)
{
    if (valueLabels.empty())
        return;
    JNIJSONArray labels;
    for (const CFValue& value : valueLabels) {
        JNIJSONObject label;
        label.put("value", value.GetDatum().ToString(kShortest).c_str());
        label.put("displayLabel", value.GetLabel().c_str());
        labels.add(&label);
    }
    entryOf(field).put("valueLabels", &labels);
}

void HVLUpdateDataModel::Update(const std::string& field, const CFMissingValues& missingValues)
{
    if (!missingValues.IsValid() ||
        (missingValues.GetRange().IsEmpty() && missingValues.GetValues().empty()))
        return;
    JNIJSONObject missing;
    putMissing(missing, missingValues);
    entryOf(field).put("missingValues", &missing);
}

void HVLUpdateDataModel::Update(const std::string& field, CFGeo::Type type, int coordinates)
{
    updateGeo(field, CFGeo(type, coordinates));
}

void HVLUpdateDataModel::Update(const std::string& field, CFGeo::Type type, int coordinates,
                                int wkid, const std::string& csname, bool isProjected,
                                const std::string& wkt)
{
    CFGeo geo(type, coordinates);
    geo.SetCoordinateSystem(wkid, csname, isProjected, wkt);
    updateGeo(field, geo);
}

void HVLUpdateDataModel::Update(const std::string& field, CFGeo::Type type, int coordinates,
                                int wkid, const std::string& csname, bool isProjected,
                                const std::string& wkt, double leftUpperX, double leftUpperY,
                                double rightLowerX, double rightLowerY)
{
    CFGeo geo(type, coordinates);
    geo.SetCoordinateSystem(wkid, csname, isProjected, wkt);
    geo.SetEnvelope({leftUpperX, leftUpperY, rightLowerX, rightLowerY});
    updateGeo(field, geo);
}

void HVLUpdateDataModel::updateGeo(const std::string& field, const CFGeo& geo)
{
    JNIJSONObject& entry = entryOf(field);
    const char* type = WordOf(geo.GetType());
    if (type == nullptr)
        return;
    JNIJSONObject object;
    object.put("type", type);
    if (geo.GetCoordinates() > 0)
        object.put("coordinates", Integer2String(geo.GetCoordinates()).c_str());
    putSystem(object, geo);
    if (geo.GetEnvelope())
        putEnvelope(object, *geo.GetEnvelope());
    entry.put("Geo", &object);
}

bool HVLUpdateDataModel::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    GenerateFirstPredecessor();

    JNIJSONArray fields;
    for (const auto& [name, entry] : _fields)
        fields.add(entry.get());
    JNIJSONObject configuration;
    configuration.put("fields", &fields);
    return CreateFunction("updateDataModel", configuration);
}
