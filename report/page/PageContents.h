#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "OutputTree.h"
#include "report/document/PageDocument.h"

/// Information that is needed before the first item of a page is written: anchors, column widths,
/// and whether something is drawn. Parses the documents once. The items are borrowed.
class PageContents
{
public:
    explicit PageContents(const std::vector<OutputItem>& items);

    /// The anchor of an item.
    const std::string& anchor(const OutputItem& item) const { return _anchors.at(&item); }
    /// The document of a chart or view; null if it cannot be parsed.
    const PageJson* document(const OutputItem& item) const;
    /// Whether the content of a heading is closed at first: because the heading says so, or because
    /// it is one of the long lists of a large page.
    bool isFolded(const OutputHeading& heading) const;
    /// Whether the page has so many tables and charts that those out of sight are not laid out.
    bool isLarge() const;
    /// Whether a script draws something.
    bool hasDrawings() const { return _hasDrawings; }
    /// Style sheet rules for the widths of columns.
    std::string widthRules() const;

private:
    void visit(const std::vector<OutputItem>& items);
    void read(const OutputItem& item, const OutputDocument& source, const std::string& text);

    std::unordered_map<const OutputItem*, std::string> _anchors;
    std::unordered_map<const OutputItem*, PageJson> _documents;
    std::set<std::string> _widthRules;
    std::size_t _leaves = 0; ///< the number of items that are not headings
    bool _hasDrawings = false;
};
