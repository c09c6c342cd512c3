#include "MapSamples.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

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
    _process = fork();
    if (_process == 0) {
        dup2(pipes[1], STDOUT_FILENO);
        execlp("python3", "python3", HV_MAP_SERVER, nullptr);
        _exit(127);
    }
    close(pipes[1]);
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
