#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "OutputTree.h"
#include "page/MapFrame.h"
#include "page/PageDocument.h"

/// Records that a specification carries, or names: then they are a GeoJSON text of the chart's.
struct MapSource
{
    const PageJson* values = nullptr; ///< borrowed from the map's definition
    std::string name;
};

/// How areas find the records that tell of them.
struct MapJoin
{
    MapSource rows;
    std::string featureKey;
    std::string rowKey;
    bool rowsLead = false;                                  ///< they are what the layer is about
    std::vector<std::pair<std::string, std::string>> names; ///< fields of the others, renamed
    std::string whole;                                      ///< all of the others, as one field
};

/// Something of a layer that a field tells.
struct MapChannel
{
    /// How values fall into classes.
    enum class Scale
    {
        Steps,
        Quantiles,
        Thresholds,
        Grades,    ///< each value a class, from the lowest to the highest
        Categories ///< each value a class
    };

    std::string field;
    std::string title;
    Scale scale = Scale::Steps;
    std::vector<PageJson> domain;
    std::vector<std::string> colours; ///< of the classes; empty for the page's own
};

/// Areas or points over each other, and what their looks tell.
struct MapLayer
{
    MapSource source; ///< of the areas or points
    std::optional<MapJoin> join;
    std::optional<MapChannel> colour;
    std::optional<MapChannel> size;
    std::string longitude; ///< empty for areas, which have shapes
    std::string latitude;
    std::vector<std::pair<std::string, std::string>> tips; ///< fields to tell, and their titles

    bool isOfPoints() const { return !longitude.empty(); }
};

/// What a chart shows as a map.
struct MapSpec
{
    std::vector<MapLayer> layers;
    MapProjection projection = MapProjection::Equirectangular;
};

/// Reads a specification. Nothing for one that is no map, or asks for what only the library that
/// draws charts can do: docs/result-document.md says what there is.
std::optional<MapSpec> readMapSpec(const PageJson& specification, const OutputDocument& document);
