#include <algorithm>
#include <array>

#include "hvhost/show/RenderOrder.h"

namespace {

using Json = nlohmann::ordered_json;

/// Deeper objects are not searched.
constexpr std::size_t kDeepestPath = 100;
constexpr const char* kDataModel = "dataModel";
constexpr const char* kNotifications = "notifications";

bool isTable(const Json& object)
{
    const auto cells = object.find("cells");
    return cells != object.end() && cells->is_array() &&
           (object.contains("dimensions") || object.contains("footnotes"));
}

/// A chart names the schema of its specification, or has data and a mark or a composition.
bool isChart(const Json& object)
{
    constexpr std::array<const char*, 7> kDrawn{"mark",   "layer",  "hconcat", "vconcat",
                                                "concat", "repeat", "facet"};
    constexpr std::array<const char*, 3> kGiven{"data", "encoding", "spec"};
    const auto has = [&](const char* key) { return object.contains(key); };
    return has("$schema") || (std::any_of(kDrawn.begin(), kDrawn.end(), has) &&
                              std::any_of(kGiven.begin(), kGiven.end(), has));
}

/// Searches one result object.
class ResultScan
{
public:
    explicit ResultScan(RenderOrder& order) : _order(order) {}

    void visit(const Json& object, const std::string& key)
    {
        if (isTable(object))
            add(OutputOrder::Pivot, key);
        else if (isChart(object))
            add(OutputOrder::Chart, key);
        else if (_path.size() < kDeepestPath)
            for (const auto& [name, value] : object.items())
                if (value.is_object() && name != kNotifications)
                    below(name, value);
    }

private:
    void below(const std::string& name, const Json& object)
    {
        _path.push_back(name);
        visit(object, name);
        _path.pop_back();
    }
    void add(OutputOrder::Type type, const std::string& key)
    {
        RenderOrder::Object& added = _order.objects.emplace_back();
        added.order.setType(type)
            .setOutlineTitle(key, false)
            .addLocation(_path)
            .setHeading(heading());
    }
    /// The keys above the object. A key with a dot makes two headings.
    std::string heading() const
    {
        std::string path = _path.empty() ? std::string() : _order.result;
        for (std::size_t i = 0; i + 1 < _path.size(); ++i)
            path += "." + _path[i];
        return path;
    }

    RenderOrder& _order;
    std::vector<std::string> _path;
};

} // namespace

std::vector<std::string> resultNames(const Json& document)
{
    std::vector<std::string> names;
    for (const auto& [name, value] : document.items())
        if (value.is_object() && name != kDataModel)
            names.push_back(name);
    return names;
}

const Json* find(const Json& result, const std::vector<std::string>& location)
{
    const Json* node = &result;
    for (const std::string& key : location) {
        if (!node->is_object() || !node->contains(key))
            return nullptr;
        node = &node->at(key);
    }
    return node;
}

bool isResultDocument(const Json& document)
{
    const auto orders = everythingIn(document);
    return std::any_of(orders.begin(), orders.end(), [&](const RenderOrder& order) {
        const Json& result = document.at(order.result);
        return !order.objects.empty() ||
               (result.contains(kNotifications) && result.at(kNotifications).is_array());
    });
}

std::vector<RenderOrder> everythingIn(const Json& document)
{
    std::vector<RenderOrder> orders;
    for (const std::string& name : resultNames(document)) {
        RenderOrder& order = orders.emplace_back();
        order.result = name;
        ResultScan(order).visit(document.at(name), name);
    }
    return orders;
}
