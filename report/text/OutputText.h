#pragma once

#include <cstddef>
#include <iosfwd>
#include <vector>

#include "OutputTree.h"
#include "report/ReportExport.h"

/// Options for output as text.
struct OutputTextOptions
{
    std::size_t width = 80;     ///< columns of a line
    bool colours = false;       ///< whether to use the terminal's style sequences
    std::size_t chartRows = 40; ///< maximum number of rows of a chart's data
    bool groupsDigits = false;  ///< whether large numbers have blanks between groups of digits
};

/// Writes output as UTF-8 text for a terminal: headings, tables with lines, data of charts (with
/// bars if the chart has bars), the content of views, and messages at their place. A table that is
/// wider than a line is continued below. Tables are written row by row. Control characters of the
/// data are not passed to the terminal. No procedure may write output meanwhile.
REPORT_API void writeOutputText(const OutputTree& tree, const OutputTextOptions& options,
                                std::ostream& out);

/// Writes the output of one procedure as UTF-8 text for a terminal; otherwise as the overload for
/// all output.
REPORT_API void writeOutputText(const OutputHeading& procedure, const OutputTextOptions& options,
                                std::ostream& out);

/// Writes items as they follow others below the title of a procedure. So long output can be written
/// in parts: first the procedure with its first items, then the others, which need not be in its
/// tree.
REPORT_API void writeFurtherOutputText(const std::vector<OutputItem>& items,
                                       const OutputTextOptions& options, std::ostream& out);
