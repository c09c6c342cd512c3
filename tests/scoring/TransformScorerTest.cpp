#include "scoring/HVTransformScorer.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <utility>

#include "CFMetaData.h"
#include "IMCVariable.h"
#include "MCMV.h"
#include "MCVarList.h"
#include "MultiByte.h"
#include "RowDataIterator.h"
#include "ValueRecord.h"
#include "scoring/Pmml.h"
#include "support/CountedAllocations.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const double kMissingNumber = MCMV::Missing();

/// One row, whose values are bytes.
class OneRow : public EmbeddedHV::RowDataIterator
{
public:
    template <typename Number>
    void add(const std::string& name, CFField::StorageType storage, Number value)
    {
        std::string bytes(sizeof value, '\0');
        std::memcpy(bytes.data(), &value, sizeof value);
        addBytes(name, storage, bytes);
    }
    void addBytes(const std::string& name, CFField::StorageType storage,
                  std::optional<std::string> bytes)
    {
        _model.AppendField(CFField(name, CFField::Continuous, storage));
        values.push_back(std::move(bytes));
    }

    std::string getName() override { return "row"; }
    std::string getDataModel() override
    {
        std::string xml;
        _model.ExportXMLDoc(xml);
        return xml;
    }
    unsigned int nextRecord() override { return RecordAvailable; }
    unsigned int getRecordValue(unsigned long long field, void*& value,
                                unsigned long long& length) override
    {
        std::optional<std::string>& bytes = values.at(field);
        value = bytes ? bytes->data() : nullptr;
        length = bytes ? bytes->size() : 0;
        return RecordAvailable;
    }
    void dispose(JNIEnv*) override {}

    std::vector<std::optional<std::string>> values;

private:
    CFMetaData _model;
};

struct FakeVariable : IMCVariable
{
    FakeVariable(std::string variableName, int variableStorage, int variableType = kNumber)
        : name(std::move(variableName)), storage(variableStorage), type(variableType)
    {
    }
    int GetValueType() const override { return type; }
    void GetName(std::string& result) const override { result = name; }
    int GetStorage() const override { return storage; }

    std::string name;
    int storage;
    int type;
};

/// What a fake model is told, and tells.
struct FakeModel
{
    std::vector<FakeVariable> inputs;
    std::vector<FakeVariable> outputs{{"One", 2}, {"Two", 2}};
    int type = 16;
    bool failsInputs = false;
    bool failsRows = false;
    std::vector<std::string> given; ///< the inputs of the last row
    int alive = 0;
};

class FakeComputer : public IMCScoreComputer
{
public:
    explicit FakeComputer(FakeModel& model) : _model(model) { ++_model.alive; }
    ~FakeComputer() override { --_model.alive; }

    MCStatus Compute(const ValueRecord& input, ValueRecord& output, int) override
    {
        _model.given.clear();
        for (int i = 0; i < input.Size(); ++i)
            _model.given.push_back(input[i].IsText() ? "'" + input[i].GetText() + "'"
                                   : input[i].GetNumber() == kMissingNumber
                                       ? "-"
                                       : std::to_string(input[i].GetNumber()));
        for (int i = 0; i < output.Size(); ++i)
            output[i] = i + 1;
        return _model.failsRows ? MCStatus::Error("no") : MCStatus();
    }
    MCStatus PrepareOutput(ValueRecord& output) const override
    {
        for (const FakeVariable& variable : _model.outputs)
            output.AddValue(variable.name, Value(kMissingNumber));
        return {};
    }
    MCStatus GetInputs(MCVarList& inputs) const override
    {
        for (const FakeVariable& variable : _model.inputs)
            inputs.Add(&variable);
        return _model.failsInputs ? MCStatus::Error("no") : MCStatus();
    }
    int GetOutputCount() const override { return static_cast<int>(_model.outputs.size()); }
    const IMCVariable* GetOutputAt(int index) const override
    {
        return &_model.outputs[static_cast<std::size_t>(index)];
    }
    int GetModelType() const override { return _model.type; }

private:
    FakeModel& _model;
};

/// Every model is the fake one.
class TransformScorer : public testing::Test
{
protected:
    void SetUp() override
    {
        MCScorerFactory::SetMaker([this](MCSettings&, std::istream&) {
            return std::make_unique<FakeComputer>(model).release();
        });
        row.add("Whole", CFField::Integer, std::int32_t{-7});
        row.addBytes("Text", CFField::String, "ab\xc3\xbc");
        row.add("day", CFField::Date, 15403.0);
        row.add("Moment", CFField::Timestamp, 1.5);
        row.add("Real", CFField::Real, 2.25);
        row.add("Time", CFField::Time, 5400.0);
        row.add("stamp", CFField::Timestamp, 90000.0);
    }
    void TearDown() override
    {
        MCScorerFactory::SetMaker({});
        EXPECT_EQ(model.alive, 0);
    }
    bool prepares(const std::vector<std::string>& names = {}, bool areUtf8 = true)
    {
        HVTransformScorer scorer;
        return scorer.PrepareScoring(&row, "any", names, areUtf8);
    }

