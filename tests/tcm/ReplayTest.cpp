#include "tcm/ReplayFixture.h"

// The data preparation of a model, run again on a dataset: which jobs that takes, and which
// settings fit which data.

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string kReadRows =
    "val readerConf = {\"dataSource\":\"_activeDataset_\",\"readErrorThreshold\":-1}\n";

std::string readFile(const std::string& records, const std::string& model)
{
    return R"(val readerConf = {"filesystem":{"dataModel":")" + model +
           R"(","locations":[{"path":")" + records +
           R"(","parser":{"name":"hvbf","config":{}}}]}})" + "\n";
}

std::string writeFile(const std::string& records, const std::string& model)
{
    return R"(val writerConf = {"dataDestination":")" + records + R"(","dataModelDestination":")" +
           model + "\",\"type\":\"hvbf\"}\n";
}

std::string prepare(const std::string& reader, const std::string& json, const std::string& writer,
                    const std::string& dimensions)
{
    return reader + R"(val tsdpOutConf = [{"export":true,"name":"JSON","uri":")" + json +
           "\"}]\nval tsdpConf = {\"dimFieldList\":[" + dimensions +
           R"(],"metricFieldList":["sales"],"dateTimeField":"month","span":{"n":3}})" + "\n" +
           writer + "read(readerConf)->tsdp:tsdp(tsdpConf,_,tsdpOutConf)->write(writerConf)";
}

/// The columns that the rows of the last replay had, with blanks between them.
std::string columnsServed()
{
    std::ifstream file(std::string(std::getenv("HV_STAT_DEBUG_DIR")) +
                       "/InputDataModel__activeDataset_.xml");
    const CFMetaData model(std::string(std::istreambuf_iterator<char>(file), {}));
    std::string columns;
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        columns += (i == 0 ? "" : " ") + model.GetField(i)->GetName();
    return columns;
}

} // namespace

TEST_F(Replay, TakesTheJobsThatTheDataNeed)
{
    const std::string copied = writeFile("T1", "T2");
    const std::string copy = kReadRows + copied + "read(readerConf)->write(writerConf)";
    const std::string convert = "read(readerConf)->reclassifyField(_,toTS)->write(writerConf)";
    struct ReplayCase
    {
        const char* timeField;
        Names dimensions;
        std::vector<std::string> jobs; ///< whole, or an end for conversions
        std::vector<int> recordsRead;
    };
    const ReplayCase cases[] = {
        {"day", {}, {prepare(kReadRows, "T1", writeFile("T2", "T3"), "")}, {3}},
        {"", {}, {prepare(kReadRows, "T1", writeFile("T2", "T3"), "")}, {3}},
        {"no such field", {}, {prepare(kReadRows, "T1", writeFile("T2", "T3"), "")}, {3}},
        {"month",
         {},
         {copied + convert, prepare(readFile("T1", "T2"), "T3", writeFile("T4", "T5"), "")},
         {3}},
        {"day",
         {"region"},
         {copy, prepare(readFile("T1", "T2"), "T3", writeFile("T4", "T5"), "\"region\"")},
         {3, 3}},
        {"month",
         {"region"},
         {copy, writeFile("T3", "T4") + convert,
          prepare(readFile("T3", "T4"), "T5", writeFile("T6", "T7"), "\"region\"")},
         {3, 3}},
    };
    for (const auto& [timeField, dimensions, expected, records] : cases) {
        SCOPED_TRACE(std::string(timeField) + " " + std::to_string(dimensions.size()));
        engine.clearCalls();
        recordsRead.clear();
        putModel(preparationOf(dimensions.empty() ? "" : "\"region\""));
        // The columns of the preparation are its own affair: the time is told apart.
        EXPECT_FALSE(
            score(timeField, "0", "0", dimensions, dimensions.empty() ? Names() : Names{"north"}))
            << "there are no scored rows";
        const Names run = plainJobs();
        ASSERT_EQ(run.size(), expected.size() + 1);
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_THAT(run[i], expected[i].starts_with("val writerConf")
                                    ? testing::Matcher<std::string>(testing::EndsWith(expected[i]))
                                    : testing::Matcher<std::string>(expected[i]));
        EXPECT_EQ(recordsRead, records);
    }
    EXPECT_THAT(modelOfRecords, testing::IsEmpty()) << "a conversion writes a model of its own";
}

