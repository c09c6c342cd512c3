#include "components/temporal/scoring/SeriesEncoding.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "CFMetaData.h"
#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "components/temporal/scoring/ModelAncestors.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kMetricCodes = "metricField";

/// The number that the whole text is.
std::optional<double> wholeNumber(const std::string& text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// Whether two texts are one value of the field.
bool isSameValue(const CFField& field, const std::string& left, const std::string& right)
{
    if (left == right)
        return true;
    const CFField* const base = field.GetBaseField();
    if (!base || base->GetStorage() == CFField::String)
        return false;
    const auto number = wholeNumber(left);
    return number && number == wholeNumber(right);
}

/// The data model document in the archive's statistics.
CFMetaData dataModelIn(const ModelArchive& archive, const std::string& component)
{
    const std::string& text = archive.statistics();
    const std::string endTag = "</DataModel>";
    const std::size_t begin = text.find("<DataModel>");
    const std::size_t end = text.find(endTag);
    try {
        if (begin == std::string::npos || end == std::string::npos || end < begin)
            throw CFMetaDataError("it has no data model");
        return CFMetaData(text.substr(begin, end + endTag.size() - begin));
    } catch (const CFMetaDataError& error) {
        throw JobError(errors::kModelFile, component + ": the entry \"" + kModelStatisticsEntry +
                                               "\" of the model cannot be used: " + error.what());
    }
}

/// The names of the dimension fields that the preparation used.
std::vector<std::string> dimensionNames(const ModelArchive& archive)
{
    const Json document = Json::parse(archive.preparation(), nullptr, false);
    std::vector<std::string> names;
    if (!document.is_object() || !document.contains("settings"))
        return names;
    const Json& settings = document["settings"];
    if (!settings.is_object() || !settings.contains("dimFieldList"))
        return names;
    for (const Json& name : settings["dimFieldList"])
        // One empty name is a model without dimensions.
        if (name.is_string() && !name.get<std::string>().empty())
            names.push_back(name.get<std::string>());
    return names;
}

std::string joinedFields(const Fields& fields)
{
    std::string text;
    for (std::size_t i = 0; i + 1 < fields.size(); ++i)
        text += "the value of \"" + fields[i].GetName() + "\", ";
    return text + "the metric";
}

[[noreturn]] void refuseField(const std::string& component, const std::string& name)
{
    throw JobError(errors::kModelFile,
                   component + ": the data model of the model has no field \"" + name + "\"");
}

} // namespace

SeriesEncoding::SeriesEncoding(const ModelArchive& archive, const TcmModel& model,
                               const std::string& component)
    : _model(model)
{
    const CFMetaData dataModel = dataModelIn(archive, component);
    std::vector<std::string> names = dimensionNames(archive);
    names.emplace_back(kMetricCodes);
    for (const std::string& name : names) {
        const CFField* const field = dataModel.GetField(name);
        if (!field)
            refuseField(component, name);
        _fields.push_back(*field);
    }
}

std::size_t SeriesEncoding::placeAt(const Settings& settings, const Json& list,
                                    const std::string& key, std::size_t index) const
{
    const std::string place = key + "[" + std::to_string(index) + "]";
    if (!list[index].is_array())
        settings.refuse(place, "is not a list of texts");
    return placeOf(settings, list[index], place);
}

std::size_t SeriesEncoding::placeOf(const Settings& settings, const std::string& key) const
{
    return placeOf(settings, settings.neededList(key), key);
}

std::string SeriesEncoding::codeOf(const Settings& settings, const std::string& key,
                                   const CFField& field, const std::string& text) const
{
    const std::vector<CFValue>& values = field.GetValues();
    // Values of metricField have no base field: their names are texts.
    const auto found = std::find_if(values.begin(), values.end(), [&](const CFValue& value) {
        return value.GetDatum().IsInteger() && isSameValue(field, value.GetLabel(), text);
    });
    if (found != values.end())
        return std::to_string(found->GetDatum().GetInteger());
    const bool isMetric = &field == &_fields.back();
    throw JobError(errors::kUnknownSeries,
                   settings.step() + ": the setting \"" + settings.pathOf(key) + "\" names \"" +
                       text + "\", which is no " +
                       (isMetric ? "metric of the model"
                                 : "value of \"" + field.GetName() + "\" in the model") +
                       base::suggestion(text, values, &CFValue::GetLabel));
}

std::size_t SeriesEncoding::placeOf(const Settings& settings, const Json& name,
                                    const std::string& key) const
{
    if (name.size() != _fields.size())
        settings.refuse(key, "must have " + std::to_string(_fields.size()) + " texts (" +
                                 joinedFields(_fields) + "), not " + std::to_string(name.size()));
    std::string id;
    std::string shown;
    for (std::size_t i = 0; i < _fields.size(); ++i) {
        const std::string text = settings.textAt(name, key, i);
        id += (i == 0 ? "" : "-") + codeOf(settings, key, _fields[i], text);
        shown += (i == 0 ? "" : ", ") + text;
    }
    if (const auto place = _model.placeOf(id))
        return *place;
    throw JobError(errors::kUnknownSeries, settings.step() + ": the setting \"" +
                                               settings.pathOf(key) + "\" names the series \"" +
                                               shown + "\", which the model does not have");
}

} // namespace EmbeddedHV
