#include <gmock/gmock.h>

#include <fstream>
#include <regex>
#include <stdexcept>
#include <tuple>

#include "descriptive/HVDescriptive.h"
#include "descriptive/People.h"
#include "support/JobFixture.h"
#include "support/ZipWriter.h"

// What becomes of a result that is not as it should be, and of an engine that fails.

namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

constexpr const char* kStat = "StatXML.xml";
constexpr const char* kInterval = "TIME_INTERVAL.json";

/// What a job leaves in a container.
enum class Left
{
    Nothing,
    OtherMember,
    DamagedMember,
    Member
};

/// The file of the container in the job text.
std::string placeOf(const std::string& job, const std::string& container)
{
    std::smatch found;
    std::regex_search(job, found,
                      std::regex("\"name\":\"" + container +
                                 "\",\"uri\":\"file:///"
                                 "([^\"]*)\""));
    return found[1];
}

void flipByte(const std::string& path, std::streamoff offset)
{
    std::fstream file(ExtNameStr(path).GetNative(), std::ios::in | std::ios::out);
    file.seekg(offset);
    const int byte = file.get();
    file.seekp(offset);
    file.put(static_cast<char>(byte ^ 0x55));
}

void leave(Left left, const std::string& path, const char* member, const std::string& text)
{
    if (left == Left::Nothing)
        return;
    ZipWriter(path).AddString(left == Left::OtherMember ? "other" : member, text);
    constexpr std::streamoff kLocalHeader = 30;
    if (left == Left::DamagedMember)
        flipByte(path, kLocalHeader + static_cast<std::streamoff>(std::string(member).size()) + 1);
}

class DescriptiveFault : public JobTest
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(openExecutions(engine), 0);
        JobTest::TearDown();
    }

    /// Has the engine leave a model and an interval.
    void answerWith(Left model, const std::string& stat, Left interval, const std::string& json)
    {
        engine.setScript([=, this](ScriptedJob& job) {
            const auto calls = engine.calls();
            const auto last =
                std::find_if(calls.rbegin(), calls.rend(),
                             [](const EngineCall& call) { return call.name == "prepare"; });
            leave(model, placeOf(last->argument, "StatXML"), kStat, stat);
            leave(interval, placeOf(last->argument, "JSON"), kInterval, json);
            job.listener().onSuccess();
        });
    }

    ScriptedEngine engine;
    const MemorySource source = people();
    SourceRows rows{source, "people"};
    const Names fields = {"town", "size"};
    const Names dates = {"day"};
    const Names none = {};
};

TEST_F(DescriptiveFault, ResultIsThatOfTheLastStep)
{
    const std::string model = "<DataModel></DataModel>";
    const std::tuple<Left, Left, bool, bool, std::string, const char*> cases[] = {
        {Left::Member, Left::Member, true, true, model, "{}"},
        {Left::Nothing, Left::Member, true, true, "before", "{}"},
        {Left::OtherMember, Left::Member, true, true, "before", "{}"},
        {Left::DamagedMember, Left::Member, true, true, "", "{}"},
        {Left::Member, Left::Nothing, true, false, model, "before"},
        {Left::Member, Left::OtherMember, true, false, model, "before"},
        {Left::Member, Left::DamagedMember, true, false, model, ""},
        {Left::OtherMember, Left::Member, false, false, "before", ""},
        {Left::DamagedMember, Left::Member, false, false, "", ""},
    };
    HVDescriptive descriptive(*runner, &rows);
    for (const auto& [stat, json, withDates, result, modelText, intervalText] : cases) {
        SCOPED_TRACE(static_cast<int>(stat) * 10 + static_cast<int>(json));
        answerWith(stat, model, json, "{}");
        std::string interval = "before";
        std::string text = "before";
        EXPECT_EQ(descriptive.UpdateDateModel(&fields, withDates ? &dates : &none, true, interval,
                                              text, 1),
                  result);
        EXPECT_EQ(text, modelText);
        EXPECT_EQ(interval, intervalText);
        CFMetaData metadata;
        EXPECT_EQ(descriptive.BuildMetaData(&fields, metadata, 1, true), stat == Left::Member);
    }
}

TEST_F(DescriptiveFault, CutsTheModelOutOfTheResult)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<S><DataModel>a</DataModel></S>", "<DataModel>a</DataModel></S>"},
        {"<DataModel>a<DatasetSummaries>b</DataModel>", "<DataModel>a</DataModel>"},
        {"<DatasetSummaries><DataModel>a</DataModel><DatasetSummaries>",
         "<DataModel>a</DataModel>"},
        {"<DataModel><DataModel>", "<DataModel><DataModel></DataModel>"},
    };
    HVDescriptive descriptive(*runner, "read()");
    std::string interval;
    std::string model;
    for (const auto& [stat, cut] : cases) {
        answerWith(Left::Member, stat, Left::Member, "");
        EXPECT_TRUE(descriptive.UpdateDateModel(&fields, &dates, true, interval, model, 1));
        EXPECT_EQ(model, cut);
        EXPECT_EQ(descriptive.GetStatXML(), stat);
    }
    answerWith(Left::Member, "<DataModel/>", Left::Member, "");
    CFMetaData metadata;
    EXPECT_THROW(descriptive.UpdateDateModel(&fields, &dates, true, interval, model, 1),
                 std::out_of_range);
    EXPECT_THROW(descriptive.BuildMetaData(&fields, metadata, 1, true), std::out_of_range);
    EXPECT_EQ(descriptive.GetStatXML(), "<DataModel/>");
}

TEST_F(DescriptiveFault, EndsTheJobThatTheEngineFails)
{
    engine.setScript([](ScriptedJob& job) {
        job.message("ID", "told before");
        throw std::runtime_error("scripted");
    });
    CFMetaData model;
    EXPECT_FALSE(HVDescriptive(*runner, &rows).BuildMetaData(&fields, model, 1, false));
    const auto lines = HostJournal::instance().entries(HostJournal::Kind::Error);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].text, "told before");
    const auto calls = engine.callNames();
    EXPECT_THAT(std::vector<std::string>(calls.end() - 6, calls.end()),
                ElementsAre("addInputIterator(people)", "addOutputContainer(PMML)",
                            "addOutputContainer(StatXML)", "execute", "dispose", "delete"));

    for (const char* call :
         {"createExecution", "prepare", "addInputIterator", "addOutputContainer", "dispose"}) {
        SCOPED_TRACE(call);
        ScriptedEngine failing;
        failing.throwAt(call, Fault::Java);
        EXPECT_ANY_THROW(HVDescriptive(*runner, &rows).BuildMetaData(&fields, model, 1, false));
        // At once, and not by the next job: the containers are gone.
        EXPECT_EQ(openExecutions(failing), 0);
        expectNothingLeft();
    }
}

TEST_F(DescriptiveFault, SurvivesEveryFailureOfTheMachine)
{
    answerWith(Left::Member, "<DataModel></DataModel>", Left::Member, "{}");
    std::string interval;
    std::string model;
    bool result = false;
    expectToSurviveFailures([&] {
        HVDescriptive descriptive(*runner, &rows);
        result = descriptive.UpdateDateModel(&fields, &dates, false, interval, model, 1);
    });
    EXPECT_TRUE(result) << "the last run meets no failure";
    EXPECT_EQ(interval, "{}");
}

} // namespace