TEST_F(Replay, RefusesATimeFieldThatIsNoNameOfTheJobLanguage)
{
    // The conversion writes the field without quotes: this one would have the job write a file.
    const std::string field = "t, \"\")) read({}) -> write({}) //";
    dataset = SvrDMDataset::Register(
        std::make_shared<MemorySource>(std::vector<VEXA_Variable>{text(field, 7), numeric("sales")},
                                       std::vector<MemorySource::Row>{{"2020-01", 5.0}}));
    putModel(R"({"settings":{"dimFieldList":[],"metricFieldList":["sales"],"dateTimeField":")"
             R"(t, \"\")) read({}) -> write({}) //"},"output":{"timeVariable":[1]}})");
    EXPECT_FALSE(score(field, "0", "0", {}, {}));
    EXPECT_THAT(jobs(), testing::IsEmpty());
    EXPECT_THAT(reason(), HasSubstr("its name needs quotes in a job"));
}

TEST_F(Replay, HandsRowsInAndEndsEachExecution)
{
    putModel(R"({"settings":{"dimFieldList":[""],"metricFieldList":["sales"],)"
             R"("dateTimeField":"day"},"output":{"timeVariable":[1]}})");
    score("day", "0", "0", {}, {});
    Names calls;
    for (const EngineCall& call : engine.calls())
        calls.push_back(call.name == "prepare" ? call.name : call.name + call.argument);
    EXPECT_THAT(Names(calls.begin() + 2, calls.end()),
                ElementsAre("prepare", "addInputIterator_activeDataset_", "execute", "dispose",
                            "delete", testing::StartsWith("createExecution"), "prepare", "execute",
                            testing::StartsWith("getOutputIteratorhvcontfile_"), "dispose",
                            "delete"));
}

TEST_F(Replay, TellsThePreparationTheDistinctValues)
{
    ASSERT_FALSE(score("day", "0", "0"));
    const CFMetaData model(modelOfRecords);
    ASSERT_EQ(model.FieldCount(), 1U);
    ASSERT_EQ(model.GetField("region")->GetValues().size(), 1U);
    EXPECT_EQ(model.GetField("region")->GetValues()[0].GetText(), "north");
    EXPECT_THAT(jobs().front(),
                HasSubstr(R"("inputFieldList":["region"],"maxNOfDistinctValues":10000)"));
}

