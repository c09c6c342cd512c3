#include "report/maps/FieldPath.h"

#include <vector>

namespace {

constexpr std::string_view kQuotes = "'\"";

/// Reads a name in brackets, quoted or not; moves `at` behind it.
std::string bracketed(std::string_view field, std::size_t& at)
{
    std::size_t end = field.find(']', at);
    end = end == std::string_view::npos ? field.size() : end;
    std::string_view name = field.substr(at + 1, end - at - 1);
    if (name.size() > 1 && kQuotes.find(name.front()) != std::string_view::npos &&
        name.back() == name.front())
        name = name.substr(1, name.size() - 2);
    at = end + 1;
    return std::string(name);
}

/// Reads a name up to the next dot or bracket; a backslash escapes either.
std::string plain(std::string_view field, std::size_t& at)
{
    std::string name;
    for (; at < field.size() && field[at] != '.' && field[at] != '['; ++at) {
        if (field[at] == '\\' && at + 1 < field.size())
            ++at;
        name += field[at];
    }
    return name;
}

std::vector<std::string> namesIn(std::string_view field)
{
    std::vector<std::string> names;
    for (std::size_t at = 0; at < field.size();)
        if (field[at] == '.')
            ++at;
        else
            names.push_back(field[at] == '[' ? bracketed(field, at) : plain(field, at));
    return names;
}

} // namespace

const PageJson* valueAt(const PageJson& record, std::string_view field)
{
    const PageJson* value = memberOf(record, field);
    if (!value) {
        value = &record;
        for (const std::string& name : namesIn(field))
            if (value)
                value = memberOf(*value, name);
    }
    return value == &record || (value && value->is_null()) ? nullptr : value;
}

std::string lastName(std::string_view field)
{
    const std::vector<std::string> names = namesIn(field);
    return names.empty() ? std::string(field) : names.back();
}
