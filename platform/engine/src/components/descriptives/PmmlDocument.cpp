#include "components/descriptives/PmmlDocument.h"

#include <map>

#include "components/descriptives/model/SummaryText.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kNameSpace = "http://www.dmg.org/PMML-4_4";
constexpr const char* kVersion = "4.4";

const char* dataType(CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Integer:
        return "integer";
    case CFField::Real:
        return "double";
    case CFField::Date:
        return "date";
    case CFField::Time:
        return "time";
    case CFField::Timestamp:
        return "dateTime";
    default:
        return "string";
    }
}

const char* operationType(CFField::FieldType measure)
{
    if (measure == CFField::Continuous)
        return "continuous";
    return measure == CFField::Ordinal ? "ordinal" : "categorical";
}

/// Data models store dates and times as numbers. PMML would not read these as dates.
bool hasPlainValues(const CFField& field)
{
    return field.GetStorage() == CFField::Integer || field.GetStorage() == CFField::Real ||
           field.GetStorage() == CFField::String;
}

void addDataField(pugi::xml_node& dictionary, const CFField& field)
{
    pugi::xml_node node = dictionary.append_child("DataField");
    addAttribute(node, "name", xmlText(field.GetName()));
    addAttribute(node, "displayName", xmlText(field.GetLabel()));
    addAttribute(node, "optype", operationType(field.GetType()));
    addAttribute(node, "dataType", dataType(field.GetStorage()));
    // The values of a continuous field do not limit which values it may have.
    if (field.GetType() == CFField::Continuous || !hasPlainValues(field))
        return;
    for (const CFValue& value : field.GetValues()) {
        pugi::xml_node entry = node.append_child("Value");
        entry.append_attribute("value").set_value(xmlText(value.GetText()).c_str());
        addAttribute(entry, "displayValue", xmlText(value.GetLabel()));
    }
}

void addQuantile(pugi::xml_node& info, double limit, double value)
{
    pugi::xml_node quantile = info.append_child("Quantile");
    addAttribute(quantile, "quantileLimit", limit);
    addAttribute(quantile, "quantileValue", value);
}

void addNumericInfo(pugi::xml_node& node, const FieldSummary& summary)
{
    const NumericSummary& numeric = summary.numeric;
    if (!numeric.mean)
        return;
    pugi::xml_node info = node.append_child("NumericInfo");
    addAttribute(info, "minimum", summary.minimum);
    addAttribute(info, "maximum", summary.maximum);
    addAttribute(info, "mean", numeric.mean);
    addAttribute(info, "standardDeviation", numeric.standardDeviation);
    addAttribute(info, "median", numeric.median);
    if (!numeric.firstQuartile || !numeric.thirdQuartile)
        return;
    addAttribute(info, "interQuartileRange", *numeric.thirdQuartile - *numeric.firstQuartile);
    std::map<double, double> quantiles = {{25, *numeric.firstQuartile},
                                          {75, *numeric.thirdQuartile}};
    for (const Percentile& percentile : summary.percentiles)
        if (percentile.value)
            quantiles[percentile.percent] = *percentile.value;
    for (const auto& [limit, value] : quantiles)
        addQuantile(info, limit, value);
}

/// An entry of a PMML array of texts: quoted, with inner quotes and backslashes escaped.
std::string arrayText(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

void addArray(pugi::xml_node& node, const char* type, std::size_t count, const std::string& entries)
{
    pugi::xml_node array = node.append_child("Array");
    addAttribute(array, "n", std::to_string(count));
    addAttribute(array, "type", std::string(type));
    array.text().set(entries.c_str());
}

void addDistribution(pugi::xml_node& node, const FieldSummary& summary)
{
    if (summary.distribution.empty() || !isText(summary.field))
        return;
    std::string values;
    std::string counts;
    for (const ValueCount& count : summary.distribution) {
        values += (values.empty() ? "" : " ") + arrayText(xmlText(count.value.ToString(-1)));
        counts += (counts.empty() ? "" : " ") + numberText(count.weight);
    }
    pugi::xml_node distribution = node.append_child("DiscrStats");
    addArray(distribution, "string", summary.distribution.size(), values);
    addArray(distribution, "real", summary.distribution.size(), counts);
}

void addStatistics(pugi::xml_node& statistics, const FieldSummary& summary)
{
    pugi::xml_node node = statistics.append_child("UnivariateStats");
    addAttribute(node, "field", xmlText(summary.field.GetName()));
    addAttribute(node, "weighted", std::string("0"));
    pugi::xml_node counts = node.append_child("Counts");
    addAttribute(counts, "totalFreq", summary.validWeight + summary.missingWeight);
    addAttribute(counts, "missingFreq", summary.missingWeight);
    if (summary.distinct)
        addAttribute(counts, "cardinality", std::to_string(*summary.distinct));
    addNumericInfo(node, summary);
    addDistribution(node, summary);
}

} // namespace

std::string pmmlDocument(const DataSummary& summary)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("PMML");
    addAttribute(root, "xmlns", std::string(kNameSpace));
    addAttribute(root, "version", std::string(kVersion));
    pugi::xml_node header = root.append_child("Header");
    pugi::xml_node application = header.append_child("Application");
    addAttribute(application, "name", std::string("hvinteg"));
    pugi::xml_node dictionary = root.append_child("DataDictionary");
    addAttribute(dictionary, "numberOfFields", std::to_string(summary.fields.size()));
    pugi::xml_node extension = root.append_child("Extension");
    addAttribute(extension, "name", std::string("ModelStats"));
    pugi::xml_node statistics = extension.append_child("ModelStats");
    for (const FieldSummary& field : summary.fields) {
        addDataField(dictionary, field.field);
        addStatistics(statistics, field);
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + textOf(root);
}

} // namespace EmbeddedHV
