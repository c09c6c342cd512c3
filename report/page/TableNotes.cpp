#include "report/page/TableNotes.h"

#include <ostream>

#include "Translation.h"
#include "report/document/PageText.h"

TableNotes::TableNotes(const OutputTable& table, std::string anchor)
    : _notes(table.notes), _anchor(std::move(anchor)), _markers(noteMarkers(table)),
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
