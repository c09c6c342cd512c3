#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/HvintegExport.h"

/// What is to become of one object of a result document: where it lies there, what kind of output
/// it becomes, under which heading and title. A value; texts are UTF-8.
///
///     OutputOrder order;
///     order.setHeading("Model.Summary").addLocation("summary.table").setOutlineTitle("fit", true);
class HVINTEG_EXPORT OutputOrder
{
public:
    /// What becomes of the place in the result. Callers store the numbers.
    enum Type : int
    {
        Pivot = 0,       ///< a pivot table
        Chart = 1,       ///< a chart
        Interactive = 2, ///< an interactive view, of any number of locations
        MapChart = 3     ///< a chart with GeoJSON sources
    };

    /// An order that shows nothing until it is told what.
    OutputOrder();
    /// `title` is the heading path, its segments with dots between them; the location is the first
    /// of the order. The outline title is a key of the string table, and GeoJSON is wanted.
    OutputOrder(const std::string& title, const std::vector<std::string>& location, Type type,
                const std::string& outlineTitle, const std::string& OMSSubType);
    OutputOrder(const OutputOrder& other);
    OutputOrder& operator=(const OutputOrder& other);
    ~OutputOrder();

    /// The heading path, as in the constructor.
    OutputOrder& setHeading(const std::string& title);
    /// `translate`: the title is a key of the string table.
    OutputOrder& setOutlineTitle(const std::string& title, bool translate);
    OutputOrder& setOMSSubType(const std::string& subType);
    /// What an interactive view gives as the place of its object, instead of the location.
    OutputOrder& setPathId(const std::string& path);
    OutputOrder& setType(Type type);
    /// Whether an interactive view gets all GeoJSON texts.
    OutputOrder& setNeedsGEOJson(bool needed);
    /// Appends options of a chart or view, behind a comma.
    OutputOrder& setOptions(const std::string& options);
    /// Appends a line to the caption of a table.
    OutputOrder& addTextToCaption(const std::string& text);
    /// Appends a location in the result object, as a path or as its segments. Without a segment it
    /// is the result object itself.
    OutputOrder& addLocation(const std::string& path);
    OutputOrder& addLocation(const std::vector<std::string>& segments);
    /// Sets which categories of a table's rows, or columns, are left out.
    OutputOrder& hideCategories(const std::vector<std::string>& categories, bool rows);
    /// Appends one to those which alone are shown.
    OutputOrder& hideAllCategoriesExcept(const std::string& category, bool rows);

    /// What was set; options and lines of the caption put together.
    const std::string& getTitle() const;
    const std::string& getCaption() const;
    const std::vector<std::vector<std::string>>& getLocations() const;
    const std::string& getOMSSubType() const;
    const std::string& getOptions() const;
    const std::string& getOutlineTitle() const;
    const std::string& getPathId() const;
    std::vector<std::string> getHiddenRows() const;
    std::vector<std::string> getShownRows() const;
    std::vector<std::string> getHiddenCols() const;
    std::vector<std::string> getShownCols() const;
    Type getType() const;
    bool needsGEO() const;
    bool translateTitle() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
