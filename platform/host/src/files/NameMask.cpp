#include "files/NameMask.h"

#include "base/Utf8.h"

namespace {

// The number of bytes of the character at `at`.
std::size_t characterLength(std::string_view text, std::size_t at)
{
    std::size_t length = 1;
    while (at + length < text.size() && !base::beginsCharacter(text[at + length]))
        ++length;
    return length;
}

} // namespace

bool matchesMask(std::string_view name, std::string_view mask)
{
    std::size_t n = 0;
    std::size_t m = 0;
    // Position of the last star, and how much of the name it has matched. It takes one more
    // character whenever the rest does not match.
    std::size_t star = std::string_view::npos;
    std::size_t taken = 0;
    while (n < name.size()) {
        if (m < mask.size() && mask[m] == '*') {
            star = m++;
            taken = n;
        } else if (m < mask.size() && mask[m] == '?') {
            n += characterLength(name, n);
            ++m;
        } else if (m < mask.size() && mask[m] == name[n]) {
            ++n;
            ++m;
        } else if (star != std::string_view::npos) {
            // Only the last star needs to be extended.
            taken += characterLength(name, taken);
            n = taken;
            m = star + 1;
        } else
            return false;
    }
    return mask.find_first_not_of('*', m) == std::string_view::npos;
}
