#include "MapSamples.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <ogrsf_frmts.h>

namespace EngineTest {
namespace {

void addFields(OGRLayer& layer)
{
    OGRFieldDefn fields[] = {
        {"name", OFTString}, {"code", OFTInteger64}, {"share", OFTReal}, {"day", OFTDate}};
    fields[0].SetWidth(20);
    fields[1].SetWidth(12);
    for (OGRFieldDefn& field : fields)
        layer.CreateField(&field);
}

void addRecord(OGRLayer& layer, const SampleRecord& record)
{
    OGRFeature feature(layer.GetLayerDefn());
    feature.SetField(0, record.name.c_str());
    feature.SetField(1, static_cast<GIntBig>(record.code));
    feature.SetField(2, record.share);
    if (!record.day.empty())
        feature.SetField(3, record.day.c_str());
    OGRGeometry* shape = nullptr;
    if (!record.shape.empty())
        OGRGeometryFactory::createFromWkt(record.shape.c_str(), nullptr, &shape);
    feature.SetGeometryDirectly(shape);
    if (layer.CreateFeature(&feature) != OGRERR_NONE)
        throw std::runtime_error("the sample cannot be written");
}

} // namespace

void writeShapeFile(const std::string& path, const std::string& kind, int wkid,
                    const std::vector<SampleRecord>& records)
{
    RegisterOGRShape();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    const GDALDatasetUniquePtr file(driver->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRSpatialReference system;
    if (wkid > 0)
        system.importFromEPSG(wkid);
    char encoding[] = "ENCODING=UTF-8";
    char* options[] = {encoding, nullptr};
    OGRLayer* layer = file->CreateLayer("sample", wkid > 0 ? &system : nullptr,
                                        OGRFromOGCGeomType(kind.c_str()), options);
    addFields(*layer);
    for (const SampleRecord& record : records)
        addRecord(*layer, record);
}

MapServer::MapServer()
{
    int pipes[2] = {};
    if (pipe(pipes) != 0)
        throw std::runtime_error("no pipe");
    // Spawned and not forked: before a fork the database's allocator takes more locks than the
    // thread sanitizer counts.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipes[1], STDOUT_FILENO);
    std::string python = "python3", script = HV_MAP_SERVER;
    char* const arguments[] = {python.data(), script.data(), nullptr};
    const int fault = posix_spawnp(&_process, "python3", &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipes[1]);
    if (fault != 0) {
        close(pipes[0]);
        throw std::runtime_error("the server does not start");
    }
    char line[64] = {};
    const auto length = ::read(pipes[0], line, sizeof line - 1);
    close(pipes[0]);
    if (length <= 0)
        throw std::runtime_error("the server does not start");
    _address = "http://127.0.0.1:" + std::to_string(std::atoi(line));
}

MapServer::~MapServer()
{
    kill(_process, SIGTERM);
    waitpid(_process, nullptr, 0);
}

} // namespace EngineTest
