#include "bridge/JNIHvlProgram.h"
#include "dialog/DialogCases.h"
#include "dialog/OutputRows.h"
#include "dialog/RequestScope.h"
#include "geo/HVInteractiveSTEM.h"
#include "geo/KeyReader.h"
#include "geo/MapSource.h"
#include "geo/MatchJob.h"
#include "hvl/ComposedJob.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/ExecutionScope.h"
#include "support/HVSimpleFile.h"
#include "support/Tracing.h"

// Matching of the keys of a map with those of a dataset.

namespace {

using Names = std::vector<std::string>;
using KeyRows = std::vector<std::vector<std::string>>;

constexpr const char* kKeyCounts = "There must be as many key fields of the data as of the map.";
constexpr int kNoLimit = -1;

} // namespace

/// A request: the question, with names in the host's encoding, and references to the results.
struct HVInteractiveSTEM::KeyMatching
{
    const Names& mapKeys;
    DialogChoice data; ///< its variables are the keys
    int maxRows;
    KeyRows& mapUnmatched;
    KeyRows& dataUnmatched;
    int& matchedCount;
};

namespace {

/// Trace name of the question that a job answers.
std::string traceNameOf(const MatchedValues& wanted)
{
    return std::string("MappingKeys") + (wanted.unmatched ? "_UnMatch" : "_Match") +
           (wanted.mapSide ? "_Map" : "_DS");
}

} // namespace

bool HVInteractiveSTEM::matchShapeKeys(const std::string& shapePath, const Names& mapKeys,
                                       KeyRows& mapUnmatched, LocallyUniqueID dataset,
                                       const std::string& dataPath, const Names& dataKeys,
                                       KeyRows& dataUnmatched, int maxRows, int& matchedCount)
{
    beginRequest();
    const std::string path = getShapeFilePath(shapePath);
    if (path.empty())
        return false;
    const KeyMatching matching{
        mapKeys, {dataset, dataPath, dataKeys}, maxRows, mapUnmatched, dataUnmatched, matchedCount};
    return matchKeys(MapSource::shape(path), "MatchShapeKeys_Preshape", matching);
}

bool HVInteractiveSTEM::matchServiceKeys(const std::string& url, int layer, const Names& mapKeys,
                                         KeyRows& mapUnmatched, LocallyUniqueID dataset,
                                         const std::string& dataPath, const Names& dataKeys,
                                         KeyRows& dataUnmatched, int maxRows, int& matchedCount)
{
    beginRequest();
    const KeyMatching matching{
        mapKeys, {dataset, dataPath, dataKeys}, maxRows, mapUnmatched, dataUnmatched, matchedCount};
    return matchKeys(serviceOf(url, layer), "MatchServiceKeys_Preshape", matching);
}

/// Clears the results first, whatever happens later.
bool HVInteractiveSTEM::matchKeys(const MapSource& source, const char* tag,
                                  const KeyMatching& matching)
{
    matching.mapUnmatched.clear();
    matching.dataUnmatched.clear();
    matching.matchedCount = 0;
    RequestScope request(*this);
    const bool isDone = runMatching(source, tag, matching);
    request.end();
    return isDone;
}

bool HVInteractiveSTEM::runMatching(const MapSource& source, const char* tag,
                                    const KeyMatching& matching)
{
    // Keys match by index. Additional data keys have no partner and are ignored.
    if (matching.data.variables.size() < matching.mapKeys.size()) {
        setTranslatedException(kKeyCounts);
        return false;
    }
    const std::unique_ptr<DialogCases> cases = openCases(matching.data, "contextData");
    if (cases == nullptr)
        return false;
    const HVSimpleFile data("shapedata.hvbf", true, true);
    const HVSimpleFile model("shapedatamodel.xml", true, true);
    const ExecutionScope execution(runner());
    if (!copyMap(source, tag, data, model))
        return false;
    const MatchSides sides{data, model, cases->rows(), toUtf8(matching.mapKeys),
                           toUtf8(matching.data.variables)};
    // Only the number of rows is used.
    KeyRows matched;
    const MatchedValues common{true, false, kNoLimit, matched};
    const bool isCounted = getMatchedValues(sides, common);
    matching.matchedCount = static_cast<int>(matched.size());
    const MatchedValues ofMap{true, true, matching.maxRows, matching.mapUnmatched};
    const MatchedValues ofData{false, true, matching.maxRows, matching.dataUnmatched};
    return isCounted && getMatchedValues(sides, ofMap) && getMatchedValues(sides, ofData);
}

/// The joins read the map three times. This copy is faster to read than a shape file or a service.
bool HVInteractiveSTEM::copyMap(const MapSource& source, const char* tag, const HVSimpleFile& data,
                                const HVSimpleFile& model)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    source.applyTo(read);
    HVLWrite write(&program);
    write.WriteHVBF(data.GetFileName());
    write.SetDataModel(model.GetFileName());
    write.AddPredFunction(&read);
    const std::string job = composedJob(program, write);
    traceHVLFile(job, "HvlJobText", tag);
    const bool isCopied = runner().prepareHVLJob(job) && tryRunHV(runner());
    cleanExecution();
    return isCopied;
}

/// Answers one question: joins the distinct keys of both sides and reads the resulting rows.
bool HVInteractiveSTEM::getMatchedValues(const MatchSides& sides, const MatchedValues& wanted)
{
    const HVSimpleFile data("joindata.csv", true, true);
    const HVSimpleFile model("joindatamodel.xml", true, true);
    const ExecutionScope execution(runner());
    const std::string job = matchJob(sides, wanted, data, model);
    traceHVLFile(job, "HvlJobText", traceNameOf(wanted));
    bool isRead = false;
    if (runOn(sides.iterator, job)) {
        OutputRows rows(runner(), data.GetFileName());
        if (rows.get() != nullptr)
            isRead =
                KeyReader(*rows.get(), keysOf(sides, wanted)).read(wanted.maxRows, wanted.rows);
        // Dispose here, not in the destructor, so that an exception of the engine fails the
        // request.
        rows.dispose();
    }
    cleanExecution();
    return isRead;
}
