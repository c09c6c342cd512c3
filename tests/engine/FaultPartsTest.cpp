#include "engine/EngineFixture.h"
#include "engine/TestRows.h"

#include <cstdlib>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "datafile/FaultJson.h"

using namespace EngineTest;
using nlohmann::json;

namespace {

/// The parts of errors, in the detail that the engine reports.
class FaultPartsTest : public EngineFixture
{
protected:
    FaultPartsTest()
    {
        write("in.csv", "name,day,n\nAnn,2020-01-02,1\nBob,2020-01-03,2\n");
        write("ragged.csv", "a,b\n1,2\n3\n4\n");
        write("open.csv", "a,b\n1,\"x\n");
        write("foreign.csv", "gr\xF6\xDF"
                             "e\n1\n");
        write("foreign2.csv", "a\n1\nf\xFC"
                              "r\n");
    }
    std::string partsOf(const RecordingListener& listener) { return partsIn(listener.errorDetail); }
    /// The detail without its file path and what, which the text shows. The fixture compares these.
    std::string partsIn(const std::string& detail)
    {
        json parts = json::parse(detail, nullptr, false);
        if (!parts.is_object())
            return "no JSON: " + detail;
        const std::string id = parts["id"];
        const std::string name = std::to_string(_documents.size()) + ".json";
        write(name, detail);
        _documents += " '" + path(name) + "'";
        for (const char* shown : {"id", "what", "detail"})
            parts.erase(shown);
        if (parts.contains("file")) {
            const auto file = parts["file"]["path"].get<std::string>();
            parts["file"]["path"] = file.substr(file.rfind('/') + 1);
        }
        return id + " " + parts.dump();
    }
    void validateDocuments() const
    {
        const std::string command = HV_VALIDATE_FAULT + _documents;
        EXPECT_EQ(std::system(command.c_str()), 0);
    }

