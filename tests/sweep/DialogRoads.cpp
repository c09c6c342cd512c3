#include "geo/GeoFixture.h"
#include "sweep/EngineFaults.h"
#include "sweep/Road.h"
#include "tcm/ReplayFixture.h"

#include "CommonBlocks.h"
#include "EngineException.h"
#include "ErrorText.h"
#include "JNIException.h"

namespace {

/// A request that throws, by what it throws. Other types are not documented.
template <class Work>
RoadResult attempted(const Road::FaultSwitch& faults, Work work)
{
    RoadResult result;
    faults(true);
    try {
        work(result);
    } catch (const EmbeddedHV::Exception& error) {
        result.told = std::string("Exception: ") + error.getMessage();
    } catch (const EmbeddedHV::JavaException& error) {
        result.told = std::string("JavaException: ") + error.getMessage();
    } catch (const JNIException& error) {
        result.told = "JNIException: " + error.message();
    } catch (const std::exception& error) {
        result.told = std::string("std::exception: ") + error.what();
    } catch (int) {
        // What the engine of unknown manners throws passes through.
        result.told = "an exception of another type";
    } catch (...) {
        result.complaint = "an exception of a type that is not documented";
    }
    faults(false);
    return result;
}

/// Text that must not depend on the run.
std::string joined(const KeyRows& rows)
{
    std::string text;
    for (const auto& row : rows)
        for (const std::string& cell : row)
            text += cell + ",";
    return text;
}

/// The host's settings while a dialog works.
constexpr int kWeight = 1;
constexpr int kSplit = 2;

/// What roads through dialogs have in common: an engine that follows a script, and a temporary
/// folder with the files of the fixture.
template <class Fixture>
class DialogRoad : public Road, protected Fixture
{
public:
    ~DialogRoad() override
    {
        this->engine.setCallHook({});
        this->TearDown();
    }
    std::vector<std::string> filesLeft() const override
    {
        std::vector<std::string> left = this->scratchFiles();
        for (long open = this->openExecutions(this->engine); open > 0; --open)
            left.emplace_back("an execution of the engine");
        return left;
    }
    void cleanUp() override
    {
        this->runner->cleanJRef();
        this->engine.clearCalls();
    }
    EngineFaults& engineFaults() override { return _faults; }

protected:
    DialogRoad()
    {
        this->SetUp();
        pvGetCmnGlb()->weight = kWeight;
        pvGetCmnGlb()->split = kSplit;
        this->engine.setCallHook([this] { _faults.onCall(); });
    }

private:
    void TestBody() override {}

    EngineFaults _faults;
};

template <class Dialog>
std::string reasonOf(Dialog& dialog)
{
    std::string id;
    std::string text;
    std::string detail;
    dialog.hasError(id, text, detail);
    return "false: " + id + " " + text;
}

/// The requests of one map dialog, from its making to its end.
class MapsRoad : public DialogRoad<ScriptedMapDialog>
{
public:
    MapsRoad()
    {
        maps.reset();
        folder().put("roads.dbf");
        engine.setAnswer("getCoordinatesSystemInfo(WGS)",
                         R"({"wkid":1,"name":"WGS","wkt":"W","isProjection":false})");
        engine.setOutputs([this](const std::string&) {
            limits.rewind();
            return &limits;
        });
    }
    RoadResult run(const FaultSwitch& faults) override
    {
        return attempted(faults, [this](RoadResult& result) { request(result); });
    }

private:
    void request(RoadResult& result)
    {
        HVInteractiveSTEM dialog;
        KeyRows unmatched;
        KeyRows others;
        int count = 0;
        // An exception of the engine shows as an empty data model.
        const bool valid =
            dialog.validateShapeSource(path("roads.shp"), result.output) && !result.output.empty();
        const bool shapes = dialog.getShapeGeoJSON("WGS", 0, "WGS", 0, path("roads.shp"), "m", "g");
        const bool points =
            dialog.getPointGeoJSON("WGS", 0, "WGS", 0, dataset, "", {"a", "b"}, "m", "g");
        const bool matched = dialog.matchShapeKeys(path("roads.shp"), {"k"}, unmatched, dataset, "",
                                                   {"a"}, others, 1, count);
        result.succeeded = valid && shapes && points && matched;
        result.output += "|" + joined(unmatched) + "|" + joined(others) + std::to_string(count);
        result.told = reasonOf(dialog);
    }

    WrittenRows limits{{realField("k"), realField("a")}, {{1.0, 2.0}}};
    const std::shared_ptr<MemorySource> source =
        std::make_shared<MemorySource>(std::vector<VEXA_Variable>{numeric("a"), numeric("b")},
                                       std::vector<MemorySource::Row>{{1.0, 2.0}});
    const LocallyUniqueID dataset = SvrDMDataset::Register(source);
};

/// The requests of one viewer of models, from its making to its end.
class ModelsRoad : public DialogRoad<Replay>
{
public:
    ModelsRoad()
    {
        viewer.reset();
        rows = &scored;
    }
    RoadResult run(const FaultSwitch& faults) override
    {
        return attempted(faults, [this](RoadResult& result) { request(result); });
    }

private:
    void request(RoadResult& result)
    {
        HVInteractiveTSR dialog;
        scored.rewind();
        actual.clear();
        predicted.clear();
        std::string diagram;
        const bool drawn = dialog.getImpactDiagram(dataset, modelPath, "sales", {"region"},
                                                   {"north"}, true, 2, diagram);
        scored.rewind();
        const bool isScored =
            dialog.GetScenarioInfo(dataset, modelPath, "day", "-1", "1", {"x"}, {1}, {2}, "sales",
                                   {"region"}, {"north"}, actual, predicted);
        result.succeeded = drawn && isScored;
        result.output = diagram;
        for (const auto* numbers : {&actual, &predicted})
            for (const double number : *numbers)
                result.output += " " + std::to_string(number);
        result.told = reasonOf(dialog);
    }

    WrittenRows scored{{realField("sales_predicted"), realField("$FutureFlag"), realField("sales")},
                       {{10.0, 0.0, 1.0}, {30.0, 0.0, 3.0}, {50.0, 1.0, 5.0}}};
};

} // namespace

std::vector<NamedRoad> dialogRoads()
{
    return {{"dialog-maps", [] { return std::make_unique<MapsRoad>(); }},
            {"dialog-models", [] { return std::make_unique<ModelsRoad>(); }}};
}
