#include "OutputTable.h"

namespace {

/// a to z, then aa, ab and so on.
std::string letters(std::size_t number)
{
    constexpr std::size_t kLetters = 26;
    std::string text(1, static_cast<char>('a' + number % kLetters));
    return number < kLetters ? text : letters(number / kLetters - 1) + text;
}

} // namespace

std::vector<std::string> noteMarkers(const OutputTable& table)
{
    std::vector<std::string> markers;
    std::size_t counted = 0;
    for (const OutputNote& note : table.notes)
        markers.push_back(note.marker.empty() ? letters(counted++) : note.marker);
    return markers;
}
