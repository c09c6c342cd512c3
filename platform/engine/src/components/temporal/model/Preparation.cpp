#include "components/temporal/model/Preparation.h"

#include <algorithm>
#include <set>

#include "ErrorIds.h"
#include "base/NumberText.h"
#include "components/descriptives/model/SummaryText.h"
#include "components/temporal/base/DocumentPlace.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostTrainedOnValues = 50'000'000;
constexpr const char* kMetricField = "metricField";

/// A value of a dimension as the library compares it.
std::string labelOf(const DocumentPlace& place)
{
    const Json& value = place.value();
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_boolean())
        return value.get<bool>() ? "true" : "false";
    if (value.is_number_float())
        return base::shortestNumber(place.real());
    if (value.is_number_integer())
        return value.dump();
    place.refuse("is not a value of a dimension");
}

/// The storage of a dimension in the document; Unknown if it is absent.
CFField::StorageType statedStorage(const DocumentPlace& output, const std::string& name)
{
    const auto list = output.optionalMember("dimensions");
    for (std::size_t i = 0; list && i < list->listSize(); ++i) {
        if (list->element(i).member("name").text() != name)
            continue;
        const std::string& word = list->element(i).member("storage").text();
        for (const auto storage : {CFField::Integer, CFField::Real})
            if (word == WordOf(storage))
                return storage;
        // The values of other storages are found by their texts.
        return CFField::String;
    }
    return CFField::Unknown;
}

/// The storage that suits the values of a dimension.
CFField::StorageType suitingStorage(const DocumentPlace& list)
{
    const auto all = [&](bool (Json::*is)() const noexcept) {
        return std::all_of(list.value().begin(), list.value().end(),
                           [is](const Json& value) { return (value.*is)(); });
    };
    if (list.listSize() == 0)
        return CFField::String;
    if (all(&Json::is_number_integer))
        return CFField::Integer;
    return all(&Json::is_number) ? CFField::Real : CFField::String;
}

/// A field whose values are the codes from 1 on, with the values of the data as labels.
CFField codedField(const std::string& name, const std::vector<std::string>& labels)
{
    CFField field(name, CFField::Nominal, CFField::Integer);
    std::vector<CFValue> values;
    for (std::size_t i = 0; i < labels.size(); ++i)
        values.emplace_back(CFDatum(static_cast<std::int64_t>(i + 1)), labels[i]);
    field.SetValues(std::move(values));
    return field;
}

std::vector<std::string> textList(const DocumentPlace& list)
{
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < list.listSize(); ++i)
        texts.push_back(list.element(i).text());
    return texts;
}

std::vector<std::string> dimensionsOf(const DocumentPlace& settings)
{
    const auto list = settings.optionalMember("dimFieldList");
    std::vector<std::string> names = list ? textList(*list) : std::vector<std::string>();
    // The library writes one empty name for no dimensions.
    if (names.size() == 1 && names[0].empty())
        names.clear();
    std::set<std::string> known = {kMetricField};
    for (std::size_t i = 0; i < names.size(); ++i)
        if (!known.insert(names[i]).second)
            list->element(i).refuse("is the name of another field");
    return names;
}

CFField dimensionField(const DocumentPlace& root, const std::string& name)
{
    const DocumentPlace list = root.member("settings").member("dimValueLists").member(name.c_str());
    const CFField::StorageType stated = statedStorage(root.member("output"), name);
    std::vector<std::string> labels;
    for (std::size_t i = 0; i < list.listSize(); ++i)
        labels.push_back(labelOf(list.element(i)));
    CFField field = codedField(name, labels);
    field.SetBaseField(CFField(name, CFField::Nominal,
                               stated == CFField::Unknown ? suitingStorage(list) : stated));
    return field;
}

void readFields(const DocumentPlace& root, Preparation& preparation)
{
    const DocumentPlace settings = root.member("settings");
    const std::vector<std::string> metrics = textList(settings.member("metricFieldList"));
    Fields& names = preparation.nameFields;
    for (const std::string& name : dimensionsOf(settings))
        names.push_back(dimensionField(root, name));
    names.push_back(codedField(kMetricField, metrics));
    preparation.fields = names;
    for (const std::string& metric : metrics)
        if (!findField(preparation.fields, metric))
            preparation.fields.emplace_back(metric, CFField::Continuous, CFField::Real);
}

std::vector<PreparedSeries> preparedSeries(const DocumentPlace& list)
{
    std::vector<PreparedSeries> series;
    std::set<std::string> ids;
    for (std::size_t i = 0; i < list.listSize(); ++i) {
        const DocumentPlace place = list.element(i);
        PreparedSeries next{place.member("id").text(), {}};
        const DocumentPlace name = place.member("name");
        for (std::size_t part = 0; part < name.listSize(); ++part)
            next.name.push_back(labelOf(name.element(part)));
        if (!ids.insert(next.id).second)
            place.refuse("has the id \"" + next.id + "\" of another series");
        series.push_back(std::move(next));
    }
    return series;
}

} // namespace

Preparation preparationOf(std::string document, const DocumentSource& source)
{
    const Json root =
        parsedDocument(document, kMostTrainedOnValues, source, errors::kPreparationFile);
    const DocumentPlace place(root, source, errors::kPreparationFile);
    Preparation preparation;
    preparation.series = preparedSeries(place.member("output").member("series"));
    readFields(place, preparation);
    preparation.document = std::move(document);
    return preparation;
}

std::string modelStatistics(const Fields& fields)
{
    return "<StatXML>\n" + dataModelOf(fields) + "</StatXML>\n";
}

} // namespace EmbeddedHV
