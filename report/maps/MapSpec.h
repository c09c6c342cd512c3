#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "OutputTree.h"
#include "report/document/PageDocument.h"
#include "report/maps/MapFrame.h"

/// Records in a specification, or the name of a GeoJSON text of the chart.
struct MapSource
{
    const PageJson* values = nullptr; ///< borrowed from the map's definition
    std::string name;
};

/// How areas are joined with their records.
struct MapJoin
{
    MapSource rows;
    std::string featureKey;
    std::string rowKey;
    bool rowsLead = false;                                  ///< the layer is about the rows
    std::vector<std::pair<std::string, std::string>> names; ///< fields of the other side, renamed
    std::string whole;                                      ///< the whole other side as a field
};

/// A visual property of a layer that a field determines.
struct MapChannel
{
    /// How values are classified.
    enum class Scale
    {
        Steps,
        Quantiles,
        Thresholds,
        Grades,    ///< each value is a class, in ascending order
        Categories ///< each value is a class
    };

    std::string field;
    std::string title;
    Scale scale = Scale::Steps;
    std::vector<PageJson> domain;
    std::vector<std::string> colours; ///< of the classes; empty for the page's own
};

/// Areas or points, and what determines their look.
struct MapLayer
{
    MapSource source; ///< of the areas or points
    std::optional<MapJoin> join;
    std::optional<MapChannel> colour;
    std::optional<MapChannel> size;
    std::string longitude; ///< empty for areas, which have shapes
    std::string latitude;
    std::vector<std::pair<std::string, std::string>> tips; ///< tooltip fields and titles

    bool isOfPoints() const { return !longitude.empty(); }
};

/// A chart that is a map.
struct MapSpec
{
    std::vector<MapLayer> layers;
    MapProjection projection = MapProjection::Equirectangular;
};

/// Reads a specification. nullopt if it is not a map, or if only the chart library supports it.
/// docs/result-document.md describes what is supported.
std::optional<MapSpec> readMapSpec(const PageJson& specification, const OutputDocument& document);
