#include <vector>

#include "JNIException.h"
#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlFunction.h"
#include "bridge/JNIJSONObject.h"
#include "hvl/Composing.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLFunWrapper.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"

// How a chain of builders becomes a chain of functions.

namespace {

/// A step that tells how often it was generated, and gives what it is told to give.
class Probe : public HVLFunction
{
public:
    using HVLFunction::HVLFunction;

    bool GenerateHVL() override
    {
        ++calls;
        return result;
    }

    std::vector<std::string> completedTags(const std::vector<std::string>& tags)
    {
        Probe input(nullptr);
        for (const std::string& tag : tags) {
            AddPredFunction(nullptr);
            AddPredFunction(&input, tag);
            AddPredFunction(nullptr, tag);
        }
        CompleteTags("str");
        EXPECT_EQ(GetPredecessors().size(), tags.size()) << "null inputs are ignored";
        return GetTags();
    }

    bool result = true;
    int calls = 0;
};

using Generation = Composing;

} // namespace

TEST_F(Generation, CreatesAStepOnceAndOnlyInAProgram)
{
    HVLRead read(nullptr);
    read.ReadHVDatasource("a");
    EXPECT_FALSE(read.GenerateHVL());
    EXPECT_FALSE(read.IsCreatedHvl());

    read.SetJNIHvlProgram(&program);
    EXPECT_EQ(read.GetHVFunction(), nullptr);
    ASSERT_TRUE(read.GenerateHVL());
    JNIHvlFunction* function = read.GetHVFunction();
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function->getName(), "read");

    read.ReadHVDatasource("b");
    const HVLRead copy(read);
    EXPECT_TRUE(read.GenerateHVL());
    EXPECT_EQ(read.GetHVFunction(), function);
    EXPECT_TRUE(copy.IsCreatedHvl());
    EXPECT_EQ(text(), "val f1Conf = {\"dataSource\":\"a\"}\nread(f1Conf)");

    read.SetJNIHvlProgram(nullptr);
    EXPECT_FALSE(read.GenerateHVL());
}

TEST_F(Generation, RunsBackwardsAndMeetsASharedInputOnce)
{
    HVLRead read(&program);
    read.ReadHVDatasource("a");
    Probe unused(&program);
    HVLFilterFields fields(&program);
    fields.KeepFieldNames("x");
    fields.AddPredFunction(&read);
    fields.AddPredFunction(&unused);
    HVLAggregate aggregate(&program);
    aggregate.AddPredFunction(&read, "tag");
    ASSERT_TRUE(fields.GenerateHVL());
    ASSERT_TRUE(aggregate.GenerateHVL());
    EXPECT_EQ(unused.calls, 0);
    EXPECT_EQ(text(), "val f1Conf = {\"dataSource\":\"a\"}\nval f1 = read(f1Conf)\n"
                      "val f2Conf = {\"fields\":[\"x\"]}\nf1 -> filterFields(f2Conf)\n"
                      "val f3Conf = {\"output\":[]}\nf1 -> aggregate(f3Conf)");
}

TEST_F(Generation, OnlyASinkStopsAtAFailedInput)
{
    Probe input(&program);
    input.result = false;
    HVLWrite write(&program);
    write.WriteCSV("a.csv");
    write.AddPredFunction(&input);
    EXPECT_FALSE(write.GenerateHVL());
    EXPECT_EQ(text(), "");

    HVLFilterFields fields(&program);
    fields.AddPredFunction(&input);
    EXPECT_TRUE(fields.GenerateHVL());
    HVLExpressionFun filter(&program);
    filter.SetFilterRecords(program.createHvlExpressionLiteral(true));
    filter.AddPredFunction(&input);
    EXPECT_TRUE(filter.GenerateHVL());
    EXPECT_EQ(input.calls, 3);

    // A step that failed may try again.
    input.result = true;
    EXPECT_TRUE(write.GenerateHVL());
}

TEST_F(Generation, WrapperHandsOnTheFunctionThatItWasGiven)
{
    JNIJSONObject configuration;
    configuration.put("dataSource", "hand");
    HVLFunWrapper wrapper(&program);
    EXPECT_EQ(wrapper.GetHVFunction(), nullptr);
    wrapper.SetHVFunction(program.createHvlFunction("read", &configuration));
    HVLFilterFields fields(&program);
    fields.AddPredFunction(&wrapper);
    EXPECT_TRUE(fields.GenerateHVL());
    EXPECT_FALSE(wrapper.IsCreatedHvl());
    EXPECT_EQ(text(), "val f1Conf = {\"dataSource\":\"hand\"}\nval f2Conf = {\"fields\":[]}\n"
                      "read(f1Conf) -> filterFields(f2Conf)");
    EXPECT_TRUE(HVLFunWrapper(nullptr).GenerateHVL());
}

TEST_F(Generation, LetsJavaExceptionsPassAndStaysAsItWas)
{
    HVLRead elsewhere(nullptr);
    JNIHvlProgram other;
    elsewhere.SetJNIHvlProgram(&other);
    elsewhere.ReadHVDatasource("a");
    HVLFilterFields fields(&program);
    fields.AddPredFunction(&elsewhere);
    EXPECT_THROW(fields.GenerateHVL(), JNIException);
    EXPECT_FALSE(fields.IsCreatedHvl());
    EXPECT_EQ(fields.GetHVFunction(), nullptr);
    EXPECT_EQ(text(), "");
}

TEST(CompleteTags, GivesEveryInputATagOfItsOwn)
{
    using Tags = std::vector<std::string>;
    const std::pair<Tags, Tags> cases[] = {
        {{}, {}},
        {{"", ""}, {"str1", "str2"}},
        {{"", "a", "a"}, {"str1", "a", "a2"}},
        {{"", "str1"}, {"str1", "str12"}},
        {{"a", "A", "a", "a"}, {"a", "A", "a1", "a2"}},
        {{"a", "a1", "a"}, {"a", "a1", "a2"}},
        {{"str1", ""}, {"str1", "str2"}},
        {{"a", "a", "a1"}, {"a", "a1", "a12"}},
    };
    for (const auto& [tags, completed] : cases)
        EXPECT_EQ(Probe(nullptr).completedTags(tags), completed);
}
