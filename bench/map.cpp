// hvhost writes a map as GeoJSON, once in the map's own coordinate system and once in another. The
// baseline is the map library's own translation. bench_map DIR measures. bench_map DIR SYSTEM is
// one run of the baseline; SYSTEM is "same" or a code.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gdal_utils.h>
#include <ogrsf_frmts.h>

#include "Child.h"
#include "Measure.h"

namespace {

constexpr int kPolygons = 100'000;
constexpr int kCorners = 24;
constexpr double kMostShare = 0.2; ///< of the time of the translation
constexpr double kMostMegabytes = 120;

std::string shapeIn(const std::string& directory)
{
    return directory + "/map.shp";
}

/// Polygons of 25 points, the last of which is the first, on a grid of degrees.
void prepare(const std::string& directory)
{
    GDALAllRegister();
    GDALDriver* const driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    const GDALDatasetUniquePtr file(
        driver->Create(shapeIn(directory).c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRSpatialReference system;
    system.importFromEPSG(4326);
    OGRLayer* const layer = file->CreateLayer("map", &system, wkbPolygon, nullptr);
    OGRFieldDefn field("id", OFTInteger);
    layer->CreateField(&field);
    for (int i = 0; i < kPolygons; ++i) {
        OGRLinearRing ring;
        for (int corner = 0; corner <= kCorners; ++corner) {
            const double angle = -2 * M_PI * (corner % kCorners) / kCorners;
            ring.addPoint(i % 359 - 179 + 0.4 * std::cos(angle),
                          i / 359 % 160 - 80 + 0.4 * std::sin(angle));
        }
        OGRPolygon polygon;
        polygon.addRing(&ring);
        OGRFeature feature(layer->GetLayerDefn());
        feature.SetField(0, i);
        feature.SetGeometry(&polygon);
        if (layer->CreateFeature(&feature) != OGRERR_NONE)
            std::exit(1);
    }
}

int translate(const std::string& directory, const std::string& system)
{
    GDALAllRegister();
    const std::string out = directory + "/translated.geojson";
    std::filesystem::remove(out);
    std::vector<std::string> words = {"-f", "GeoJSON"};
    if (system != "same")
        words.insert(words.end(), {"-t_srs", "EPSG:" + system});
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    GDALDatasetH source =
        GDALOpenEx(shapeIn(directory).c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr);
    GDALVectorTranslateOptions* const options =
        GDALVectorTranslateOptionsNew(arguments.data(), nullptr);
    GDALDatasetH result = GDALVectorTranslate(out.c_str(), nullptr, 1, &source, options, nullptr);
    GDALVectorTranslateOptionsFree(options);
    if (!result)
        return 1;
    GDALClose(result);
    GDALClose(source);
    return 0;
}

bool compare(const std::string& directory, const std::string& system)
{
    const std::string programs = bench::programDirectory();
    std::vector<std::string> ours = {
        programs + "/hvhost",       "map",    "convert", shapeIn(directory),
        directory + "/map.geojson", "--force"};
    if (system != "same")
        ours.insert(ours.end(), {"--to", system});
    double megabytes = 0;
    const bench::Comparison time = bench::interleave(
        3,
        [&] {
            const bench::ChildResult done = bench::runChild(ours);
            megabytes = std::max(megabytes, done.peakMegabytes);
            return done.wallMilliseconds;
        },
        [&] {
            return bench::runChild({programs + "/bench_map", directory, system}).wallMilliseconds;
        });
    const std::string figure = system == "same" ? "map to GeoJSON" : "map to GeoJSON, reprojected";
    const bool holds = bench::report(figure, time, "ms", kMostShare);
    const bool fits = megabytes <= kMostMegabytes;
    std::printf("%s, peak memory: %.4g MB (limit %.4g MB)%s\n", figure.c_str(), megabytes,
                kMostMegabytes, fits ? "" : " OVER");
    return holds && fits;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3)
        return translate(argv[1], argv[2]);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_map DIR\n");
        return 2;
    }
    prepare(argv[1]);
    const bool sameHolds = compare(argv[1], "same");
    return compare(argv[1], "3857") && sameHolds ? 0 : 1;
}
