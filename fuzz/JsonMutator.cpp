#include "JsonMutator.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {
constexpr std::size_t kDeepest = 600;
constexpr std::size_t kLongestText = 64;

std::size_t depthOf(const std::string& text)
{
    std::size_t depth = 0;
    std::size_t deepest = 0;
    for (const char letter : text) {
        if (letter == '[' || letter == '{')
            deepest = std::max(deepest, ++depth);
        else if ((letter == ']' || letter == '}') && depth > 0)
            --depth;
    }
    return deepest;
}
} // namespace

std::string JsonMutator::mutate(const std::string& text)
{
    if (depthOf(text) > kDeepest)
        return {};
    Json document = Json::parse(text, nullptr, false);
    if (document.is_discarded())
        return {};
    collect(document);
    change(any());
    return document.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void JsonMutator::collect(Json& value)
{
    _values.push_back(&value);
    if (value.is_object()) {
        for (auto& [key, member] : value.items()) {
            _keys.push_back(key);
            collect(member);
        }
    } else if (value.is_array()) {
        for (Json& element : value)
            collect(element);
    }
}

void JsonMutator::change(Json& value)
{
    switch (below(4)) {
    case 0:
        // By way of a copy: the one may lie in the other.
        value = Json(any());
        break;
    case 1:
        removeFrom(value);
        break;
    case 2:
        addTo(value);
        break;
    default:
        changeScalar(value);
    }
}

void JsonMutator::changeScalar(Json& value)
{
    static const Json kScalars[] = {nullptr,    true, false,       0,       1,   -1,       86,
                                    2147483648, 0.5,  1e300,       "",      "*", "*0**",   "00",
                                    "1,2",      "~~", "ascending", "layer", "%", "yyyy.HH"};
    if (value.is_string() && below(3) > 0)
        changeText(value.get_ref<std::string&>());
    else
        value = kScalars[below(std::size(kScalars))];
}

void JsonMutator::changeText(std::string& text)
{
    const std::size_t size = std::min(text.size(), kLongestText);
    text.resize(kLongestText);
    text.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(text.data()), size, kLongestText));
}

void JsonMutator::removeFrom(Json& container)
{
    if (container.empty() || !container.is_structured())
        return changeScalar(container);
    container.erase(
        std::next(container.begin(), static_cast<std::ptrdiff_t>(below(container.size()))));
}

void JsonMutator::addTo(Json& container)
{
    const Json added(any());
    if (container.is_array())
        container.insert(
            container.begin() + static_cast<std::ptrdiff_t>(below(container.size() + 1)), added);
    else if (container.is_object() && !_keys.empty())
        container[_keys[below(_keys.size())]] = added;
    else
        changeScalar(container);
}
