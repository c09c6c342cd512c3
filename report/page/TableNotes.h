#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "OutputTable.h"

/// The footnotes of a table: superscripts with links to the notes, and notes with links back to
/// their first superscript. The table is borrowed.
class TableNotes
{
public:
    TableNotes(const OutputTable& table, std::string anchor);

    /// The superscripts of a cell or label, as markup; empty for none.
    std::string marks(const std::vector<int>& notes);
    /// Writes the notes. Notes that were referred to have a link back.
    void write(std::ostream& out) const;

private:
    std::string mark(std::size_t note);

    const std::vector<OutputNote>& _notes;
    std::string _anchor;
    std::vector<std::string> _markers;
    std::vector<bool> _isMarked;
};
