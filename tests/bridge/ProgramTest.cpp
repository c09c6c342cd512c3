
#include <map>
#include <set>
#include <stdexcept>

#include "JNIException.h"
#include "bridge/JNIHvlContainer.h"
#include "bridge/JNIHvlFieldDerive.h"
#include "bridge/JNIHvlFragment.h"
#include "bridge/JNIHvlFunctionImpl.h"
#include "bridge/JNIHvlFunctionParameter.h"
#include "bridge/JNIHvlFunctionParameterFactory.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JNITaggedFunctionInput.h"
#include "support/JvmFixture.h"

namespace {
class ProgramTest : public JvmTest
{
protected:
    static std::string textOf(JNIHvlProgram& program)
    {
        std::string text;
        program.getHvlText(text);
        return text;
    }
};

constexpr JNIJSONObject* NoJson = nullptr;

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}
} // namespace

TEST_F(ProgramTest, FragmentsComeInOrderOfExecutionWithNewlinesBetween)
{
    JNIHvlProgram program;
    JNIJSONObject configuration(R"({"k":1})");
    // Two readers, whatever the order of wrappers in a set; then what joins them.
    std::map<std::string, JNIHvlFunction*> inputs = {
        {"l", program.createHvlFunction("read", &configuration)},
        {"none", nullptr},
        {"r", program.createHvlFunction("read", &configuration)}};
    JNIHvlFunction* join = program.createHvlFunction("join", &configuration, &inputs);
    program.createHvlFunction("write", &configuration, join);

    std::set<JNIHvlFragment*> fragments = program.getFragments();
    const std::vector<JNIHvlFragment*> sorted = program.sortFragmentsIntoExecutionOrder(&fragments);
    ASSERT_EQ(sorted.size(), 3U);
    EXPECT_TRUE(sorted[2]->containsFunction(join));
    EXPECT_FALSE(sorted[0]->containsFunction(join));
    EXPECT_EQ(sorted[2]->getPredecessorFragmentIds(),
              (std::set<std::string>{sorted[0]->getId(), sorted[1]->getId()}));

    const std::string text = textOf(program);
    EXPECT_EQ(text, sorted[0]->toHVLText() + "\n" + sorted[1]->toHVLText() + "\n" +
                        sorted[2]->toHVLText());
    EXPECT_TRUE(contains(text, "l: ") && contains(text, "r: ") && !contains(text, "none")) << text;
    EXPECT_NE(text.back(), '\n');
    EXPECT_TRUE(program.sortFragmentsIntoExecutionOrder(nullptr).empty());
}

TEST_F(ProgramTest, AFragmentWithoutTextAddsNoNewline)
{
    std::string text = "left from before";
    JNIHvlProgram().getHvlText(text);
    EXPECT_EQ(text, "");
    EXPECT_GE(text.capacity(), 1024U);
    JNIHvlProgram program{std::string()};
    program.createHvlFunction("read", nullptr);
    EXPECT_EQ(textOf(program), "read(_)");
    JNIHvlProgram given(std::string("val a = 1"));
    JNIHvlProgram* copy = given.clone();
    copy->createHvlFunction("read", nullptr);
    EXPECT_EQ(textOf(given), "val a = 1");
    EXPECT_EQ(textOf(*copy), "val a = 1\nread(_)");
}

TEST_F(ProgramTest, PredecessorsAreFetchedOnce)
{
    JNIHvlProgram program;
    JNIJSONObject json(R"({"k":1})");
    JNIHvlFunction* read = program.createHvlFunction("read", &json);
    EXPECT_EQ(read->getName(), "read");
    std::map<std::string, JNIHvlFunction*> tagged = {{"tag", read}};
    std::vector<JNITaggedFunctionInput*> inputs =
        program.getPredecessors(program.createHvlFunction("union", nullptr, &tagged));
    ASSERT_EQ(inputs.size(), 1U);
    EXPECT_EQ(inputs[0]->getTag(), "tag");
    EXPECT_EQ(inputs[0]->getFunction().getId(), read->getId());
    const int calls = jni().count("CallObjectMethodA");
    EXPECT_EQ(inputs[0]->getTag(), "tag");
    EXPECT_EQ(&inputs[0]->getFunction(), &inputs[0]->getFunction());
    EXPECT_EQ(jni().count("CallObjectMethodA"), calls);

    JNIHvlFunctionImpl& inner = inputs[0]->getFunction();
    EXPECT_EQ(inner.generateConfiguration(), "val f1Conf = {\"k\":1}");
    EXPECT_EQ(inner.generateInvocation(nullptr), "read(f1Conf)");

    std::vector<JNITaggedFunctionInput*> piped =
        program.getPredecessors(program.createHvlFunction("write", NoJson, read));
    ASSERT_EQ(piped.size(), 1U);
    EXPECT_EQ(piped[0]->getTag(), "");
    const int before = jni().count("CallObjectMethodA");
    EXPECT_EQ(piped[0]->getTag(), "");
    EXPECT_EQ(jni().count("CallObjectMethodA"), before + 1) << "an empty tag is asked for again";
}

