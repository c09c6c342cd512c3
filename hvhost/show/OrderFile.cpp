#include <algorithm>
#include <filesystem>
#include <functional>

#include "base/ListText.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/base/Text.h"
#include "hvhost/show/OrderValue.h"
#include "hvhost/show/RenderOrder.h"

namespace {

/// The reader for each key of an object.
template <typename Target>
using Keys = std::vector<std::pair<std::string, std::function<void(Target&, const OrderValue&)>>>;

/// Reads the members of an object. Rejects unknown keys.
template <typename Target>
void readMembers(Target& target, const OrderValue& object, const Keys<Target>& keys)
{
    for (const auto& [name, value] : object.members()) {
        const auto key = std::find_if(keys.begin(), keys.end(), [&name = name](const auto& each) {
            return each.first == name;
        });
        if (key == keys.end()) {
            std::vector<std::string> words;
            for (const auto& [word, read] : keys)
                words.push_back(word);
            value.refuse("there is no such key", nearestHint(words, name, ""));
        }
        key->second(target, value);
    }
}

/// A location whose keys contain dots must be a list.
void readLocation(OutputOrder& order, const OrderValue& value)
{
    if (value.isText())
        order.addLocation(value.text());
    else if (value.isArray())
        order.addLocation(value.texts());
    else
        value.refuse("a location is a text with dots between its keys, or a list of keys");
}

/// Deep enough for any outline, but limited, so that the stack is not exhausted.
void readHeading(OutputOrder& order, const OrderValue& value)
{
    constexpr std::ptrdiff_t kDeepestHeading = 100;
    const std::string heading = value.text();
    if (std::count(heading.begin(), heading.end(), '.') >= kDeepestHeading)
        value.refuse("headings go at most " + std::to_string(kDeepestHeading) + " deep");
    order.setHeading(heading);
}

void readType(OutputOrder& order, const OrderValue& value)
{
    static const std::vector<std::pair<std::string, OutputOrder::Type>> kTypes{
        {"pivot", OutputOrder::Pivot},
        {"chart", OutputOrder::Chart},
        {"interactive", OutputOrder::Interactive},
        {"mapChart", OutputOrder::MapChart}};
    const std::string word = value.text();
    for (const auto& [name, type] : kTypes)
        if (name == word) {
            order.setType(type);
            return;
        }
    value.refuse("a type is pivot, chart, interactive or mapChart");
}

std::string joinedLines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

/// Reads a list of categories to hide.
template <bool isOfRows>
void readHidden(OutputOrder& order, const OrderValue& value)
{
    order.hideCategories(value.texts(), isOfRows);
}

template <bool isOfRows>
void readShown(OutputOrder& order, const OrderValue& value)
{
    for (const std::string& category : value.texts())
        order.hideAllCategoriesExcept(category, isOfRows);
}

/// The keys of an element of `objects`, see docs/hvhost-order.md.
const Keys<OutputOrder>& objectKeys()
{
    static const Keys<OutputOrder> keys{
        {"heading", readHeading},
        {"location", readLocation},
        {"locations",
         [](auto& order, const auto& value) {
             for (const OrderValue& location : value.elements())
                 readLocation(order, location);
         }},
        {"type", readType},
        {"title",
         [](auto& order, const auto& value) {
             order.setOutlineTitle(value.text(), order.translateTitle());
         }},
        {"translateTitle",
         [](auto& order, const auto& value) {
             order.setOutlineTitle(std::string(order.getOutlineTitle()), value.flag());
         }},
        {"subtype", [](auto& order, const auto& value) { order.setOMSSubType(value.text()); }},
        {"options",
         [](auto& order, const auto& value) {
             for (const std::string& option : value.texts())
                 order.setOptions(option);
         }},
        {"caption", [](auto& order,
                       const auto& value) { order.addTextToCaption(joinedLines(value.texts())); }},
        {"pathId", [](auto& order, const auto& value) { order.setPathId(value.text()); }},
        {"hideRows", readHidden<true>},
        {"showRows", readShown<true>},
        {"hideColumns", readHidden<false>},
        {"showColumns", readShown<false>},
        {"needsGeoJson",
         [](auto& order, const auto& value) { order.setNeedsGEOJson(value.flag()); }}};
    return keys;
}

/// Reads the order of one result.
class OrderReader
{
public:
    OrderReader(const JsonFile& file, const nlohmann::ordered_json& document,
                const InterruptWatch& watch)
        : _file(file), _document(document), _watch(watch)
    {
    }
    RenderOrder read(const OrderValue& value) const;

private:
    void readResult(RenderOrder& order, const OrderValue& value) const;
    void readMaps(RenderOrder& order, const OrderValue& value) const;
    static void readObjects(RenderOrder& order, const OrderValue& value);

    const JsonFile& _file;
    const nlohmann::ordered_json& _document;
    const InterruptWatch& _watch;
};

/// The available names, for a hint.
std::string listed(const std::vector<std::string>& words)
{
    return words.empty() ? "the document has no result"
                         : "the document has " + base::joined(words, ", ");
}

void OrderReader::readResult(RenderOrder& order, const OrderValue& value) const
{
    order.result = value.text();
    const nlohmann::ordered_json* const found = find(_document, {order.result});
    if (found == nullptr || found->is_null())
        value.refuse("the document has no result \"" + order.result + "\"",
                     listed(resultNames(_document)));
}

/// File names are relative to the folder of the order file.
void OrderReader::readMaps(RenderOrder& order, const OrderValue& value) const
{
    const std::filesystem::path folder = _file.name == kStandardStream
                                             ? std::filesystem::path()
                                             : std::filesystem::path(_file.name).parent_path();
    for (const auto& [name, file] : value.members())
        order.geoJson[name] = JsonFile((folder / file.text()).string(), _watch).text;
}

void OrderReader::readObjects(RenderOrder& order, const OrderValue& value)
{
    for (const OrderValue& element : value.elements()) {
        RenderOrder::Object& object = order.objects.emplace_back();
        object.origin = element.origin();
        readMembers(object.order, element, objectKeys());
    }
}

RenderOrder OrderReader::read(const OrderValue& value) const
{
    const Keys<RenderOrder> keys{
        {"result", [this](auto& order, const auto& result) { readResult(order, result); }},
        {"notifications",
         [](auto& order, const auto& flag) { order.showsNotifications = flag.flag(); }},
        {"geoJson", [this](auto& order, const auto& maps) { readMaps(order, maps); }},
        {"objects", [](auto& order, const auto& objects) { readObjects(order, objects); }}};
    RenderOrder order;
    readMembers(order, value, keys);
    if (!order.result.empty())
        return order;
    const std::vector<std::string> results = resultNames(_document);
    if (results.size() != 1)
        value.refuse("the key result is missing", listed(results));
    order.result = results.front();
    return order;
}

} // namespace

std::vector<RenderOrder> readOrders(const JsonFile& file, const nlohmann::ordered_json& document,
                                    const InterruptWatch& watch)
{
    const OrderReader reader(file, document, watch);
    std::vector<RenderOrder> orders;
    for (const OrderValue& value : OrderValue(file).elements())
        orders.push_back(reader.read(value));
    return orders;
}
