#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "OutputTable.h"

/// The footnotes of a table: superscripts where they belong, each a link to the note, and the notes
/// themselves, each with a link back to its first superscript. The table is borrowed.
class TableNotes
{
public:
    TableNotes(const OutputTable& table, std::string anchor);

    /// The superscripts of a cell or label, as markup; nothing for none.
    std::string marks(const std::vector<int>& notes);
    /// Those notes that have been referred to go back to where they were.
    void write(std::ostream& out) const;

private:
    std::string mark(std::size_t note);

    const std::vector<OutputNote>& _notes;
    std::string _anchor;
    std::vector<std::string> _markers;
    std::vector<bool> _isMarked;
};