TEST_F(Replay, SettingsFitADataset)
{
    struct SettingsCase
    {
        const char* dimensions;
        Names dimFields;
        const char* rest;   ///< of the settings, and what the preparation found
        const char* served; ///< null: refused
        int timePoints;
    };
    const char* const byDay =
        R"("metricFieldList":["sales"],"dateTimeField":"day"},"output":{"timeVariable":[4,5,6]}})";
    const auto byCycles = [](const std::string& fields, const std::string& points) {
        return R"("metricFieldList":["sales"],"dateTimeField":"","cyclicFieldList":[)" + fields +
               R"(]},"output":{"timeVariable":{)" + points + "}}}";
    };
    const std::string cycles[] = {
        byCycles(R"("$casecount")", R"("$casecount":[1,2,3,4])"),
        byCycles(R"("shop","day")", R"("shop":[1,2],"day":[1,2,3])"),
        byCycles(R"("shop","day")", R"("shop":[1,2])"),
        byCycles(R"("shop","day")", ""),
        byCycles("", R"("day":[1])"),
        byCycles(R"("no such field")", R"("no such field":[1])"),
        byCycles(R"("$casecount","day")", R"("day":[1])"),
        byCycles(R"("day")", R"("day":3)"),
    };
    const SettingsCase cases[] = {
        {R"("")", {}, byDay, "day sales $casecount", 3},
        {"", {}, byDay, "day sales $casecount", 3},
        {R"("region")", {}, byDay, nullptr, 0},
        {R"("","")", {}, byDay, nullptr, 0},
        {"0", {}, byDay, nullptr, 0},
        {"", {"region"}, byDay, nullptr, 0},
        {R"("region","shop")", {"region", "shop"}, byDay, "day region shop sales $casecount", 3},
        {R"("region","shop")", {"shop", "region"}, byDay, nullptr, 0},
        {R"("region")", {"Region"}, byDay, nullptr, 0},
        {R"("place")", {"place"}, byDay, nullptr, 0},
        {"", {}, R"("metricFieldList":["sales","price"],"dateTimeField":"day"}})", nullptr, 0},
        {"", {}, R"("metricFieldList":["sales"],"dateTimeField":"date"}})", nullptr, 0},
        {"", {}, R"("metricFieldList":["sales"],"dateTimeField":7}})", nullptr, 0},
        {"", {}, R"("metricFieldList":["sales"],"dateTimeField":"day"}})", nullptr, 0},
        {"",
         {},
         R"("metricFieldList":["sales","DAY","day"],"dateTimeField":"day"},)"
         R"("output":{"timeVariable":[1]}})",
         "day sales $casecount",
         1},
        {"", {}, cycles[0].c_str(), "sales $casecount", 4},
        {"", {}, cycles[1].c_str(), "day shop sales $casecount", 3},
        {"", {}, cycles[2].c_str(), "day shop sales $casecount", 2},
        {"", {}, cycles[3].c_str(), "day shop sales $casecount", 0},
        {"", {}, cycles[4].c_str(), nullptr, 0},
        {"", {}, cycles[5].c_str(), nullptr, 0},
        {"", {}, cycles[6].c_str(), nullptr, 0},
        {"", {}, cycles[7].c_str(), nullptr, 0},
    };
    for (const auto& [dimensions, dimFields, rest, served, timePoints] : cases) {
        SCOPED_TRACE(std::string(dimensions) + " " + rest);
        putModel(std::string(R"({"settings":{"dimFieldList":[)") + dimensions + "]," + rest);
        engine.clearCalls();
        WrittenRows numbered(
            {realField("$FutureFlag"), realField("sales"), realField("sales_predicted")},
            {{0.0, 1.0, 0.0}, {0.0, 2.0, 0.0}, {0.0, 3.0, 0.0}, {0.0, 4.0, 0.0}});
        rows = &numbered;
        const Names values[] = {{}, {"north"}, {"north", "old"}};
        EXPECT_EQ(score("day", "0", "0", dimFields, values[dimFields.size()]), served != nullptr);
        EXPECT_EQ(jobs().empty(), served == nullptr);
        if (served == nullptr)
            continue;
        EXPECT_EQ(columnsServed(), served);
        EXPECT_EQ(actual, timePoints == 0 ? std::vector<double>()
                                          : std::vector<double>{static_cast<double>(timePoints)});
    }
}

TEST_F(Replay, WantsSettingsInTheModel)
{
    for (const std::optional<std::string>& text :
         {std::optional<std::string>(), std::optional<std::string>("no JSON"),
          std::optional<std::string>("{}"), std::optional<std::string>(R"({"settings":7})"),
          std::optional<std::string>(R"({"settings":)" + std::string(100000, '['))}) {
        putModel(text);
        EXPECT_FALSE(score("", "0", "0")) << text.value_or("none");
    }
    putModel(preparationOf("\"region\""));
    EXPECT_EQ(reason(), "");
    EXPECT_FALSE(
        viewer->getImpactDiagram(12345, modelPath, "sales", {}, {}, true, 1, modelOfRecords));
    EXPECT_EQ(reason(), "there is no open dataset with the id 12345");
    EXPECT_THAT(jobs(), testing::IsEmpty());
}

TEST_F(Replay, AJobThatFailsEndsTheRequest)
{
    for (failingJob = 1; failingJob <= 5; ++failingJob) {
        SCOPED_TRACE(failingJob);
        engine.clearCalls();
        EXPECT_FALSE(score("month", "0", "0"));
        EXPECT_EQ(jobs().size(), failingJob);
        EXPECT_EQ(reason(), "IDtextdetail");
        EXPECT_EQ(openExecutions(engine), 0);
    }
}
