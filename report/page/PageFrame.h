#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "report/page/PageAssets.h"

/// The parts of a page around its content. Loaded first, because the head contains their hashes.
class PageFrame
{
public:
    /// `rules`: style sheet rules for this page only.
    PageFrame(bool withCharts, const std::string& rules);

    /// Writes from the first byte to the body.
    void writeHead(std::ostream& out, const std::string& title) const;
    /// Writes the texts for scripts, the scripts, and the end of the page.
    void writeFoot(std::ostream& out) const;

private:
    std::string policy() const;

    std::vector<PageAsset> _styles;
    std::vector<PageAsset> _scripts;
    std::optional<ChartLibrary> _library; ///< a script unpacks it
};
