#include <string>
#include <utility>
#include <vector>

#include "engine/EngineFixture.h"

/// What the steps do with settings that they do not know, or whose values do not fit.

namespace EngineTest {
namespace {

using StepSettings = EngineFixture;

/// Jobs with a mark at each place of a setting. They read a field x of numbers and a field s of
/// texts.
const std::vector<std::string>& jobsWithMarks()
{
    static const std::vector<std::string> jobs = {
        R"(read({"filesystem": {"locations": [{"path": "$DIR/in.csv", "parser": {"name": "csv",
           "config": {"hasHeader": true, @}, @}, @}], @}, @}) ->
           filterFields({"fields": ["x", "s"], @}) ->
           sortRecords({"fields": [{"name": "x", @}], @}) -> limitRecords({"count": 1, @}) ->
           sampleRecords({"count": 1, @}) -> sampleRecords({"percent": 100, @}) ->
           distinctRecords({@}) -> dataModelBuilder({@}, {"export": true, "name": "model",
           "uri": "$DIR/m.xml", @}) ->
           write({"dataDestination": "$DIR/out.csv", "type": "text/csv", @}))",
        readCsv("in.csv") + R"( -> updateDataModel({"fields": [{"name": "x", "valueLabels":
           [{"value": "1", "displayLabel": "L", @}], "missingValues": {"Value": ["2"], @}, @},
           {"name": "s", "Geo": {"type": "Point", "coordinates": "2", "GeoEnvelope": {"leftUpperX": 1,
           "leftUpperY": 2, "rightLowerX": 3, "rightLowerY": 1, @}, @}}], @}) -> )" +
            writeCsv("out.csv"),
        readCsv("in.csv") + R"( -> aggregate({"output": [{"function": "count", @}], @}) -> )" +
            writeCsv("out.csv"),
        "val a = " + readCsv("in.csv") + "\nval b = " + readCsv("in.csv") +
            R"(
           join({"matchFields": [{"a": "x", "b": "x", @}], "outputFields": {"a": ["x"],
           "b": ["s"], @}, @}, a: a, b: b) -> )" +
            writeCsv("joined.csv") + "\nunion({@}, a: a, b: b) -> " + writeCsv("out.csv")};
    return jobs;
}

/// Gives each mark a name of its own. Returns the names.
std::vector<std::string> replaceMarks(std::string& job)
{
    std::vector<std::string> names;
    for (std::size_t at = 0; (at = job.find('@', at)) != std::string::npos;) {
        names.push_back("wrong" + std::to_string(names.size()) + "_");
        job.replace(at, 1, "\"" + names.back() + "\": 0");
    }
    return names;
}

TEST_F(StepSettings, AreReportedAndIgnoredWhereTheyAreNotKnown)
{
    write("in.csv", "x,s\n1,a\n");
    for (std::string job : jobsWithMarks()) {
        const std::vector<std::string> names = replaceMarks(job);
        const RecordingListener listener = succeeded(run(job));
        std::string reported;
        for (const auto& [id, text] : listener.messages)
            if (id == "HVEPL0015W")
                reported += text + "\n";
        for (const std::string& name : names)
            EXPECT_THAT(reported, testing::HasSubstr(name + "\" is not known here"))
                << job << reported;
    }
}

TEST_F(StepSettings, AreRefusedWhereTheirValuesDoNotFit)
{
    write("in.csv", "x,s\n1,a\n");
    const std::string two =
        "val a = " + readCsv("in.csv") + "\nval b = " + readCsv("in.csv") + "\n";
    const auto join = [&two](const std::string& settings) {
        return two + "join({" + settings + "}, a: a, b: b)";
    };
    const auto step = [](const std::string& text) { return readCsv("in.csv") + " -> " + text; };
    const std::pair<std::string, const char*> cases[] = {
        {readCsv("in.csv", R"(, "maxRecordsCount": -1)"), "is below 0"},
        {readFile("in.csv", R"({"name": "xml"})"), "is \"xml\"; known are csv, sav and hvbf"},
        {step(R"(sampleRecords({"count": 1, "percent": 1}))"), "excludes the setting \"count\""},
        {step(R"(sampleRecords({"percent": -0.1}))"), "must be from 0 to 100"},
        {step(R"(dataModelBuilder(_, {"export": false, "uri": "$DIR/m.xml"}))"), "is not true"},
        {step(R"(updateDataModel({"fields": [{"name": "s", "Geo": {"type": "Point",
                 "coordinates": "0"}}]}))"),
         "is \"0\", not a whole number above 0"},
        {step(R"(updateDataModel({"fields": [{"name": "s", "Geo": {"type": "Point",
                 "coordinates": "2", "GeoEnvelope": {"leftUpperX": 1}}}]}))"),
         "GeoEnvelope.leftUpperY\" is missing"},
        {join(R"("matchFields": [{"a": "x"}])"), "must name a field of two inputs"},
        {join(R"("matchFields": [{"a": "x", "b": "s"}])"),
         "matches \"x\", which is Integer, with \"s\", which is String"},
        {join(R"("matchFields": [{"a": "x", "b": "x"}], "joinType": "Full")"),
         "is \"Full\"; known are Inner, Outer, Anti and Cartesian"},
        {join(R"("matchFields": [{"a": "x", "b": "x"}], "joinType": "Anti",
                 "nonMatchingSources": ["a", "b"])"),
         "must name one input in a join of type Anti"},
        {join(R"("matchFields": [{"a": "x", "b": "x"}], "joinType": "Anti",
                 "nonMatchingSources": ["c"])"),
         "names \"c\", which is the tag of no input"},
        {join(R"("matchFields": [{"a": "x", "b": "x"}], "joinType": "Anti",
                 "nonMatchingSources": ["a"], "outputFields": {"a": ["x"], "b": ["s"]})"),
         "names fields of an input whose records an Anti join drops"},
    };
    for (const auto& [job, part] : cases) {
        const RecordingListener listener = run(job + " -> " + writeCsv("out.csv"));
        EXPECT_THAT(listener.fault(), testing::HasSubstr(part)) << job;
        EXPECT_EQ(files(), std::vector<std::string>{"in.csv"}) << job;
    }
}

} // namespace
} // namespace EngineTest
