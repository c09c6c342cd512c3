#include "components/descriptives/StatDocument.h"

#include "components/descriptives/AnalysisElements.h"
#include "components/descriptives/model/SummaryText.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kModelEnd = "</DataModel>";

void addNumeric(pugi::xml_node& node, const FieldSummary& summary)
{
    const NumericSummary& numeric = summary.numeric;
    if (summary.minimum.empty() && !numeric.mean)
        return;
    pugi::xml_node range = node.append_child("Statistics");
    addAttribute(range, "minimum", summary.minimum);
    addAttribute(range, "maximum", summary.maximum);
    addAttribute(range, "mean", numeric.mean);
    addAttribute(range, "standardDeviation", numeric.standardDeviation);
    addAttribute(range, "variance", numeric.variance);
    addAttribute(range, "skewness", numeric.skewness);
    addAttribute(range, "kurtosis", numeric.kurtosis);
    addAttribute(range, "firstQuartile", numeric.firstQuartile);
    addAttribute(range, "median", numeric.median);
    addAttribute(range, "thirdQuartile", numeric.thirdQuartile);
}

/// A null value is a Value element without the attribute.
void addCounts(pugi::xml_node list, const std::vector<ValueCount>& counts, bool weighted)
{
    for (const ValueCount& count : counts) {
        pugi::xml_node value = list.append_child("Value");
        // An empty text is a value, so it has the attribute.
        if (!count.value.IsNull())
            value.append_attribute("value").set_value(xmlText(count.value.ToString(-1)).c_str());
        addAttribute(value, "count", std::to_string(count.records));
        if (weighted)
            addAttribute(value, "weight", count.weight);
    }
}

void addDistributions(pugi::xml_node& node, const FieldSummary& summary, bool weighted)
{
    if (!summary.distribution.empty() && isText(summary.field))
        addCounts(node.append_child("Distribution"), summary.distribution, weighted);
    if (!summary.missingValues.empty())
        addCounts(node.append_child("Missing"), summary.missingValues, weighted);
}

void addField(pugi::xml_node& summaries, const FieldSummary& summary, bool weighted)
{
    pugi::xml_node node = summaries.append_child("FieldSummary");
    addAttribute(node, "name", xmlText(summary.field.GetName()));
    addAttribute(node, "valid", std::to_string(summary.valid));
    addAttribute(node, "missing", std::to_string(summary.missing));
    if (weighted) {
        addAttribute(node, "validWeight", summary.validWeight);
        addAttribute(node, "missingWeight", summary.missingWeight);
    }
    if (summary.distinct)
        addAttribute(node, "distinct", std::to_string(*summary.distinct));
    addNumeric(node, summary);
    addAnalysesOfField(node, summary, weighted);
    addDistributions(node, summary, weighted);
}

/// The data model of the fields, with the summaries inside.
std::string modelWithSummaries(const DataSummary& summary)
{
    Fields fields;
    pugi::xml_document document;
    // Readers of the model search for exactly this tag, without attributes.
    pugi::xml_node summaries = document.append_child("DatasetSummaries");
    pugi::xml_node dataset = summaries.append_child("Dataset");
    addAttribute(dataset, "records", std::to_string(summary.records));
    if (summary.weightField) {
        addAttribute(dataset, "weightField", xmlText(*summary.weightField));
        addAttribute(dataset, "weight", summary.weight);
    }
    for (const FieldSummary& field : summary.fields) {
        addField(summaries, field, summary.weightField.has_value());
        fields.push_back(field.field);
    }
    addPairs(summaries, summary);
    addMissingPatterns(summaries, summary);
    std::string model = dataModelOf(fields);
    model.insert(model.rfind(kModelEnd), textOf(summaries));
    return model;
}

} // namespace

std::string statDocument(const DataSummary& summary)
{
    return "<StatXML>\n" + modelWithSummaries(summary) + "</StatXML>\n";
}

void GroupStatDocument::add(const DataSummary& summary)
{
    _groups += "<Group number=\"" + std::to_string(++_count) + "\"";
    if (_countsLeftOut)
        _groups += " leftOut=\"" + std::to_string(summary.leftOut) + "\"";
    _groups += ">\n" + modelWithSummaries(summary) + "</Group>\n";
}

} // namespace EmbeddedHV
