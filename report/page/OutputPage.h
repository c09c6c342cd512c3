#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "report/ReportExport.h"

class OutputTree;
struct OutputHeading;

/// Writes output as one self-contained HTML page. It works offline, without scripting and on paper,
/// and executes nothing that comes from the data. For host programs.
///
/// The output is borrowed and must not be changed while the page is written. Tables are written to
/// the stream row by row.
///
///     OutputPage page(OutputTree::instance());
///     page.setSubtitle("weather.csv");
///     page.write(file);
class REPORT_API OutputPage
{
public:
    /// A page of all output.
    explicit OutputPage(const OutputTree& tree);
    /// A page of one procedure.
    explicit OutputPage(const OutputHeading& procedure);
    ~OutputPage();
    OutputPage(const OutputPage&) = delete;
    OutputPage& operator=(const OutputPage&) = delete;

    /// Sets the title (UTF-8). The default is the title of the only procedure, or "Output".
    void setTitle(const std::string& title);
    /// Sets a line under the title (UTF-8), for example the source or date of the output.
    void setSubtitle(const std::string& subtitle);

    /// Writes the page. Throws ErrorText if the installation lacks the page's style sheet or
    /// scripts. Write errors set the state of the stream.
    void write(std::ostream& out) const;
    /// Returns the page as text. Throws ErrorText in the same case.
    std::string text() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
