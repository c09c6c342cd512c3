#include "datafile/Dictionary.h"

#include <algorithm>
#include <set>
#include <string_view>

#include <nlohmann/json.hpp>

#include "base/JsonDepth.h"
#include "datafile/Fault.h"
#include "datafile/FaultIds.h"
#include "datafile/FieldNames.h"

namespace datafile {
namespace {

using Json = nlohmann::json;
/// Keeps the order of keys, for readable text. Not used for reading, because the search for a key
/// is linear.
using OrderedJson = nlohmann::ordered_json;

constexpr int kSchema = 1;
/// A dictionary is flat; value labels are its deepest part.
constexpr int kDeepest = 8;
constexpr std::string_view kLevels[] = {"unknown", "nominal", "ordinal", "scale"};
constexpr std::string_view kRoleWords[] = {"input", "target",    "both",
                                           "none",  "partition", "recordId"};
constexpr std::string_view kValueTypes[] = {"number", "text"};

/// A problem in a text, before its origin is known.
struct Wrong
{
    std::string what;
};

OrderedJson jsonOf(const DictionaryValue& value)
{
    return std::visit([](const auto& content) { return OrderedJson(content); }, value);
}

OrderedJson jsonOf(const DictionaryFormat& format)
{
    return {{"type", format.type}, {"width", format.width}, {"decimals", format.decimals}};
}

OrderedJson jsonOf(const DictionaryMissing& missing)
{
    OrderedJson json = OrderedJson::object();
    if (missing.hasRange)
        json["range"] = {{"from", missing.from ? OrderedJson(*missing.from) : OrderedJson()},
                         {"to", missing.to ? OrderedJson(*missing.to) : OrderedJson()}};
    for (const DictionaryValue& value : missing.values)
        json["values"].push_back(jsonOf(value));
    return json;
}

/// Omits defaults, so that a dictionary is short.
OrderedJson jsonOf(const DictionaryVariable& variable)
{
    OrderedJson json = {{"name", variable.name}};
    if (!variable.label.empty())
        json["label"] = variable.label;
    if (variable.isText)
        json["type"] = kValueTypes[1];
    if (variable.width > 0)
        json["width"] = variable.width;
    json["level"] = kLevels[static_cast<std::size_t>(variable.level)];
    if (!variable.measure.empty())
        json["measure"] = variable.measure;
    json["role"] = kRoleWords[static_cast<std::size_t>(variable.role)];
    if (variable.print.type != 0)
        json["print"] = jsonOf(variable.print);
    if (variable.write.type != 0)
        json["write"] = jsonOf(variable.write);
    for (const auto& [value, label] : variable.valueLabels)
        json["valueLabels"].push_back({{"value", jsonOf(value)}, {"label", label}});
    if (!variable.missing.empty())
        json["missing"] = jsonOf(variable.missing);
    return json;
}

/// The member of an object; null if it is missing. Throws Wrong if it has a wrong type.
const Json* member(const Json& json, const char* key, bool (*isRight)(const Json&),
                   const char* kind)
{
    const auto found = json.find(key);
    if (found == json.end())
        return nullptr;
    if (!isRight(*found))
        throw Wrong{"\"" + std::string(key) + "\" is not " + kind};
    return &*found;
}

bool isText(const Json& json)
{
    return json.is_string();
}
bool isList(const Json& json)
{
    return json.is_array();
}
bool isObject(const Json& json)
{
    return json.is_object();
}
bool isCount(const Json& json)
{
    return json.is_number_unsigned();
}

std::string textIn(const Json& json, const char* key)
{
    const Json* found = member(json, key, isText, "a text");
    return found ? found->get<std::string>() : std::string();
}

/// The next functions read a member; a missing one has the default.
std::uint64_t countIn(const Json& json, const char* key, std::uint64_t most)
{
    const Json* found = member(json, key, isCount, "a whole number");
    const std::uint64_t count = found ? found->get<std::uint64_t>() : 0;
    if (count > most)
        throw Wrong{"\"" + std::string(key) + "\" is above " + std::to_string(most)};
    return count;
}

std::vector<std::string> textsIn(const Json& json, const char* key)
{
    std::vector<std::string> texts;
    if (const Json* found = member(json, key, isList, "a list"))
        for (const Json& text : *found) {
            if (!text.is_string())
                throw Wrong{"\"" + std::string(key) + "\" holds something that is not a text"};
            texts.push_back(text.get<std::string>());
        }
    return texts;
}

/// The index of the word among the allowed ones; the first one is the default.
template <std::size_t Count>
std::size_t wordIn(const Json& json, const char* key, const std::string_view (&words)[Count])
{
    const std::string word = textIn(json, key);
    if (word.empty())
        return 0;
    const auto found = std::find(std::begin(words), std::end(words), word);
    if (found == std::end(words))
        throw Wrong{"\"" + std::string(key) + "\" is \"" + word + "\", which is not a known word"};
    return static_cast<std::size_t>(found - std::begin(words));
}

DictionaryValue valueOf(const Json& json, bool isString)
{
    if (isString ? !json.is_string() : !json.is_number())
        throw Wrong{isString ? "a value of a text is not a text"
                             : "a value of a number is not a number"};
    if (isString)
        return json.get<std::string>();
    return json.get<double>();
}

DictionaryFormat formatIn(const Json& json, const char* key)
{
    DictionaryFormat format;
    if (const Json* found = member(json, key, isObject, "an object")) {
        format.type = static_cast<std::uint8_t>(countIn(*found, "type", 255));
        format.width = static_cast<std::uint16_t>(countIn(*found, "width", 65535));
        format.decimals = static_cast<std::uint8_t>(countIn(*found, "decimals", 255));
    }
    // Without a type there is no format.
    return format.type != 0 ? format : DictionaryFormat();
}

std::optional<double> endIn(const Json& range, const char* key)
{
    const auto found = range.find(key);
    if (found == range.end() || found->is_null())
        return std::nullopt;
    if (!found->is_number())
        throw Wrong{"an end of the missing range is not a number"};
    return found->get<double>();
}

/// At most three values, or a range and one value, as in the host.
DictionaryMissing missingIn(const Json& json, bool isString)
{
    DictionaryMissing missing;
    const Json* found = member(json, "missing", isObject, "an object");
    if (!found)
        return missing;
    if (const Json* values = member(*found, "values", isList, "a list"))
        for (const Json& value : *values)
            missing.values.push_back(valueOf(value, isString));
    if (const Json* range = member(*found, "range", isObject, "an object")) {
        if (isString)
            throw Wrong{"a text has a range of missing values"};
        missing.hasRange = true;
        missing.from = endIn(*range, "from");
        missing.to = endIn(*range, "to");
    }
    if (missing.values.size() > missing.mostValues())
        throw Wrong{"there are too many missing values"};
    return missing;
}

DictionaryVariable variableOf(const Json& json)
{
    DictionaryVariable variable;
    variable.name = textIn(json, "name");
    if (variable.name.empty())
        throw Wrong{"a variable has no name"};
    try {
        constexpr std::uint64_t kWidest = 32767;
        variable.label = textIn(json, "label");
        variable.width = static_cast<int>(countIn(json, "width", kWidest));
        variable.isText = wordIn(json, "type", kValueTypes) == 1;
        if (variable.width > 0 && !variable.isText)
            throw Wrong{"a number has a width"};
        variable.measure = textIn(json, "measure");
        variable.level = static_cast<DictionaryLevel>(wordIn(json, "level", kLevels));
        variable.role = static_cast<DictionaryRole>(wordIn(json, "role", kRoleWords));
        variable.print = formatIn(json, "print");
        variable.write = formatIn(json, "write");
        if (const Json* labels = member(json, "valueLabels", isList, "a list"))
            for (const Json& label : *labels) {
                if (!label.is_object() || !label.contains("value"))
                    throw Wrong{"a value label has no value"};
                variable.valueLabels.emplace_back(valueOf(label["value"], variable.isText),
                                                  textIn(label, "label"));
            }
        variable.missing = missingIn(json, variable.isText);
    } catch (const Wrong& wrong) {
        throw Wrong{"variable \"" + variable.name + "\": " + wrong.what};
    }
    return variable;
}

/// The host ignores letter case in names, so no two names may differ only in it. Weight and split
/// refer to columns by their exact names.
void checkNames(const Dictionary& dictionary)
{
    std::set<std::string> names;
    std::set<std::string> exact;
    for (const DictionaryVariable& variable : dictionary.variables) {
        if (!names.insert(foldedName(variable.name)).second)
            throw Wrong{"two variables are named \"" + variable.name + "\", letter case apart"};
        exact.insert(variable.name);
    }
    const auto check = [&](const std::string& name, const char* what) {
        if (!exact.contains(name))
            throw Wrong{"the " + std::string(what) + " variable \"" + name + "\" is not there"};
    };
    if (!dictionary.weight.empty())
        check(dictionary.weight, "weight");
    for (const std::string& name : dictionary.split)
        check(name, "split");
}

Dictionary read(const Json& json)
{
    if (!json.is_object())
        throw Wrong{"it is not an object"};
    // A later version cannot be interpreted, and half a dictionary gives wrong results.
    if (countIn(json, "schema", UINT32_MAX) > kSchema)
        throw Wrong{"it is of a later version"};
    Dictionary dictionary;
    if (const std::string encoding = textIn(json, "encoding"); !encoding.empty())
        dictionary.encoding = encoding;
    dictionary.weight = textIn(json, "weight");
    dictionary.split = textsIn(json, "split");
    dictionary.documents = textsIn(json, "documents");
    const Json* variables = member(json, "variables", isList, "a list");
    if (!variables)
        throw Wrong{"it has no variables"};
    for (const Json& variable : *variables) {
        if (!variable.is_object())
            throw Wrong{"a variable is not an object"};
        dictionary.variables.push_back(variableOf(variable));
    }
    checkNames(dictionary);
    return dictionary;
}

} // namespace

std::string dictionaryText(const Dictionary& dictionary)
{
    OrderedJson json = {{"schema", kSchema}, {"encoding", dictionary.encoding}};
    if (!dictionary.weight.empty())
        json["weight"] = dictionary.weight;
    if (!dictionary.split.empty())
        json["split"] = dictionary.split;
    if (!dictionary.documents.empty())
        json["documents"] = dictionary.documents;
    json["variables"] = OrderedJson::array();
    for (const DictionaryVariable& variable : dictionary.variables)
        json["variables"].push_back(jsonOf(variable));
    return json.dump(-1, ' ', false, OrderedJson::error_handler_t::replace);
}

Dictionary dictionaryOf(const std::string& text, const std::string& origin)
{
    const auto fault = [&](const std::string& what) {
        return Fault(
            faults::kDataModel,
            {.step = "read", .file = origin, .what = "the dictionary cannot be used: " + what});
    };
    try {
        if (base::placeTooDeep(text, kDeepest) != text.npos)
            throw Wrong{"it is nested too deep"};
        return read(Json::parse(text));
    } catch (const Wrong& wrong) {
        throw fault(wrong.what);
    } catch (const Json::exception& error) {
        throw fault(std::string("it is not JSON: ") + error.what());
    }
}

} // namespace datafile