    FakeModel model;
    OneRow row;
};

TEST_F(TransformScorer, GivesTheModelWhatItsStorageSays)
{
    model.inputs = {{"REAL", 2}, {"whole", 1}, {"TEXT", 3, 3}, {"Day", 4}, {"moment", 6}};
    HVTransformScorer scorer;
    ASSERT_TRUE(scorer.PrepareScoring(&row, "any", {}, true));
    EXPECT_THAT(scorer.GetInputModelVarNames(),
                ElementsAre("REAL", "whole", "TEXT", "Day", "moment"));
    EXPECT_THAT(scorer.GetTargetValues(), ElementsAre(kMissingNumber, kMissingNumber));
    ASSERT_TRUE(scorer.ScoreRecord());
    EXPECT_THAT(model.given, ElementsAre("2.250000", "-7.000000", "'ab\xc3\xbc'",
                                         "13550198400.000000", "12219379201.500000"));
    EXPECT_THAT(scorer.GetTargetValues(), ElementsAre(1, 2));

    // What is missing in the row is missing to the model, by whichever way it is told.
    std::string missing(sizeof kMissingNumber, '\0');
    std::memcpy(missing.data(), &kMissingNumber, sizeof kMissingNumber);
    row.values = {std::nullopt, std::nullopt, missing, missing, std::nullopt};
    ASSERT_TRUE(scorer.ScoreRecord());
    EXPECT_THAT(model.given, ElementsAre("-", "-", "''", "-", "-"));

    model.failsRows = true;
    EXPECT_FALSE(scorer.ScoreRecord());
    EXPECT_THAT(scorer.GetTargetValues(), ElementsAre(kMissingNumber, kMissingNumber));
    model.failsRows = false;
    EXPECT_TRUE(scorer.ScoreRecord());
    EXPECT_THAT(scorer.GetTargetValues(), ElementsAre(1, 2));
}

TEST_F(TransformScorer, GivesPointsOfTimeByWhatTheColumnCounts)
{
    model.inputs = {{"stamp", 4}, {"stamp", 6}, {"day", 6}, {"time", 5}, {"time", 2}, {"real", 4}};
    HVTransformScorer scorer;
    ASSERT_TRUE(scorer.PrepareScoring(&row, "any", {}, true));
    ASSERT_TRUE(scorer.ScoreRecord());
    EXPECT_THAT(model.given,
                ElementsAre("12219465600.000000", "12219469200.000000", "13550198400.000000",
                            "5400.000000", "5400.000000", "12219573600.000000"));
}

TEST_F(TransformScorer, GivesTheResultsThatAreAskedFor)
{
    model.outputs = {{"One", 2}, {"gr\xc3\xbcn", 2}, {"Three", 4}, {"ONE", 2}};
    HVTransformScorer scorer;
    ASSERT_TRUE(scorer.PrepareScoring(&row, "any", {"THREE", "Gr\xc3\x9cn", "three", "One"}, true));
    EXPECT_THAT(scorer.GetOutputModelVarNames(), ElementsAre("One", "gr\xc3\xbcn", "Three", "ONE"));
    ASSERT_TRUE(scorer.ScoreRecord());
    EXPECT_THAT(scorer.GetTargetValues(), ElementsAre(3, 2, 3, 1));

    const std::string codePage = VEXAMBDefaultCodePage();
    ASSERT_TRUE(SetDefaultCodePage("ISO-8859-1"));
    EXPECT_TRUE(prepares({"GR\xdcN"}, false));
    EXPECT_FALSE(prepares({"GR\xdcN"}, true));
    SetDefaultCodePage(codePage);
}

TEST_F(TransformScorer, RefusesWhatDoesNotFit)
{
    HVTransformScorer unprepared;
    EXPECT_FALSE(unprepared.PrepareScoring(nullptr, "any", {}, true));
    EXPECT_FALSE(unprepared.PrepareScoring(&row, "", {}, true));
    EXPECT_FALSE(unprepared.ScoreRecord());
    EXPECT_THAT(unprepared.GetTargetValues(), IsEmpty());

    const std::pair<const char*, FakeVariable> inputs[] = {
        {"not in the rows", {"none", 2}},
        {"a text without the storage of one", {"Text", 2, 3}},
        {"a number with the storage of a text", {"Real", 3}},
        {"a text that is a number in the rows", {"Real", 3, 3}},
        {"a number that is a text in the rows", {"Text", 2}},
        {"a number that is a date in the rows", {"day", 2}},
        {"a time that is a timestamp in the rows", {"moment", 5}},
        {"a date that is a time in the rows", {"time", 4}},
        {"a timestamp that is a time in the rows", {"time", 6}},
    };
    for (const auto& [what, input] : inputs) {
        model.inputs = {input};
        EXPECT_FALSE(prepares()) << what;
    }
    model.inputs.clear();
    EXPECT_TRUE(prepares());
    EXPECT_FALSE(prepares({"three"}));
    model.outputs.emplace_back("Three", 3, 3);
    EXPECT_FALSE(prepares({"one"})) << "an output that is a text, asked for or not";
    model.outputs.clear();
    model.failsInputs = true;
    EXPECT_FALSE(prepares());
    model.failsInputs = false;
    model.type = 11;
    EXPECT_FALSE(prepares());
}

