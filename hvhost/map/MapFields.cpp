#include "hvhost/map/MapFields.h"

#include "bridge/JNIHvlProgram.h"
#include "geo/HVInteractiveSTEM.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/map/MapSession.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"
#include "support/Paths.h"

namespace {

/// Reads one record with a job. Unlike a question for a data model, a job reports the error.
void readOne(MapSession& session, const MapInput& map)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    if (map.isService())
        read.ReadMapService(map.location(), *map.layer());
    else
        read.ReadShape(NormalizeHvlPathU(map.location(), "file"));
    read.SetMaxCaseCount(1);
    const HVSimpleFile data("mapinfo.hvbf", true, true);
    HVLWrite write(&program);
    write.WriteHVBF(data.GetFileName());
    write.AddPredFunction(&read);
    write.GenerateHVL();
    std::string job;
    program.getHvlText(job);
    session.host().run(job, map.origin());
}

} // namespace

std::string mapDataModel(MapSession& session, const MapInput& map)
{
    std::string model;
    const auto ask = [&](HVInteractiveSTEM& maps) {
        return map.isService() ? maps.validateServiceLayer(map.location(), *map.layer(), model)
                               : maps.validateShapeSource(map.location(), model);
    };
    session.perform(ask, map.name(), map.origin());
    if (!model.empty())
        return model;
    session.checkStop();
    readOne(session, map);
    throw CommandFault(ExitStatus::Input, map.name() + ": the engine cannot describe it");
}
