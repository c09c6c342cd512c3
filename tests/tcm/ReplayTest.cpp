#include "tcm/ReplayFixture.h"

// The data preparation of a model, run again on a dataset: its jobs, and which settings fit which
// data.

namespace {

using testing::HasSubstr;

/// What a job reads, and its first step.
std::string outline(const std::string& job)
{
    std::smatch step;
    std::regex_search(job, step, std::regex("read\\(readerConf\\)->([a-zA-Z:]*)"));
    return (job.find("_activeDataset_") == std::string::npos ? "file " : "rows ") + step[1].str();
}

/// The columns of the last replay's rows, with blanks between them.
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
    struct
    {
        const char* timeField;
        Names dimensions;
        Names outlines; ///< of the jobs
        std::vector<int> recordsRead;
    } const cases[] = {
        {"day", {}, {"rows tsdp:tsdp"}, {3}},
        {"no such field", {}, {"rows tsdp:tsdp"}, {3}},
        {"month", {}, {"rows reclassifyField", "file tsdp:tsdp"}, {3}},
        {"day", {"region"}, {"rows write", "file tsdp:tsdp"}, {3, 3}},
    };
    for (const auto& [timeField, dimensions, outlines, records] : cases) {
        SCOPED_TRACE(std::string(timeField) + " " + std::to_string(dimensions.size()));
        engine.clearCalls();
        recordsRead.clear();
        putModel(preparationOf(dimensions.empty() ? "" : "\"region\""));
        score(timeField, "0", "0", dimensions, dimensions.empty() ? Names() : Names{"north"});
        Names run;
        for (const std::string& job : plainJobs())
            run.push_back(outline(job));
        run.pop_back(); // the score
        EXPECT_EQ(run, outlines);
        EXPECT_EQ(recordsRead, records);
    }
    // The last preparation read a file whose data model lists the distinct values.
    const CFMetaData model(modelOfRecords);
    ASSERT_EQ(model.FieldCount(), 1U);
    ASSERT_EQ(model.GetField("region")->GetValues().size(), 1U);
    EXPECT_EQ(model.GetField("region")->GetValues()[0].GetText(), "north");
}

TEST_F(Replay, RejectsATimeFieldThatIsNoNameOfTheJobLanguage)
{
    // The conversion writes the field without quotes. This one would make the job write a file.
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

TEST_F(Replay, SettingsFitADataset)
{
    const std::string byDay = R"("dateTimeField":"day")";
    const std::string byCycles = R"("dateTimeField":"","cyclicFieldList":)";
    const std::string both = R"(["shop","day"])";
    const char* const sales = R"("sales")";
    const char* const twice = R"("sales","DAY","day")";
    const char* const all = "day shop sales $casecount";
    const char* const daily = "day sales $casecount";
    struct
    {
        const char* dimensions;
        Names dimFields;
        const char* metrics;
        std::string time;
        std::string points;
        const char* served; ///< null: rejected
        std::vector<double> last;
    } const cases[] = {
        {R"("")", {}, sales, byDay, "[4,5,6]", daily, {3}},
        {"", {}, twice, byDay, "[1]", daily, {1}},
        {R"("region")", {}, sales, byDay, "[1]", nullptr, {}},
        {R"("","")", {}, sales, byDay, "[1]", nullptr, {}},
        {"0", {}, sales, byDay, "[1]", nullptr, {}},
        {R"("region","shop")",
         {"region", "shop"},
         sales,
         byDay,
         "[1]",
         "day region shop sales $casecount",
         {1}},
        {R"("region","shop")", {"shop", "region"}, sales, byDay, "[1]", nullptr, {}},
        {R"("region")", {"Region"}, sales, byDay, "[1]", nullptr, {}},
        {R"("place")", {"place"}, sales, byDay, "[1]", nullptr, {}},
        {"", {}, R"("sales","price")", byDay, "[1]", nullptr, {}},
        {"", {}, sales, R"("dateTimeField":"date")", "[1]", nullptr, {}},
        {"", {}, sales, R"("dateTimeField":7)", "[1]", nullptr, {}},
        {"", {}, sales, byDay, "null", nullptr, {}},
        {"",
         {},
         sales,
         byCycles + R"(["$casecount"])",
         R"({"$casecount":[1,2]})",
         "sales $casecount",
         {2}},
        {"", {}, sales, byCycles + both, R"({"shop":[1,2],"day":[1,2,3]})", all, {3}},
        {"", {}, sales, byCycles + both, R"({"shop":[1,2]})", all, {2}},
        {"", {}, sales, byCycles + both, "{}", all, {}},
        {"", {}, sales, byCycles + "[]", R"({"day":[1]})", nullptr, {}},
        {"", {}, sales, byCycles + R"(["date"])", R"({"date":[1]})", nullptr, {}},
        {"", {}, sales, byCycles + R"(["$casecount","day"])", R"({"day":[1]})", nullptr, {}},
        {"", {}, sales, byCycles + R"(["day"])", R"({"day":3})", nullptr, {}},
    };
    for (const auto& [dimensions, dimFields, metrics, time, points, served, last] : cases) {
        SCOPED_TRACE(std::string(dimensions) + metrics + time + points);
        putModel(std::string(R"({"settings":{"dimFieldList":[)") + dimensions +
                 R"(],"metricFieldList":[)" + metrics + "]," + time +
                 R"(},"output":{"timeVariable":)" + points + "}}");
        engine.clearCalls();
        WrittenRows numbered(
            {realField("$FutureFlag"), realField("sales"), realField("sales_predicted")},
            {{0.0, 1.0, 0.0}, {0.0, 2.0, 0.0}, {0.0, 3.0, 0.0}});
        rows = &numbered;
        const Names values[] = {{}, {"north"}, {"north", "old"}};
        EXPECT_EQ(score("day", "0", "0", dimFields, values[dimFields.size()]), served != nullptr);
        EXPECT_EQ(jobs().empty(), served == nullptr);
        EXPECT_EQ(actual, last) << "offset 0 is the last of the points";
        EXPECT_EQ(served == nullptr ? "" : columnsServed(), served == nullptr ? "" : served);
    }
}

TEST_F(Replay, NeedsSettingsInTheModelAndADataset)
{
    const std::string deep = R"({"settings":)" + std::string(100000, '[');
    for (const std::string& text :
         {std::string("no JSON"), std::string("{}"), std::string(R"({"settings":7})"), deep}) {
        putModel(text);
        EXPECT_FALSE(score("", "0", "0")) << text;
    }
    putModel(std::nullopt);
    EXPECT_FALSE(score("", "0", "0"));
    putModel(R"({"settings":{"dimFieldList":"","metricFieldList":["sales"],)"
             R"("dateTimeField":"month"},"output":{"timeVariable":[1]}})");
    EXPECT_FALSE(score("month", "0", "0"));
    EXPECT_EQ(reason(), "");
    putModel(preparationOf("\"region\""));
    dataset = 12345;
    EXPECT_FALSE(score("", "0", "0"));
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
        EXPECT_EQ(scratchFiles().size(), 1U) << "the model alone";
    }
}