    std::string _documents;
};

/// The file that the job reads, its next steps, on the second line, and the parts of the error.
/// Without a file, the steps are the job.
constexpr std::tuple<const char*, const char*, const char*> kFaultParts[] = {
    {"", R"(val a = {"x": })", R"(HVEPA0001E {"job":{"column":15,"line":1}})"},
    {"in.csv", R"(filterRecords(_, c => x => x."n" > 1))",
     R"(HVEPA0001E {"job":{"column":30,"line":2},"kind":"fieldInQuotes","name":"n"})"},
    {"", "'", R"(HVEPA0001E {"job":{"column":1,"line":1},"kind":"apostrophe"})"},
    {"", "reed({})",
     R"(HVEPL0001E {"hasSuggestion":true,"job":{"column":1,"line":1},"name":"reed"})"},
    {"", R"(read({"dataSource": 5}) -> write({}))",
     R"(HVEPL0004E {"setting":"dataSource","step":"read"})"},
    {"", R"(read({"dataSource": "nobody"}) -> write({"dataSource": "b"}))",
     R"(HVEIO0013E {"name":"nobody","step":"read"})"},
    {"in.csv", "filterRecords(_, c => x => n > 1)",
     R"(HVEEX0004E {"job":{"column":28,"line":2},"name":"n","step":"filterRecords"})"},
    {"in.csv", R"(filterRecords(_, c => x => x.day > "2020"))",
     R"(HVEEX0005E {"job":{"column":34,"line":2},"kind":"dateAndText","step":"filterRecords"})"},
    {"in.csv", "filterRecords(_, c => x => x.n)", R"(HVEEX0005E {"step":"filterRecords"})"},
    {"in.csv", R"(deriveField(_, c => x => ("N", 1)))",
     R"(HVEPL0006E {"field":"N","step":"deriveField"})"},
    {"in.csv", R"(filterFields({"fields": ["nam"]}))",
     R"(HVEPL0005E {"field":"nam","hasSuggestion":true,"step":"filterFields"})"},
    {"in.csv", R"(aggregate({"output": [{"function": "count"}, {"function": "zzzz"}]}))",
     R"(HVEPL0004E {"kind":"noSuchFunction","name":"zzzz","setting":"output[1].function","step":"aggregate"})"},
    {"in.csv", R"(aggregate({"output": [{"function": "sum", "input": "zzzz"}]}))",
     R"(HVEPL0005E {"field":"zzzz","namedBy":"output[0].input","step":"aggregate"})"},
    {"in.csv", R"(aggregate({"output": [{"function": "count"}, {"function": "count"}]}))",
     R"(HVEPL0006E {"field":"count","namedBy":"output[1].outName","step":"aggregate"})"},
    {"in.csv", R"(updateDataModel({"fields": [{"name": "name", "storage": "integer"}]}))",
     R"(HVEEX0012E {"field":"name","kind":"notInteger","step":"updateDataModel"})"},
    {"in.csv",
     R"(deriveField(_, c => x => ("d", toTimestamp(x.name, "yyyy", "yyyy", "HH", "", x.day))))",
     R"(HVEEX0012E {"job":{"column":32,"line":2},"step":"deriveField"})"},
    {"none.csv", "", R"(HVEIO0001E {"file":{"path":"none.csv"},"step":"read"})"},
    {"ragged.csv", "",
     R"(HVEIO0006E {"file":{"line":3,"path":"ragged.csv"},"kind":"fieldCount","step":"read"})"},
    {"open.csv", "",
     R"(HVEIO0006E {"file":{"column":3,"line":2,"path":"open.csv"},"step":"read"})"},
    {"foreign.csv", "",
     R"(HVEIO0005E {"file":{"line":1,"path":"foreign.csv"},"kind":"notUtf8","step":"read"})"},
    {"foreign2.csv", "",
     R"(HVEIO0006E {"file":{"line":3,"path":"foreign2.csv"},"kind":"notUtf8","step":"read"})"},
};

TEST_F(FaultPartsTest, AreDataBesideTheSentence)
{
    for (const auto& [file, steps, expected] : kFaultParts) {
        const std::string rest = *steps ? steps + std::string(" -> ") : "";
        const RecordingListener listener =
            *file ? run(readCsv(file) + " ->\n" + rest + writeCsv("out.csv")) : run(steps);
        EXPECT_EQ(partsOf(listener), expected) << listener.fault();
    }
    EXPECT_EQ(partsOf(run(readCsv("in.csv") + " -> " + writeCsv("none/out.csv"))),
              R"(HVEIO0015E {"file":{"path":"out.csv"},"step":"write"})");
    EXPECT_EQ(
        partsOf(run(readCsv("ragged.csv", R"(, "readErrorThreshold": 1)") + " -> " +
                    writeCsv("out.csv"))),
        R"(HVEIO0007E {"file":{"line":4,"path":"ragged.csv"},"kind":"fieldCount","limit":1,"step":"read"})");
    validateDocuments();
}

TEST_F(FaultPartsTest, OfRowsNameTheIteratorAndTheRecord)
{
    const std::string job = R"(read({"dataSource": "rows"}) -> )" + writeCsv("out.csv");
    TestRows bad("rows", {{"v", "string"}}, {{"a"}, {"x\xC3"}});
    EXPECT_EQ(
        partsOf(feed(bad, job)),
        R"(HVEIO0020E {"field":"v","iterator":"rows","kind":"notUtf8","record":2,"step":"read"})");
    TestRows failing("rows", {{"v", "real"}}, {{1.0}});
    failing.beforeRecord = [](std::size_t) { throw std::runtime_error("boom"); };
    EXPECT_EQ(partsOf(feed(failing, job)),
              R"(HVEIO0019E {"iterator":"rows","record":1,"step":"read"})");
    validateDocuments();
}

TEST_F(FaultPartsTest, OfMessagesAreDataToo)
{
    const std::pair<std::string, const char*> kMessages[] = {
        {readCsv("ragged.csv", R"(, "readErrorThreshold": 9)"),
         R"(HVEIO0008W {"file":{"path":"ragged.csv"},"step":"read"})"},
        {readCsv("in.csv", R"(, "wrong": 1)"), R"(HVEPL0015W {"setting":"wrong","step":"read"})"},
        {readCsv("in.csv") + R"( -> deriveField(_, c => x => ("v", 1.7e308))
             -> aggregate({"output": [{"function": "sum", "input": "v"}]}))",
         R"(HVERT0006W {"field":"sum_v","step":"aggregate"})"},
    };
    for (const auto& [steps, expected] : kMessages) {
        const RecordingListener listener = succeeded(run(steps + " -> " + writeCsv("out.csv")));
        std::vector<std::string> parts;
        for (const EmbeddedHV::ReportedMessage& report : listener.reports)
            parts.push_back(partsIn(report.detail));
        EXPECT_THAT(parts, testing::Contains(expected));
    }
    validateDocuments();
}

/// A data model document with one text field.
std::string dataModelWith(const std::string& field)
{
    CFMetaData model;
    model.AppendField(CFField(field, CFField::Nominal, CFField::String, CFField::Input));
    std::string xml;
    model.ExportXMLDoc(xml);
    return xml;
}

/// The error is raised in SQL, and its text passes through the database.
TEST_F(FaultPartsTest, OfARaisedErrorHoldAnyName)
{
    const std::string field = R"(a"b','{"id":"HVEIO0001E","step":"read"}` || \n)";
    const std::string value = "x'\n\"HVEIO0001E {";
    TestRows rows("rows", {{"replaced", "string"}}, {{value}});
    rows.model = dataModelWith(field);
    // The name is the same text in JSON and in the job.
    const std::string name = json(field).dump();
    const auto listener =
        feed(rows, R"(read({"dataSource": "rows"}) -> updateDataModel({"fields": [{"name": )" +
                       name + R"(, "storage": "integer"}]}) -> )" + writeCsv("out.csv"));
    EXPECT_EQ(listener.errorText, "updateDataModel: a value of the field \"" + field +
                                      "\" cannot be stored as integer: \"" + value + "\"");
    const json expected = {{"step", "updateDataModel"}, {"field", field}, {"kind", "notInteger"}};
    EXPECT_EQ(partsOf(listener), "HVEEX0012E " + expected.dump());
    validateDocuments();
}

} // namespace
