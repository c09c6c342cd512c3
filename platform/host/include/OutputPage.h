#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "HostExport.h"

class OutputTree;
struct OutputHeading;

/// Output as one self-contained HTML page: it opens from disk and without network, reads well with
/// scripting off and on paper, and runs nothing that came with the data. Host side.
///
/// What it shows is borrowed; nothing may write to it while the page is written. Tables go to the
/// stream row by row.
///
///     OutputPage page(OutputTree::instance());
///     page.setSubtitle("weather.csv");
///     page.write(file);
class HOST_API OutputPage
{
public:
    /// All output, or that of one procedure.
    explicit OutputPage(const OutputTree& tree);
    explicit OutputPage(const OutputHeading& procedure);
    ~OutputPage();
    OutputPage(const OutputPage&) = delete;
    OutputPage& operator=(const OutputPage&) = delete;

    /// The title, UTF-8; without one, that of the only procedure, or "Output".
    void setTitle(const std::string& title);
    /// A line under the title, UTF-8: what the output is of, or when it was made.
    void setSubtitle(const std::string& subtitle);

    /// Throws ErrorText if the installation lacks the page's style sheet or scripts. Whether the
    /// stream took everything, it says itself.
    void write(std::ostream& out) const;
    std::string text() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
