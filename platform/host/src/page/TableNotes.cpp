#include "page/TableNotes.h"

#include <algorithm>
#include <ostream>

#include "output/StringTable.h"
#include "page/PageText.h"

namespace {

/// a to z, then aa, ab and so on.
std::string letters(std::size_t number)
{
    std::string text;
    for (std::size_t rest = number + 1; rest > 0; rest = (rest - 1) / 26)
        text.insert(text.begin(), static_cast<char>('a' + (rest - 1) % 26));
    return text;
}

} // namespace

std::vector<std::string> noteMarkers(const std::vector<OutputNote>& notes)
{
    std::vector<std::string> markers;
    std::size_t counted = 0;
    for (const OutputNote& note : notes)
        markers.push_back(note.marker.empty() ? letters(counted++) : note.marker);
    return markers;
}

TableNotes::TableNotes(const OutputTable& table, std::string anchor)
    : _notes(table.notes), _anchor(std::move(anchor)), _markers(noteMarkers(table.notes)),
      _isMarked(table.notes.size(), false)
{
}

std::string TableNotes::mark(std::size_t note)
{
    const std::string target = _anchor + "-note" + std::to_string(note);
    std::string link = "<a href=\"#" + target + "\"";
    if (!_isMarked[note])
        link += " id=\"" + target + "-mark\"";
    _isMarked[note] = true;
    return link + ">" + isolated(_markers[note]) + "</a>";
}

std::string TableNotes::marks(const std::vector<int>& notes)
{
    std::string links;
    for (const int note : notes)
        if (const auto at = static_cast<std::size_t>(note); at < _notes.size())
            links += (links.empty() ? "" : ", ") + mark(at);
    return links.empty() ? links : "<sup>" + links + "</sup>";
}

void TableNotes::write(std::ostream& out) const
{
    if (_notes.empty())
        return;
    out << "<ul class=\"notes\">\n";
    for (std::size_t note = 0; note < _notes.size(); ++note) {
        const std::string target = _anchor + "-note" + std::to_string(note);
        out << "<li id=\"" << target << "\"><span class=\"marker\">" << isolated(_markers[note])
            << "</span> " << isolated(_notes[note].text.text);
        if (_isMarked[note])
            out << " <a class=\"back\" href=\"#" << target << "-mark\" aria-label=\""
                << escaped(translate("Back to the table")) << "\"></a>";
        out << "</li>\n";
    }
    out << "</ul>\n";
}
