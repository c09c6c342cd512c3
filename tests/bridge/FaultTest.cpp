
#include "JNIException.h"
#include "bridge/JNIHvlFieldDerive.h"
#include "bridge/JNIHvlFragment.h"
#include "bridge/JNIHvlFunctionImpl.h"
#include "bridge/JNIHvlFunctionParameterFactory.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIHvlTypeList.h"
#include "bridge/JNIHvlTypeSimple.h"
#include "bridge/JNIHvlTypeTuple.h"
#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONDouble.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JNIObjectManager.h"
#include "bridge/JNITaggedFunctionInput.h"
#include "support/JvmFixture.h"

namespace {
using Fault = RecordingJni::Fault;

void readAndWriteJson()
{
    JNIJSONArray list(2);
    list.add("Größe");
    list.set(0, 2.5);
    JNIJSONObject object(R"({"a": {"b": 1.5}, "s": "text", "n": 3})");
    object.put("list", &list);
    object.put("long", 5LL);
    object.put("bool", true);
    object.keySet();
    object.getChildAsString(object.getTop(), "s");
    object.getChildAsString(object.getTop(), "n");
    jobject const value = object.getByPath(object.getTop(), "a.b");
    JNIEnv* const env = object.getEnv();
    try {
        JNIJSONDouble().doubleValue(value);
    } catch (const JNIException&) {
        env->DeleteLocalRef(value);
        throw;
    }
    env->DeleteLocalRef(value);
    object.serialize();
    JNIJSONArray("[1, 2]").prettyPrint();
}

JNIHvlExpression* composeExpression(JNIHvlProgram& program)
{
    JNIHvlTypeSimple real(JNIHvlExpression::Real);
    JNIHvlTypeList list(real);
    std::vector<JNIHvlType*> types = {&real, &list};
    JNIHvlTypeTuple tuple(types);
    JNIHvlExpression::LambdaSignature signature("p", &tuple);
    std::vector<JNIHvlExpression::LambdaSignature*> signatures = {&signature};
    JNIHvlExpression* field = program.createHvlExpressionFieldReference("f");
    HvlExpressionConditional::Clause clause(field, program.createHvlExpressionLiteral(1.5));
    std::vector<HvlExpressionConditional::Clause*> clauses = {&clause};
    JNIHvlExpression* chosen = program.createHvlExpressionConditional(&clauses, field);
    std::vector<JNIHvlExpression*> items = {field, nullptr};
    program.createHvlExpressionList(&items);
    program.createHvlExpressionLambdaFunction(&signatures, chosen);
    std::vector<JNIHvlExpression*> operands = {chosen, program.createHvlExpressionLiteral("x")};
    return program.createHvlExpression("%s == %s", &operands);
}

void composeProgram()
{
    JNIHvlProgram program;
    JNIJSONObject configuration;
    configuration.put("key", "value");
    JNIHvlFunction* read = program.createHvlFunction("read", &configuration);
    JNIHvlExpression* expression = composeExpression(program);
    JNIHvlProgram::TypeMap types = {{"f", JNIHvlExpression::Real}};
    JNIHvlFunction* filter = program.createHvlFunctionFilterRecords(expression, read, &types);
    std::map<std::string, JNIHvlFunction*> inputs = {{"l", filter}, {"r", read}};
    JNIHvlFunction* join = program.createHvlFunction("join", &configuration, &inputs);
    JNIHvlFunctionParameterFactory factory;
    std::vector<JNIHvlFunctionParameter*> parameters = {factory.createInput(join),
                                                        factory.createRaw("1", true)};
    program.createHvlFunctionGeneral("general", &parameters);
    for (JNITaggedFunctionInput* input : program.getPredecessors(join))
        input->getFunction().getName();
    std::set<JNIHvlFragment*> fragments = program.getFragments();
    for (JNIHvlFragment* fragment : program.sortFragmentsIntoExecutionOrder(&fragments))
        fragment->getPredecessorFragmentIds();
    const std::vector<std::string> names = {"n"};
    const std::vector<bool> flags = {true};
    program.formatContainerListJSON(&names, &names, &flags);
    std::string text;
    program.getHvlText(text);
}

class FaultSweep : public JvmTest
{
protected:
    /// Whether the call with this number was reached; then nothing may be left of the run.
    bool survives(void (*work)(), Fault fault, int number)
    {
        jni().failAt(number, fault);
        try {
            work();
        } catch (const JNIException&) {
            ++thrown;
        }
        const bool reached = jni().endFault();
        SCOPED_TRACE(number);
        EXPECT_FALSE(env()->ExceptionCheck());
        JNIObjectManager::getManager()->cleanJRef();
        EXPECT_EQ(jni().liveGlobals(), 0);
        EXPECT_EQ(jni().liveLocals(), 0);
        EXPECT_EQ(jni().lentTexts(), 0);
        EXPECT_EQ(jni().violations(), std::vector<std::string>());
        return reached;
    }

    int thrown = 0;
};
} // namespace

TEST_F(FaultSweep, EveryCallMayFail)
{
    for (const auto work : {readAndWriteJson, composeProgram})
        for (const Fault fault : {Fault::OutOfMemory, Fault::NothingReturned, Fault::Exception}) {
            SCOPED_TRACE(static_cast<int>(fault));
            thrown = 0;
            int number = 1;
            while (survives(work, fault, number) && !HasFailure())
                ++number;
            EXPECT_GT(number, 50) << "the work makes many calls";
            EXPECT_GT(thrown, 10) << "most failures are told";
        }
}
