#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "page/PageAssets.h"

/// What a page carries in itself beside its content: read first, since its head names the hashes.
class PageFrame
{
public:
    /// `rules`: style sheet rules of this page alone.
    PageFrame(bool withCharts, const std::string& rules);

    /// From the first byte to the body.
    void writeHead(std::ostream& out, const std::string& title) const;
    /// The words that scripts show, and the scripts; the end of the page.
    void writeFoot(std::ostream& out) const;

private:
    std::string policy() const;

    std::vector<PageAsset> _styles;
    std::vector<PageAsset> _scripts;
};
