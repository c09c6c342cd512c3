#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "OutputTree.h"
#include "page/PageDocument.h"

/// What has to be known of the items of a page before the first of them is written: their anchors,
/// the column widths, and whether something is to be drawn. Documents are read here, once. The
/// items are borrowed.
class PageContents
{
public:
    explicit PageContents(const std::vector<OutputItem>& items);

    /// The name of an item on the page.
    const std::string& anchor(const OutputItem& item) const { return _anchors.at(&item); }
    /// The document of a chart or a view; null if it cannot be read.
    const PageJson* document(const OutputItem& item) const;
    /// Whether a script has to draw something.
    bool hasDrawings() const { return _hasDrawings; }
    /// Style sheet rules for the widths of columns.
    std::string widthRules() const;

private:
    void visit(const std::vector<OutputItem>& items);
    void read(const OutputItem& item, const OutputDocument& source, const std::string& text);

    std::unordered_map<const OutputItem*, std::string> _anchors;
    std::unordered_map<const OutputItem*, PageJson> _documents;
    std::set<std::string> _widthRules;
    bool _hasDrawings = false;
};
