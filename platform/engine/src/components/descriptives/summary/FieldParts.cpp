#include "components/descriptives/summary/FieldParts.h"

#include <algorithm>
#include <iterator>
#include <set>

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

void forFieldSets(const ComponentQueries& queries, const InputTable& table,
                  const std::string& partName, const Fields& fields,
                  const std::vector<std::vector<std::size_t>>& sets,
                  const std::function<void(const InputTable& part, std::size_t set)>& work)
{
    const bool isWide = fields.size() > kFieldsOfPart;
    const InputTable part = isWide ? table.part(partName) : table;
    for (std::size_t next = 0; next < sets.size();) {
        std::set<std::size_t> places;
        const std::size_t begin = next;
        do
            places.insert(sets[next].begin(), sets[next].end());
        while (++next < sets.size() && places.size() + sets[next].size() <= kFieldsOfPart);
        Fields some;
        for (const std::size_t place : places)
            some.push_back(fields[place]);
        if (isWide)
            queries.run(table.partCreation(part, some));
        for (std::size_t set = begin; set < next; ++set)
            work(part, set);
    }
}

} // namespace EmbeddedHV
