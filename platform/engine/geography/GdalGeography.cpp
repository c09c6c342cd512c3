#include <curl/curl.h>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "CoordinateSystems.h"
#include "MapService.h"
#include "Recommendations.h"
#include "ServiceLayer.h"
#include "ShapeFile.h"
#include "Transformations.h"

namespace EmbeddedHV::maps {
namespace {

class GdalGeography : public Geography
{
public:
    GdalGeography()
    {
        curl_global_init(CURL_GLOBAL_DEFAULT);
        // The only format that is read through a driver. Registering all drivers takes longer.
        RegisterOGRShape();
    }

    std::unique_ptr<Layer> openShapeFile(const std::string& path) override
    {
        return maps::openShapeFile(path, _systems);
    }
    std::unique_ptr<Layer> openServiceLayer(const std::string& url, int layer,
                                            const LayerBounds& bounds, StopWish stop) override
    {
        return maps::openServiceLayer(MapService(url, std::move(stop)), layer, bounds, _systems);
    }
    std::string serviceLayers(const std::string& url, StopWish stop) override
    {
        MapService service(url, std::move(stop));
        return layersOf(service);
    }

    std::vector<std::string> systemNames(bool projected) override
    {
        return _systems.names(projected);
    }
    CoordinateSystem systemNamed(const std::string& name) override { return _systems.named(name); }
    CoordinateSystem systemOf(int wkid) override { return _systems.of(wkid); }
    std::vector<RecommendedSystem> recommend(const Area& area, std::size_t most) override
    {
        return recommendedSystems(_systems, area, most);
    }
    std::unique_ptr<PointMover> mover(const CoordinateSystem& from, const CoordinateSystem& to,
                                      const std::string& method) override
    {
        return makeMover(from, to, method);
    }

    std::vector<Library> libraries() override
    {
        const ContextPtr context = newContext();
        const char* catalogue = proj_context_get_database_path(context.get());
        const char* data = CPLFindFile("gdal", "gdalvrt.xsd");
        return {{"GDAL", GDALVersionInfo("RELEASE_NAME"), data ? CPLGetPath(data) : ""},
                {"PROJ", proj_info().version, catalogue ? catalogue : ""}};
    }

private:
    CoordinateSystems _systems;
};

} // namespace
} // namespace EmbeddedHV::maps

/// The only entry point of the library. The object lives until the process ends.
extern "C" ENGINE_API EmbeddedHV::maps::Geography* hvGeography()
{
    static EmbeddedHV::maps::GdalGeography geography;
    return &geography;
}