TEST_F(TransformScorer, CopiesShareTheModel)
{
    auto source = std::make_unique<HVTransformScorer>();
    HVTransformScorer copy(*source);
    ASSERT_TRUE(source->PrepareScoring(&row, "any", {"two"}, true));
    source.reset();
    EXPECT_EQ(model.alive, 1);
    ASSERT_TRUE(copy.ScoreRecord());
    EXPECT_THAT(copy.GetTargetValues(), ElementsAre(2));
    copy = HVTransformScorer();
    EXPECT_EQ(model.alive, 0);
}

/// A timestamp is rounded to the row's seconds and then to the host's. A model's constant is not.
TEST(TransformScorerOfMoments, MillisecondsEqualTheModelsConstants)
{
    const std::string second = "2024-02-29T12:34:56.";
    constexpr double kSecond = 1709210096;
    constexpr double kOfDay = 45296;
    const auto equal = [](const std::string& value, const std::string& wanted,
                          const std::string& type) {
        return call("equal", value + constant(wanted, "dataType='" + type + "'"));
    };
    for (int i = 1; i < 1000; ++i) {
        const std::string digits = std::to_string(1000 + i).substr(1);
        const std::string text = second + digits;
        const std::string model =
            pmml(derived(equal(field("moment"), text, "dateTime")) +
                 derived(call("isIn", field("moment") + constant(text + "00")), "double", "a") +
                 derived(call("lessThan", field("moment") + constant(text)), "double", "b") +
                 derived(field("moment"), "dateTimeSecondsSince[1970]", "t") +
                 derived(equal(field("t"), "1709210096." + digits, "dateTimeSecondsSince[1970]"),
                         "double", "c") +
                 derived(call("dateSecondsSinceMidnight", field("moment")), "double", "d") +
                 derived(call("dateSecondsSinceYear", field("moment") + constant("1970")), "double",
                         "e"));
        OneRow row;
        row.add("moment", CFField::Timestamp, (kSecond * 1000 + i) / 1000);
        HVTransformScorer scorer;
        ASSERT_TRUE(scorer.PrepareScoring(&row, model, {"r", "a", "b", "c", "t", "d", "e"}, true));
        ASSERT_TRUE(scorer.ScoreRecord());
        EXPECT_THAT(scorer.GetTargetValues(),
                    ElementsAre(1, 1, 0, 1, (kSecond * 1000 + i) / 1000, (kOfDay * 1000 + i) / 1000,
                                (kSecond * 1000 + i) / 1000))
            << text;
    }
}

/// A real model, with a function, a table, an aggregate and a row that cannot be scored.
TEST(TransformScorerOfNumbers, AllocatesNothing)
{
    const std::string map =
        "<MapValues outputColumn='o'><FieldColumnPair field='x' column='i'/>"
        "<InlineTable><row><i>1</i><o>10</o></row><row><i>2</i><o>20</o></row></InlineTable>"
        "</MapValues>";
    const std::string model = pmml(
        "<DefineFunction name='half'><ParameterField name='p' dataType='double'/>" +
        call("/", field("p") + constant("2")) + "</DefineFunction>" + derived(map, "double", "m") +
        derived(call("median", field("m") + field("x") + call("half", field("x")))) +
        derived(call("if", call("greaterThan", field("x") + constant("1")) + field("r")), "integer",
                "i"));
    OneRow row;
    row.add("x", CFField::Real, 2.0);
    HVTransformScorer scorer;
    ASSERT_TRUE(scorer.PrepareScoring(&row, model, {"i", "r"}, true));
    ASSERT_TRUE(scorer.ScoreRecord());
    const long long before = allocations;
    for (int i = 0; i < 1000; ++i)
        ASSERT_TRUE(scorer.ScoreRecord());
    EXPECT_EQ(allocations, before);
    EXPECT_THAT(scorer.GetTargetValues(), ElementsAre(2, 2));
    EXPECT_FALSE(HVTransformScorer::IsValidDouble(kMissingNumber));
    EXPECT_TRUE(HVTransformScorer::IsValidDouble(0));
}

} // namespace
