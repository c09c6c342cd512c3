#pragma once

#include <vector>

#include "bridge/JsonValue.h"
#include "render/CellKey.h"
#include "render/PivotDimension.h"
#include "render/PivotSettings.h"
#include "render/TextItems.h"

/// Reads one dimension of a table object.
class DimensionReader
{
public:
    /// The number of leaves of each dimension, including hidden ones.
    static std::vector<std::uint64_t> leafCounts(const JsonValue& dimensions);

    /// All are borrowed.
    DimensionReader(const TextItems& texts, const PivotSettings& settings)
        : _texts(texts), _settings(settings)
    {
    }
    PivotDimension read(const JsonValue& json, const KeyLayout::Segment& segment);

private:
    void readChildren(const JsonValue& children, bool filters);
    void readGroup(const JsonValue& json, std::unique_ptr<TnCellText> label, bool filters);
    void readLeaf(const JsonValue& json, std::unique_ptr<TnCellText> label);
    std::string nextSubscript(const JsonValue& json);
    bool hasFilter() const { return !_filter->hidden.empty() || !_filter->shown.empty(); }
    bool staysAfterFilter(const JsonValue& json) const;

    const TextItems& _texts;
    const PivotSettings& _settings;
    const CategoryFilter* _filter = nullptr;
    KeyLayout::Segment _segment{};
    std::uint64_t _next = 0; ///< the position of the next leaf without a position of its own
    std::vector<PivotStep> _steps;
};
