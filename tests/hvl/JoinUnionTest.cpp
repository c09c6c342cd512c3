#include "hvl/BuilderText.h"
#include "hvl/HVLJoin.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLUnion.h"

// The steps with several inputs: what they write, and how they call their inputs.

namespace {

class SeveralInputs : public BuilderText
{
protected:
    /// Configures a builder over inputs with these tags, and compares its step.
    template <class Builder>
    void checkStep(const char* function, const std::vector<std::string>& tags,
                   const Case<Builder>& wanted, const std::string& inputs)
    {
        SCOPED_TRACE(wanted.what);
        JNIHvlProgram own;
        std::vector<HVLRead> reads(tags.size(), HVLRead(&own));
        Builder builder(&own);
        for (std::size_t i = 0; i < tags.size(); ++i) {
            reads[i].ReadHVDatasource("a");
            builder.AddPredFunction(&reads[i], tags[i]);
        }
        wanted.configure(builder);
        ASSERT_TRUE(builder.GenerateHVL());
        std::string text;
        own.getHvlText(text);
        const std::string number = std::to_string(tags.size() + 1);
        std::string expected;
        for (std::size_t i = 1; i <= tags.size(); ++i)
            expected += "val f" + std::to_string(i) + "Conf = {\"dataSource\":\"a\"}\nval f" +
                        std::to_string(i) + " = read(f" + std::to_string(i) + "Conf)\n";
        EXPECT_EQ(text, expected + "val f" + number + "Conf = " + wanted.configuration + "\n" +
                            function + "(f" + number + "Conf" + inputs + ")");
        expectToParse(text);
    }
};

} // namespace

TEST_F(SeveralInputs, JoinSpeaksOfItsInputsByTag)
{
    using Join = Case<HVLJoin>;
    const auto checkJoin = [this](const std::vector<std::string>& tags, const Join& wanted,
                                  const std::string& inputs) {
        checkStep<HVLJoin>("join", tags, wanted, inputs);
    };
    checkJoin({"", ""},
              {"inputs without tags get some; pairs with a position that has no input go",
               [](HVLJoin& join) {
                   join.AddMatchField(0, "a", 2, "c");
                   join.AddMatchField(0, "a", 1, "b");
                   join.AddMatchField(7, "a", 1, "b");
                   join.AddMatchField(1, "b 2", 0, "a\"2");
               },
               R"({"matchFields":[{"str1":"a","str2":"b"},{"str2":"b 2","str1":"a\"2"}],)"
               R"("outputFields":{},"joinType":"Inner"})"},
              ", str1: f1, str2: f2");
    checkJoin({"shape", "dataset"},
              {"a caller's tags stay; the last list of a source holds",
               [](HVLJoin& join) {
                   join.SetJoinType(HVLJoin::Anti);
                   join.AddMatchField(0, "a", 1, "b");
                   join.SetOutputFieldNames(1, {"x", "y"});
                   join.SetOutputFieldNames(0, {"a"});
                   join.SetOutputFieldNames(1, {});
                   join.SetOutputFieldNames(2, {"z"});
                   join.AddNonMatchingSource(1);
                   join.AddNonMatchingSource(2);
                   join.AddNonMatchingSource(0);
               },
               R"({"matchFields":[{"shape":"a","dataset":"b"}],)"
               R"("outputFields":{"shape":["a"],"dataset":[]},"joinType":"Anti",)"
               R"("nonMatchingSources":["dataset","shape"]})"},
              ", dataset: f2, shape: f1");
    checkJoin({"a", "a"},
              {"a Cartesian join has no pairs, non-matching sources without an input none",
               [](HVLJoin& join) {
                   join.SetJoinType(HVLJoin::Cartesian);
                   join.AddMatchField(0, "a", 1, "b");
                   join.AddNonMatchingSource(2);
               },
               R"({"matchFields":[],"outputFields":{},"joinType":"Cartesian",)"
               R"("nonMatchingSources":[]})"},
              ", a: f1, a1: f2");
    for (const auto& [type, word] : {std::pair{1, "Outer"}, {4, "Inner"}, {-1, "Inner"}})
        check<HVLJoin>(
            "join", JoinFunction,
            {{word,
              [number = type](HVLJoin& join) {
                  join.SetJoinType(static_cast<HVLJoin::JoinType>(number));
                  join.SetOutputFieldNames(0, {"a"});
              },
              (std::string(R"({"matchFields":[],"outputFields":{},"joinType":")") + word + "\"}")
                  .c_str()}});
}

TEST_F(SeveralInputs, UnionSaysHowFieldsMeet)
{
    check<HVLUnion>(
        "union", UnionFunction,
        {{"without inputs", [](HVLUnion&) {}, R"({"matchByPosition":false,"matchCase":false})"}});
    checkStep<HVLUnion>("union", {"", "b"},
                        {"by position and letter case",
                         [](HVLUnion& all) {
                             all.SetMatchByPosition(true);
                             all.SetMatchCase(true);
                         },
                         R"({"matchByPosition":true,"matchCase":true})"},
                        ", b: f2, str1: f1");
    checkStep<HVLUnion>(
        "union", std::vector<std::string>(12),
        {"inputs without tags keep their order", [](HVLUnion&) {},
         R"({"matchByPosition":false,"matchCase":false})"},
        ", str1: f1, str2: f2, str3: f3, str4: f4, str5: f5, str6: f6, str7: f7, str8: f8, "
        "str9: f9, str10: f10, str11: f11, str12: f12");
}
