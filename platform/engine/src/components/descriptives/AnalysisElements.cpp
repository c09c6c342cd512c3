#include "components/descriptives/AnalysisElements.h"

#include "components/descriptives/model/SummaryText.h"

namespace EmbeddedHV {
namespace {

void addPercentiles(pugi::xml_node& node, const FieldSummary& field)
{
    if (field.percentiles.empty())
        return;
    pugi::xml_node list = node.append_child("Percentiles");
    for (const Percentile& percentile : field.percentiles) {
        pugi::xml_node entry = list.append_child("Percentile");
        addAttribute(entry, "percent", percentile.percent);
        addAttribute(entry, "value", percentile.value);
    }
}

} // namespace

void addAnalysesOfField(pugi::xml_node& node, const FieldSummary& field)
{
    addPercentiles(node, field);
}

} // namespace EmbeddedHV
