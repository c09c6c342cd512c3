#include "datafile/FieldNames.h"

#include <algorithm>
#include <new>
#include <set>

#include <unicode/unistr.h>

#include "base/AsciiText.h"

namespace datafile {

std::string foldedName(std::string name)
{
    // Most names are ASCII and are compared often.
    if (!base::isAscii(name)) {
        std::string folded;
        icu::UnicodeString letters = icu::UnicodeString::fromUTF8(name);
        // Without memory ICU returns a bogus empty text, and all such names would be equal.
        if (letters.foldCase().isBogus())
            throw std::bad_alloc();
        letters.toUTF8String(folded);
        return folded;
    }
    return base::lowerCase(name);
}

bool isSameName(const std::string& left, const std::string& right)
{
    // Letters outside ASCII may fold to ASCII letters.
    if (!base::isAscii(left) || !base::isAscii(right))
        return foldedName(left) == foldedName(right);
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(),
                      [](char a, char b) { return base::lowerCase(a) == base::lowerCase(b); });
}

std::vector<std::string> uniqueNames(std::vector<std::string> names)
{
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i].empty())
            names[i] = "field" + std::to_string(i + 1);
    std::set<std::string> given;
    for (const std::string& name : names)
        given.insert(foldedName(name));
    std::set<std::string> used;
    for (std::string& name : names) {
        const std::string base = name;
        // A generated name must not equal a given one either.
        for (int number = 1;
             used.contains(foldedName(name)) || (name != base && given.contains(foldedName(name)));
             ++number)
            name = base + "_" + std::to_string(number);
        used.insert(foldedName(name));
    }
    return names;
}

} // namespace datafile
