#include "components/descriptives/summary/FieldParts.h"

#include <algorithm>
#include <iterator>

namespace EmbeddedHV {

void forFieldParts(const ComponentQueries& queries, const InputTable& table,
                   const std::string& partName, DataSummary& summary,
                   const std::function<void(const InputTable& part, DataSummary& some)>& work)
{
    if (summary.fields.size() <= kFieldsOfPart)
        return work(table, summary);
    const InputTable part = table.part(partName);
    for (std::size_t next = 0; next < summary.fields.size(); next += kFieldsOfPart) {
        const auto begin = summary.fields.begin() + static_cast<std::ptrdiff_t>(next);
        const auto end = begin + static_cast<std::ptrdiff_t>(
                                     std::min(kFieldsOfPart, summary.fields.size() - next));
        DataSummary some;
        some.records = summary.records;
        some.weightField = summary.weightField;
        some.weight = summary.weight;
        std::move(begin, end, std::back_inserter(some.fields));
        queries.run(table.partCreation(part, fieldsOf(some)));
        work(part, some);
        std::move(some.fields.begin(), some.fields.end(), begin);
    }
}

} // namespace EmbeddedHV
