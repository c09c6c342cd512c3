#include "report/charts/NetworkSpec.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "report/document/PageText.h"

namespace {

const PageJson* at(const PageJson& value, std::initializer_list<std::string_view> path)
{
    const PageJson* part = &value;
    for (const std::string_view name : path)
        if (part = memberOf(*part, name); part == nullptr)
            return nullptr;
    return part;
}

std::string textAt(const PageJson& value, std::initializer_list<std::string_view> path)
{
    const PageJson* const part = at(value, path);
    return part && part->is_string() ? part->get<std::string>() : std::string();
}

/// The field that a channel shows for every edge.
std::string fieldOf(const PageJson& specification, const char* channel)
{
    return textAt(specification, {"encoding", channel, "field"});
}

double numberOf(const PageJson& row, const std::string& field, double otherwise)
{
    const PageJson* const value = field.empty() ? nullptr : memberOf(row, field);
    const double number = value && value->is_number() ? value->get<double>() : otherwise;
    return std::isfinite(number) ? number : otherwise;
}

/// Rounds a real number; other values are unchanged.
std::string shownValue(const PageJson& value)
{
    return value.is_number_float() ? roundedNumber(value.get<double>()) : scalarText(value);
}

/// Collects nodes and edges. Nodes that only edges name follow the others.
class NetworkReader
{
public:
    explicit NetworkReader(const PageJson& specification)
        : _specification(specification), _source(fieldOf(specification, "source")),
          _target(fieldOf(specification, "target")), _strength(fieldOf(specification, "strength")),
          _sign(fieldOf(specification, "sign"))
    {
    }

    std::optional<NetworkSpec> read()
    {
        const PageJson* const rows = at(_specification, {"data", "values"});
        if (!rows || !rows->is_array() || _source.empty() || _target.empty())
            return std::nullopt;
        _spec.rows = rows;
        _spec.isByLevels = textAt(_specification, {"mark", "layout"}) == "levels";
        if (const PageJson* const nodes = at(_specification, {"datasets", "nodes"}))
            for (const PageJson& node : *nodes)
                addNode(node);
        for (const PageJson& row : *rows)
            addEdge(row);
        if (_spec.nodes.empty())
            return std::nullopt;
        std::ranges::stable_sort(_spec.edges, std::greater(), &NetworkEdge::strength);
        return std::move(_spec);
    }

private:
    std::size_t placeOf(const std::string& name)
    {
        const auto [place, isNew] = _places.emplace(name, _spec.nodes.size());
        if (isNew)
            _spec.nodes.push_back({name, {}, 0});
        return place->second;
    }

    void addNode(const PageJson& json)
    {
        const std::string name = textAt(json, {"name"});
        if (name.empty())
            return;
        NetworkNode& node = _spec.nodes[placeOf(name)];
        node.kind = textAt(json, {"kind"});
        constexpr double kFarthestLevel = 1000;
        node.level = static_cast<int>(
            std::clamp(numberOf(json, "level", 0), -kFarthestLevel, kFarthestLevel));
    }

    void addEdge(const PageJson& row)
    {
        const std::string from = textAt(row, {_source});
        const std::string to = textAt(row, {_target});
        if (from.empty() || to.empty() || from == to)
            return;
        NetworkEdge edge;
        edge.from = placeOf(from);
        edge.to = placeOf(to);
        edge.strength = std::abs(numberOf(row, _strength, 1));
        edge.isNegative = numberOf(row, _sign, 1) < 0;
        edge.details = detailsOf(row);
        _spec.edges.push_back(std::move(edge));
    }

    std::string detailsOf(const PageJson& row) const
    {
        std::string details;
        const PageJson* const fields = at(_specification, {"encoding", "tooltip"});
        if (fields && fields->is_array())
            for (const PageJson& field : *fields)
                if (const PageJson* const value = memberOf(row, textAt(field, {"field"})))
                    details += "\n" + textAt(field, {"field"}) + ": " + shownValue(*value);
        return details;
    }

    const PageJson& _specification;
    std::string _source;
    std::string _target;
    std::string _strength;
    std::string _sign;
    NetworkSpec _spec;
    std::map<std::string, std::size_t> _places;
};

} // namespace

std::optional<NetworkSpec> readNetworkSpec(const PageJson& specification)
{
    const PageJson* const mark = memberOf(specification, "mark");
    const bool isNetwork =
        mark && (*mark == "network" || textAt(specification, {"mark", "type"}) == "network");
    return isNetwork ? NetworkReader(specification).read() : std::nullopt;
}
