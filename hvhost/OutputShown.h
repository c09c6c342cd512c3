#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

struct OutputHeading;

/// The form that is asked for; else the one of `forms` that the file is named after; else text.
std::string formOf(const std::string& asked, const std::string& path,
                   const std::vector<std::string>& forms);

/// How output is shown.
struct OutputLook
{
    std::string form;       ///< "html" for a page, else text
    bool toFile = false;    ///< not to standard output
    std::size_t width = 0;  ///< of text
    std::string subtitle{}; ///< of a page; empty for none
};

/// Writes what stands under a heading, and the heading as its title. Throws CommandFault
/// (JobFailed) if the installation lacks what a page is made of.
void writeOutput(const OutputHeading& output, const OutputLook& look, std::ostream& out);
