#include "JNIException.h"
#include "geo/GeoFixture.h"

// What a request leaves when the engine, or the machine, fails in the midst of it: nothing.

namespace {

class Faults : public ScriptedMapDialog
{
protected:
    void SetUp() override
    {
        ScriptedMapDialog::SetUp();
        folder().put("roads.dbf");
        engine.setAnswer("getCoordinatesSystemInfo(WGS)",
                         R"({"wkid":1,"name":"WGS","wkt":"W","isProjection":false})");
        files = scratchFiles();
        engine.setOutputs([this](const std::string&) {
            limits.rewind();
            return &limits;
        });
    }

    /// The requests, by number; false for one that there is not.
    bool request(int number)
    {
        std::string model;
        KeyRows unmatched;
        int count = 0;
        switch (number) {
        case 0:
            return maps->validateShapeSource(path("roads.shp"), model);
        case 1:
            return maps->getShapeGeoJSON("WGS", 0, "WGS", 0, path("roads.shp"), "m", "g");
        case 2:
            return maps->getPointGeoJSON("WGS", 0, "WGS", 0, dataset, "", {"a", "b"}, "m", "g");
        case 3:
            return maps->matchShapeKeys(path("roads.shp"), {"k"}, unmatched, dataset, "", {"a"},
                                        unmatched, 1, count);
        default:
            return false;
        }
    }

    static constexpr int kRequests = 4;

    Names files;
    WrittenRows limits{{realField("k"), realField("a")}, {{1.0, 2.0}}};
    const std::shared_ptr<MemorySource> source =
        std::make_shared<MemorySource>(std::vector<VEXA_Variable>{numeric("a"), numeric("b")},
                                       std::vector<MemorySource::Row>{{1.0, 2.0}});
    const LocallyUniqueID dataset = SvrDMDataset::Register(source);
};

} // namespace

TEST_F(Faults, OfTheEngineLeaveNoExecution)
{
    for (const Fault fault : {Fault::Engine, Fault::Java, Fault::Standard, Fault::Unknown})
        for (const char* call : {"createExecution", "prepare", "addInputIterator", "execute",
                                 "getOutputIterator", "dispose"}) {
            engine.throwAt(call, fault);
            for (int number = 1; number < kRequests; ++number) {
                SCOPED_TRACE(std::string(nameOf(fault)) + " exception at " + call + " of request " +
                             std::to_string(number));
                try {
                    // Which calls a request makes, and which are guarded, differs: the shape of a
                    // map needs neither rows.
                    EXPECT_EQ(request(number),
                              number == 1 && (call == std::string("addInputIterator") ||
                                              call == std::string("getOutputIterator")));
                } catch (...) {
                    EXPECT_NE(call, std::string("execute"));
                    EXPECT_NE(call, std::string("getOutputIterator"));
                }
                // At once, and not by the next job: the rows are gone.
                EXPECT_EQ(openExecutions(engine), 0);
                expectOnlyTheFolderLeft(files);
            }
            engine.throwAt(call, Fault::None);
        }
}

// Whichever call of the machine fails, what was made goes.
TEST_F(Faults, OfTheMachineLeaveNothing)
{
    for (int request = 0; request < kRequests; ++request) {
        bool result = false;
        bool reached = true;
        for (int number = 1; reached; ++number) {
            SCOPED_TRACE("call " + std::to_string(number) + " of request " +
                         std::to_string(request));
            jni().failAt(number, RecordingJni::Fault::OutOfMemory);
            try {
                result = this->request(request);
            } catch (const JNIException&) {
            }
            reached = jni().endFault();
            expectOnlyTheFolderLeft(files);
        }
        EXPECT_TRUE(result) << "the last run meets no failure";
        EXPECT_EQ(openExecutions(engine), 0);
    }
}
