#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "OutputTree.h"
#include "hvhost/show/TextTable.h"

/// The requested form; else the one of `forms` that is the extension of the file; else text.
std::string formOf(const std::string& asked, const std::string& path,
                   const std::vector<std::string>& forms);

/// How output is shown.
struct OutputLook
{
    std::string form;    ///< "html" for a page, else text
    bool toFile = false; ///< false: to standard output
    TextForm text = {};
    std::string subtitle{}; ///< of a page; may be empty
};

/// Writes the content of a heading, with the heading as its title. Throws CommandFault (JobFailed)
/// if files for pages are missing in the installation.
void writeOutput(const OutputHeading& output, const OutputLook& look, std::ostream& out);
/// Writes items as text, as they follow others below the title of the output.
void writeFurtherText(const std::vector<OutputItem>& items, const OutputLook& look,
                      std::ostream& out);
