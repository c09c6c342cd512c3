#include "model/FieldOrder.h"

#include <functional>
#include <queue>
#include <unordered_map>

#include "pmml/ModelFault.h"
#include "pmml/PmmlDocument.h"

namespace scoring {
namespace {

/// Collects the names of the fields that elements refer to. Does not recurse, because a document
/// may be deep.
class SourceCollector : public pugi::xml_tree_walker
{
public:
    explicit SourceCollector(std::unordered_set<std::string>& sources) : _sources(sources) {}

    bool for_each(pugi::xml_node& node) override
    {
        // The names of table columns are not names of fields.
        const std::string_view name = localName(node);
        for (const std::string_view known :
             {"FieldRef", "NormContinuous", "NormDiscrete", "Discretize", "FieldColumnPair"})
            if (name == known && node.attribute("field"))
                _sources.insert(node.attribute("field").value());
        return true;
    }

private:
    std::unordered_set<std::string>& _sources;
};

/// How many fields each field waits for, and which fields wait for it.
struct Waiting
{
    std::vector<std::size_t> count;
    std::vector<std::vector<std::size_t>> behind;
};

Waiting waitingOf(const std::vector<DerivedField>& fields)
{
    std::unordered_map<std::string_view, std::size_t> positions;
    for (std::size_t i = 0; i < fields.size(); ++i)
        positions.emplace(fields[i].name, i);
    Waiting waiting{std::vector<std::size_t>(fields.size()),
                    std::vector<std::vector<std::size_t>>(fields.size())};
    for (std::size_t i = 0; i < fields.size(); ++i)
        for (const std::string& source : fields[i].sources)
            if (const auto found = positions.find(source); found != positions.end()) {
                waiting.behind[found->second].push_back(i);
                ++waiting.count[i];
            }
    return waiting;
}

} // namespace

DerivedField derivedField(pugi::xml_node element)
{
    DerivedField field{required(element, "name"), element, {}};
    SourceCollector collector(field.sources);
    element.traverse(collector);
    return field;
}

/// Repeatedly takes the first field that waits for no other. The remaining fields depend on
/// themselves.
std::vector<std::size_t> orderOf(const std::vector<DerivedField>& fields)
{
    Waiting waiting = waitingOf(fields);
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> ready;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (waiting.count[i] == 0)
            ready.push(i);
    std::vector<std::size_t> order;
    while (!ready.empty()) {
        // Of several ready fields, take the first of the document. So the order is always the same.
        order.push_back(ready.top());
        ready.pop();
        for (const std::size_t next : waiting.behind[order.back()])
            if (--waiting.count[next] == 0)
                ready.push(next);
    }
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (waiting.count[i] > 0)
            throw ModelFault("derived field \"" + fields[i].name +
                             "\": it is made from itself, directly or by way of others");
    return order;
}

} // namespace scoring