TEST_F(ProgramTest, EveryKindOfFunctionReachesTheText)
{
    JNIHvlProgram program;
    JNIJSONObject json(R"({"k":1})");
    JNIHvlContainer* in = program.createContainer("in", "file:///in", false);
    JNIHvlContainer* out = program.createContainer("out", "file:///out", true);
    JNIHvlExpression* truth = program.createHvlExpressionLiteral(true);
    JNIHvlFieldDerive* derive = program.createHvlFieldDerive("F", truth);
    JNIHvlProgram::TypeMap types = {{"F", JNIHvlExpression::Real}};
    std::vector<JNIHvlContainer*> inputs = {in};
    std::vector<JNIHvlContainer*> outputs = {out, nullptr};
    std::vector<JNIJSONObject*> places = {nullptr, &json};
    std::vector<std::string> raws = {"raw1"};
    const auto none = static_cast<JNIHvlFunction*>(nullptr);

    JNIHvlFunction* last = program.createHvlFunction("positional", &places, none);
    last = program.createHvlFunction("ns:component", &json, &inputs, &outputs, last);
    last = program.createHvlFunction("byExpression", nullptr, truth, last);
    last = program.createHvlFunction("byDerive", nullptr, derive, last);
    last = program.createHvlFunction("byTypedDerive", nullptr, derive, last, &types);
    last = program.createHvlFunctionDeriveFields(derive, last);
    last = program.createHvlFunctionDeriveFields(derive, last, &types);
    last = program.createHvlFunctionFilterRecords(truth, last);
    last = program.createHvlFunctionFilterRecords(truth, last, &types);
    last = program.createHvlFunctionGeneral("general", &json, &raws, last);
    JNIHvlFunction* operand = program.createHvlFunction("operand", nullptr);
    program.createHvlMetaFunction("meta", &json, operand, last);

    const std::string text = textOf(program);
    for (const char* part :
         {"positional(_, ", "ns:component(", "byExpression(_, ", "byDerive(_, ",
          "byTypedDerive(_, ", "deriveField(_, ", "filterRecords(_, ", "general(", "raw1", "meta(",
          "operand(_)", "x: {F: Real}", "file:///in", "\"export\":true"})
        EXPECT_TRUE(contains(text, part)) << part << " in\n" << text;
}

TEST_F(ProgramTest, ParametersOfAGeneralFunction)
{
    JNIHvlProgram program;
    JNIHvlFunctionParameterFactory factory;
    JNIJSONObject json(R"({"k":1})");
    std::vector<JNIHvlContainer*> containers = {program.createContainer("c", "file:///c", false)};
    JNIHvlFunction* read = program.createHvlFunction("read", nullptr);
    std::map<std::string, JNIHvlFunction*> inputs = {{"side", read}};
    std::vector<JNIHvlFunctionParameter*> parameters = {
        factory.createInput(program.createHvlFunction("read", nullptr)),
        factory.createJson(&json, false),
        factory.createContainers(&containers, false),
        factory.createExpression(program.createHvlExpressionLiteral(5), true),
        factory.createRaw("raw", false),
        factory.createInputs(&inputs, true)};
    program.createHvlFunctionGeneral("general", &parameters);
    const std::string text = textOf(program);
    EXPECT_TRUE(contains(text, "general({\"k\":1}, [")) << text;
    EXPECT_TRUE(contains(text, ", f3Value, raw, side: ")) << text;
}

TEST_F(ProgramTest, DependenciesOrderStatementsAndWhatJavaRefusesThrows)
{
    JNIHvlProgram program;
    JNIHvlFunction* first = program.createHvlFunction("first", nullptr);
    JNIHvlFunction* second = program.createHvlFunction("second", nullptr);
    program.addDependency(second, first);
    EXPECT_EQ(textOf(program), "second(_)\nfirst(_)");
    program.addDependency(first, second);
    EXPECT_THROW(textOf(program), JNIException) << "a cycle";
    EXPECT_THROW(program.createHvlFunction("", nullptr), JNIException);
    EXPECT_THROW(JNIHvlProgram().createHvlFunction("write", NoJson, first), JNIException);
    EXPECT_THROW(JNIHvlProgram().getPredecessors(first), JNIException);
}

TEST_F(ProgramTest, ContainerListsAsJson)
{
    JNIHvlProgram program;
    const std::vector<std::string> names = {"a", "b"};
    const std::vector<std::string> uris = {"file:///a", "file:///b"};
    const std::vector<bool> outputs = {false, true};
    EXPECT_EQ(program.formatContainerListJSON(&names, &uris, &outputs),
              R"([{"name":"a","uri":"file:///a"},{"export":true,"name":"b","uri":"file:///b"}])");
    EXPECT_EQ(program.formatContainerListJSON(&names, nullptr, &outputs), "[]");
    const std::vector<std::string> shortUris = {"file:///a"};
    const std::vector<bool> shortOutputs = {true};
    EXPECT_THROW(program.formatContainerListJSON(&names, &shortUris, &outputs), std::out_of_range);
    EXPECT_THROW(program.formatContainerListJSON(&names, &uris, &shortOutputs), std::out_of_range);
}
