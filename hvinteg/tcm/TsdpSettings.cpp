#include "tcm/TsdpSettings.h"

#include "JNIException.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/LocalRef.h"
#include "support/Tracing.h"
#include "support/Transcoding.h"
#include "support/ZipReader.h"
#include "tcm/ModelFile.h"

namespace {

constexpr const char* kTracedOperation = "ProcessTsdpSettings";
/// The name that means the order of the records. No variable has it.
constexpr const char* kCaseCountField = "$casecount";

/// A missing list counts as an empty one.
bool isList(const JsonValue& value)
{
    return !value || value.isArray();
}

/// Some models without dimensions have this list.
bool isOneEmptyName(const JsonValue& list)
{
    return list.size() == 1 && (*list.begin()).isText() && (*list.begin()).text().empty();
}

bool isCaseCount(const JsonValue& fields)
{
    return fields.size() == 1 && (*fields.begin()).text() == kCaseCountField;
}

/// The last cyclic field changes with every point of time, so its list has all points. Models
/// without that list have the list of the first field.
JsonValue pointsOfCyclicFields(const JsonValue& points, const JsonValue& fields)
{
    JsonValue last;
    for (const JsonValue field : fields)
        last = field;
    const JsonValue found = points[last.text()];
    if (found || fields.size() == 0 || isCaseCount(fields))
        return found;
    return points[(*fields.begin()).text()];
}

} // namespace

bool TsdpSettings::read(const std::string& modelPath)
{
    ZipReader reader(modelPath);
    std::string json;
    if (!readEntry(reader, kPreparationEntry, json))
        return false;
    traceJSONFile(json, "TSDPOutputContent", kTracedOperation);
    try {
        if (!takeFrom(json))
            return false;
    } catch (const JNIException&) { // Java cannot parse it, for example deep nesting
        return false;
    }
    traceJSONFile(_text, "TSDPSettingsContent", kTracedOperation);
    return true;
}

bool TsdpSettings::takeFrom(const std::string& json)
{
    JNIJSONObject document(json.c_str());
    if (!document.isGood())
        return false;
    _document = JsonImage::of(document, document.getTop());
    if (!settings().isObject())
        return false;
    const LocalRef<> object(document.getEnv(), document.get(document.getTop(), "settings"));
    _text = document.toString(object.get());
    return true;
}

bool TsdpSettings::findVariables(const VEXA_DataSource& source,
                                 const std::vector<std::string>& dimFields)
{
    return findDimensions(source, dimFields) && findAll(source, settings()["metricFieldList"]) &&
           findTime(source);
}

bool TsdpSettings::findDimensions(const VEXA_DataSource& source,
                                  const std::vector<std::string>& dimFields)
{
    const JsonValue list = settings()["dimFieldList"];
    if (!isList(list))
        return false;
    if (list.size() != dimFields.size())
        return dimFields.empty() && isOneEmptyName(list);
    auto wanted = dimFields.begin();
    for (const JsonValue name : list)
        if (name.text() != *wanted++ || !find(source, name))
            return false;
    return true;
}

bool TsdpSettings::findTime(const VEXA_DataSource& source)
{
    const JsonValue field = settings()["dateTimeField"];
    _dateTimeField = field.text();
    if (!_dateTimeField.empty())
        return find(source, field);
    const JsonValue fields = settings()["cyclicFieldList"];
    if (isCaseCount(fields))
        return true;
    return fields.size() > 0 && findAll(source, fields);
}

bool TsdpSettings::findAll(const VEXA_DataSource& source, const JsonValue& names)
{
    if (!isList(names))
        return false;
    for (const JsonValue name : names)
        if (!find(source, name))
            return false;
    return true;
}

bool TsdpSettings::find(const VEXA_DataSource& source, const JsonValue& name)
{
    const std::string text(name.text());
    const int column = source.FindVarIndex(transcodeFromUTF8(text.c_str(), nullptr), 0);
    if (column < 0)
        return false;
    _variables.insert(column);
    return true;
}

bool TsdpSettings::countTimePoints(int& count) const
{
    JsonValue points = _document.root()["output"]["timeVariable"];
    if (_dateTimeField.empty())
        points = pointsOfCyclicFields(points, settings()["cyclicFieldList"]);
    if (!points)
        return _dateTimeField.empty();
    if (points.isArray())
        count = static_cast<int>(points.size());
    return points.isArray();
}
