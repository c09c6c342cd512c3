#include "output/CompositeFormat.h"

#include <charconv>
#include <cstddef>

namespace {

// Reads the decimal number at the start of the text. Returns its length, or 0.
std::size_t readNumber(std::string_view text, std::size_t& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() ? static_cast<std::size_t>(end - text.data()) : 0;
}

// The item with that number, from 1, or null.
template <typename Item>
const Item* itemAt(const std::vector<Item>& items, std::size_t number)
{
    return number >= 1 && number <= items.size() ? &items[number - 1] : nullptr;
}

// Replaces the placeholders with `mark` by the columns of one entry.
std::string fillEntry(std::string_view pattern, char mark, const std::vector<std::string>& columns)
{
    std::string filled;
    for (std::size_t at = 0; at < pattern.size();) {
        std::size_t number = 0;
        const std::size_t digits =
            pattern[at] == mark ? readNumber(pattern.substr(at + 1), number) : 0;
        if (digits == 0) {
            filled += pattern[at++];
            continue;
        }
        if (const std::string* column = itemAt(columns, number))
            filled += *column;
        at += 1 + digits;
    }
    return filled;
}

/// A list placeholder of the format.
struct ListPlace
{
    std::string_view first;
    std::string_view further;
    std::size_t part = 0;
    std::size_t length = 0; // of the whole placeholder; 0 for none
};

// The list placeholder at the start of the text, which begins with "[".
ListPlace readListPlace(std::string_view text)
{
    ListPlace place;
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return place;
    for (std::size_t end = text.find(":]", colon + 1); end != std::string_view::npos;
         end = text.find(":]", end + 1)) {
        const std::size_t digits = readNumber(text.substr(end + 2), place.part);
        if (digits == 0)
            continue;
        place.first = text.substr(1, colon - 1);
        place.further = text.substr(colon + 1, end - colon - 1);
        place.length = end + 2 + digits;
        break;
    }
    return place;
}

std::string fillList(const ListPlace& place, const CompositePart& part)
{
    std::string filled;
    for (std::size_t i = 0; i < part.size(); ++i)
        filled +=
            i == 0 ? fillEntry(place.first, '%', part[i]) : fillEntry(place.further, '^', part[i]);
    return filled;
}

std::string flatten(const CompositePart& part)
{
    std::string flat;
    for (const auto& entry : part)
        for (const std::string& column : entry)
            flat += (flat.empty() ? "" : ", ") + column;
    return flat;
}

} // namespace

std::string fillComposite(std::string_view format, const std::vector<CompositePart>& parts)
{
    std::string filled;
    for (std::size_t at = 0; at < format.size();) {
        const std::string_view rest = format.substr(at);
        std::size_t number = 0;
        std::size_t digits = 0;
        if (const ListPlace place = rest[0] == '[' ? readListPlace(rest) : ListPlace();
            place.length > 0) {
            if (const CompositePart* part = itemAt(parts, place.part))
                filled += fillList(place, *part);
            at += place.length;
        } else if (rest[0] == '^' && (digits = readNumber(rest.substr(1), number)) > 0) {
            if (const CompositePart* part = itemAt(parts, number))
                filled += flatten(*part);
            at += 1 + digits;
        } else {
            filled += rest[0];
            ++at;
        }
    }
    return filled;
}
