#include "engine/EngineFixture.h"

#include <nlohmann/json.hpp>

using namespace EngineTest;

namespace {

using Json = nlohmann::ordered_json;

class Preparation : public EngineFixture
{
protected:
    /// Runs tsdp over a CSV text; gives the prepared records as CSV, or the fault.
    std::string prepare(const std::string& csv, const std::string& settings)
    {
        write("in.csv", csv);
        std::filesystem::remove(path("out.csv"));
        listener = run(readCsv("in.csv") + " -> tsdp:tsdp(" + settings +
                       R"(, _, [{"name": "JSON", "uri": "$DIR/prep.zip"}]) -> )" +
                       writeCsv("out.csv"));
        return listener.ending == "success" ? read("out.csv") : listener.fault();
    }
    Json document() const { return Json::parse(member("prep.zip", "TSDPOutput.json")); }

    RecordingListener listener;
};

TEST_F(Preparation, First)
{
    std::cout << prepare("day,region,sales,visits\n2024-01-01,north,1,5\n2024-01-02,north,2,6\n"
                         "2024-01-04,north,4,8\n2024-01-03,north,3.5,7\n2024-01-01,south,1,5\n"
                         "2024-01-04,south,4,8\n2024-01-03,south,,7\n2024-01-03,,,7\n",
                         R"({"dateTimeField": "day", "dimFieldList": ["region"],
                             "metricFieldList": ["sales", "visits"]})");
    for (auto& m : listener.messages)
        std::cout << m.first << " " << m.second << "\n";
    std::cout << document().dump() << "\n";
    std::cout << prepare("day,sales,visits\n2024-01-01,1,5\n2024-01-02,2,6\n"
                         "2024-01-04,4,8\n2024-01-03,3.5,7\n",
                         R"({"dateTimeField": "day", "dimFieldList": [""],
                             "metricFieldList": ["sales", "visits"]})");
    std::cout << document().dump() << "\n";
}

} // namespace
