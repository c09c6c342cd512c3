#include "components/temporal/ModelFields.h"

#include <algorithm>
#include <charconv>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/DocumentPlace.h"
#include "components/temporal/PointLabels.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kCaseCount = "$casecount";
/// A document has a value for each point of time and each series, hardly more.
constexpr std::size_t kMostFieldDocumentValues = 50'000'000;

std::vector<std::string> namesIn(const DocumentPlace& settings, const char* key)
{
    std::vector<std::string> names;
    const auto list = settings.optionalMember(key);
    for (std::size_t i = 0; list && i < list->listSize(); ++i)
        names.push_back(list->element(i).text());
    // One empty name says that there are none.
    if (names.size() == 1 && names.front().empty())
        names.clear();
    return names;
}

/// A point of time is a text, or a number of a cyclic field.
std::string pointText(const DocumentPlace& place)
{
    const Json& value = place.value();
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number())
        return value.dump();
    place.refuse("is neither a text nor a number");
}

void addPoints(const DocumentPlace& list, std::vector<std::string>& points)
{
    points.resize(std::max(points.size(), list.listSize()));
    for (std::size_t i = 0; i < list.listSize(); ++i)
        points[i] += (points[i].empty() ? "" : ", ") + pointText(list.element(i));
}

/// A list, or lists by the name of the field, whose values make up a point together.
std::vector<std::string> pointsOf(const DocumentPlace& output,
                                  const std::vector<std::string>& timeFields)
{
    std::vector<std::string> points;
    const auto variable = output.optionalMember("timeVariable");
    if (!variable)
        return points;
    if (variable->value().is_array()) {
        addPoints(*variable, points);
        return points;
    }
    for (const std::string& field : timeFields)
        if (const auto list = variable->optionalMember(field.c_str()))
            addPoints(*list, points);
    return points;
}

std::vector<std::string> timeFieldsOf(const DocumentPlace& settings)
{
    const auto field = settings.optionalMember("dateTimeField");
    if (field && !field->text().empty())
        return {field->text()};
    return namesIn(settings, "cyclicFieldList");
}

CFField::StorageType storedAs(const Fields& fields, const std::string& name,
                              const std::string& owner)
{
    const CFField* field = findField(fields, name);
    if (!field)
        throw JobError(errors::kModelFile, owner + ": the data model of the model has no field \"" +
                                               name + "\", which is a dimension");
    return field->GetBaseField() ? field->GetBaseField()->GetStorage() : field->GetStorage();
}

/// The data model in a statistics document.
Fields fieldsIn(const std::string& statistics, const std::string& owner)
{
    const std::string_view last = "</DataModel>";
    const auto begin = statistics.find("<DataModel>");
    const auto end = statistics.find(last, begin == std::string::npos ? 0 : begin);
    if (begin == std::string::npos || end == std::string::npos)
        throw JobError(errors::kModelFile, owner + ": the model has no data model");
    return fieldsOfDataModel(statistics.substr(begin, end + last.size() - begin), owner,
                             errors::kModelFile);
}

std::string numberKey(std::string_view text)
{
    double number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size())
        return std::string(text);
    char key[32];
    // -0 is 0.
    const auto written = std::to_chars(key, key + sizeof key, number == 0 ? 0.0 : number);
    return {key, written.ptr};
}

} // namespace

ModelFields modelFieldsOf(const std::string& preparation, const std::string& statistics,
                          const std::string& owner)
{
    const Json document =
        parsedDocument(preparation, kMostFieldDocumentValues, owner, errors::kModelFile);
    const DocumentPlace whole(document, owner + ": TSDPOutput.json", errors::kModelFile);
    const DocumentPlace settings = whole.member("settings");
    ModelFields fields;
    fields.timeFields = timeFieldsOf(settings);
    fields.dimensions = namesIn(settings, "dimFieldList");
    fields.points = pointsOf(whole.member("output"), fields.timeFields);
    const Fields known = fieldsIn(statistics, owner);
    for (const std::string& dimension : fields.dimensions)
        fields.storages.push_back(storedAs(known, dimension, owner));
    return fields;
}

std::string dimensionKey(std::string_view value, CFField::StorageType storage)
{
    if (storage == CFField::Integer || storage == CFField::Real)
        return numberKey(value);
    std::string key(value);
    if (storage == CFField::String)
        return key;
    return pointLabel(key, TimeOfDay::Seconds);
}

SeriesFinder::SeriesFinder(const TcmModel& model, std::vector<CFField::StorageType> storages)
    : _storages(std::move(storages))
{
    for (std::size_t place = 0; place < model.series.size(); ++place) {
        _byName.emplace(keyOf(model.series[place].name), place);
        _byId.emplace(model.series[place].id, place);
    }
}

std::vector<std::string> SeriesFinder::keyOf(const std::vector<std::string>& name) const
{
    std::vector<std::string> key = name;
    for (std::size_t i = 0; i < std::min(_storages.size(), name.size()); ++i)
        key[i] = dimensionKey(name[i], _storages[i]);
    return key;
}

std::optional<std::size_t> SeriesFinder::byName(const std::vector<std::string>& name) const
{
    const auto found = _byName.find(keyOf(name));
    return found == _byName.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> SeriesFinder::byId(const std::string& id) const
{
    const auto found = _byId.find(id);
    return found == _byId.end() ? std::nullopt : std::optional(found->second);
}

} // namespace EmbeddedHV
