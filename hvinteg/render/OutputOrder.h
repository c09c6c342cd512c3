#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/HvintegExport.h"

/// How to show one object of a result document: its location, kind of output, heading and title. A
/// value type; texts are UTF-8.
///
///     OutputOrder order;
///     order.setHeading("Model.Summary").addLocation("summary.table").setOutlineTitle("fit", true);
class HVINTEG_EXPORT OutputOrder
{
public:
    /// Kinds of output. Callers store the numbers.
    enum Type : int
    {
        Pivot = 0,       ///< a pivot table
        Chart = 1,       ///< a chart
        Interactive = 2, ///< an interactive view of any number of locations
        MapChart = 3     ///< a chart with GeoJSON sources
    };

    /// An order without locations, which shows nothing.
    OutputOrder();
    /// `title` is the heading path, separated by dots. `location` is the first location.
    /// `outlineTitle` is a key of the string table. GeoJSON is included.
    OutputOrder(const std::string& title, const std::vector<std::string>& location, Type type,
                const std::string& outlineTitle, const std::string& OMSSubType);
    /// Copies all settings.
    OutputOrder(const OutputOrder& other);
    /// Replaces all settings.
    OutputOrder& operator=(const OutputOrder& other);
    ~OutputOrder();

    /// Sets the heading path, separated by dots. Like all setters, it returns *this.
    OutputOrder& setHeading(const std::string& title);
    /// Sets the title in the outline. `translate`: it is a key of the string table.
    OutputOrder& setOutlineTitle(const std::string& title, bool translate);
    /// Sets the subtype by which output is selected.
    OutputOrder& setOMSSubType(const std::string& subType);
    /// Sets the path that an interactive view reports for its object instead of the location.
    OutputOrder& setPathId(const std::string& path);
    /// Sets the kind of output; Pivot by default.
    OutputOrder& setType(Type type);
    /// Sets whether an interactive view receives all GeoJSON texts.
    OutputOrder& setNeedsGEOJson(bool needed);
    /// Appends options of a chart or view, after a comma.
    OutputOrder& setOptions(const std::string& options);
    /// Appends a line to the caption of a table.
    OutputOrder& addTextToCaption(const std::string& text);
    /// Appends a location in the result object: a path separated by dots. An empty path is the
    /// result object itself.
    OutputOrder& addLocation(const std::string& path);
    /// Appends a location as segments.
    OutputOrder& addLocation(const std::vector<std::string>& segments);
    /// Sets the categories that are left out of a table's rows, or otherwise of its columns.
    OutputOrder& hideCategories(const std::vector<std::string>& categories, bool rows);
    /// Appends a category to those which are the only ones shown.
    OutputOrder& hideAllCategoriesExcept(const std::string& category, bool rows);

    /// The heading path.
    const std::string& getTitle() const;
    /// The caption, with its lines joined.
    const std::string& getCaption() const;
    /// The locations, each as segments.
    const std::vector<std::vector<std::string>>& getLocations() const;
    /// The subtype; empty by default.
    const std::string& getOMSSubType() const;
    /// The options, joined by commas.
    const std::string& getOptions() const;
    /// The title in the outline.
    const std::string& getOutlineTitle() const;
    /// The path of setPathId; empty by default.
    const std::string& getPathId() const;
    /// The hidden row categories.
    std::vector<std::string> getHiddenRows() const;
    /// The row categories of hideAllCategoriesExcept.
    std::vector<std::string> getShownRows() const;
    /// The hidden column categories.
    std::vector<std::string> getHiddenCols() const;
    /// The column categories of hideAllCategoriesExcept.
    std::vector<std::string> getShownCols() const;
    /// The kind of output.
    Type getType() const;
    /// Whether an interactive view receives all GeoJSON texts.
    bool needsGEO() const;
    /// Whether the outline title is a key of the string table.
    bool translateTitle() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
