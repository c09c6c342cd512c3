#pragma once

#include <cstddef>
#include <iosfwd>

#include "HostExport.h"
#include "OutputTree.h"

/// How output is shown as text.
struct OutputTextOptions
{
    std::size_t width = 80;     ///< places in a line
    bool colours = false;       ///< whether the terminal's commands for styles are used
    std::size_t chartRows = 40; ///< at most so many rows of a chart's data are shown
};

/// Writes output as UTF-8 text for a terminal: headings, tables drawn with lines, the data of
/// charts with bars where the chart has bars, what views show, and messages where they arose. A
/// table that is wider than a line goes on below itself. Tables are written row by row and not
/// kept. Nothing of the data commands the terminal. Not while a procedure writes.
HOST_API void writeOutputText(const OutputTree& tree, const OutputTextOptions& options,
                              std::ostream& out);

/// The same of one procedure.
HOST_API void writeOutputText(const OutputHeading& procedure, const OutputTextOptions& options,
                              std::ostream& out);
