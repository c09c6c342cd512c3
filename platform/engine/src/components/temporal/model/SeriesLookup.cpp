#include "components/temporal/model/SeriesLookup.h"

#include "CFMetaData.h"
#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "components/temporal/preparation/DimensionKey.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kMetricCodes = "metricField";

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
        throw JobError(errors::kModelFile,
                       {.step = component,
                        .name = kModelStatisticsEntry,
                        .what = std::string("the entry \"") + kModelStatisticsEntry +
                                "\" of the model cannot be used: " + error.what()});
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

/// The fields of the names of series in the documents of a model.
Fields nameFields(const ModelArchive& archive, const std::string& component)
{
    const CFMetaData dataModel = dataModelIn(archive, component);
    std::vector<std::string> names = dimensionNames(archive);
    names.emplace_back(kMetricCodes);
    Fields fields;
    for (const std::string& name : names) {
        const CFField* const field = dataModel.GetField(name);
        if (!field)
            throw JobError(
                errors::kModelFile,
                {.step = component,
                 .field = name,
                 .what = "the data model of the model lacks the field \"" + name + "\""});
        fields.push_back(*field);
    }
    return fields;
}

/// A number is accepted in place of its text.
std::string partText(const Settings& settings, const Json& name, const std::string& key,
                     std::size_t index)
{
    return name[index].is_number() ? name[index].dump() : settings.textAt(name, key, index);
}

} // namespace

SeriesLookup::SeriesLookup(Fields fields, const std::vector<ModelSeries>& series, std::string owner)
    : _owner(std::move(owner))
{
    for (CFField& field : fields)
        _parts.emplace_back(std::move(field));
    for (std::size_t place = 0; place < series.size(); ++place)
        _places.emplace(series[place].id, place);
}

SeriesLookup::SeriesLookup(const ModelArchive& archive, const TcmModel& model,
                           const std::string& component)
    : SeriesLookup(nameFields(archive, component), model.series, "the model")
{
}

SeriesLookup::Part::Part(CFField codedField) : field(std::move(codedField))
{
    // The field of the metrics has no base field: its values are texts.
    if (const CFField* const base = field.GetBaseField())
        storage = base->GetStorage();
    for (const CFValue& value : field.GetValues())
        if (value.GetDatum().IsInteger())
            codes.emplace(dimensionKey(value.GetLabel(), storage),
                          std::to_string(value.GetDatum().GetInteger()));
}

std::string SeriesLookup::neededParts() const
{
    std::string text = std::to_string(_parts.size()) + " texts (";
    for (std::size_t i = 0; i + 1 < _parts.size(); ++i)
        text += "the value of \"" + _parts[i].field.GetName() + "\", ";
    return text + "the metric)";
}

const std::string& SeriesLookup::codeOf(const Settings& settings, const std::string& key,
                                        const Part& part, const std::string& text) const
{
    const auto found = part.codes.find(dimensionKey(text, part.storage));
    if (found != part.codes.end())
        return found->second;
    const bool isMetric = &part == &_parts.back();
    const std::string suggestion =
        base::suggestion(text, part.field.GetValues(), &CFValue::GetLabel);
    throw JobError(
        errors::kUnknownSeries,
        {.step = settings.step(),
         .field = isMetric ? "" : part.field.GetName(),
         .setting = settings.pathOf(key),
         .name = text,
         .hasSuggestion = !suggestion.empty(),
         .what = "names \"" + text + "\", which is not a " +
                 (isMetric ? "metric of " : "value of \"" + part.field.GetName() + "\" in ") +
                 _owner + suggestion});
}

std::size_t SeriesLookup::placeAt(const Settings& settings, const Json& list,
                                  const std::string& key, std::size_t index) const
{
    const std::string place = key + "[" + std::to_string(index) + "]";
    if (!list[index].is_array())
        settings.refuse(place, "is not a list of texts");
    return placeOf(settings, list[index], place);
}

std::size_t SeriesLookup::placeOf(const Settings& settings, const std::string& key) const
{
    return placeOf(settings, settings.neededList(key), key);
}

std::size_t SeriesLookup::placeOf(const Settings& settings, const Json& name,
                                  const std::string& key) const
{
    if (name.size() != _parts.size())
        settings.refuse(key, "must have " + neededParts() + ", not " + std::to_string(name.size()));
    std::string id;
    std::vector<std::string> texts;
    std::string shown;
    for (std::size_t i = 0; i < _parts.size(); ++i) {
        const std::string text = partText(settings, name, key, i);
        id += (i == 0 ? "" : "-") + codeOf(settings, key, _parts[i], text);
        texts.push_back(text);
        shown += (i == 0 ? "" : ", ") + text;
    }
    const auto place = _places.find(id);
    if (place != _places.end())
        return place->second;
    throw JobError(errors::kUnknownSeries, {.step = settings.step(),
                                            .series = texts,
                                            .setting = settings.pathOf(key),
                                            .what = "names the series \"" + shown + "\", which " +
                                                    _owner + " does not have"});
}

std::vector<std::size_t> SeriesLookup::placesOfMetric(const Settings& settings,
                                                      const std::string& metric,
                                                      const std::string& key) const
{
    const std::string& code = codeOf(settings, key, _parts.back(), metric);
    const std::string end = "-" + code;
    std::vector<std::size_t> places;
    for (const auto& [id, place] : _places)
        if (id == code || id.ends_with(end))
            places.push_back(place);
    if (places.empty())
        settings.refuse(key, "names the metric \"" + metric + "\", of which " + _owner +
                                 " has no series");
    return places;
}

} // namespace EmbeddedHV
