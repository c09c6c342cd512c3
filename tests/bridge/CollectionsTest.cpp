
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "JNIException.h"
#include "bridge/JNIHvlContainer.h"
#include "bridge/JNIHvlFunction.h"
#include "bridge/JNIHvlFunctionParameterFactory.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "support/JvmFixture.h"

namespace {
/// What a call hands to Java can be told by what it makes: no collection for a Java null, one with
/// so many elements added otherwise. The collections come first, then the elements in all.
using Handed = std::pair<int, int>;

constexpr Handed JavaNull{0, 0};
constexpr Handed Nothing{1, 0}; ///< an empty collection
constexpr Handed One{1, 1};
constexpr Handed OneAndNull{1, 2};
constexpr Handed OneInEach{2, 2};

enum class Input
{
    NullPointer,
    Empty,
    Full
};

/// Elements for the calls, made before they are counted: one and a null in each collection.
struct Parts
{
    JNIHvlProgram program;
    JNIHvlFunctionParameterFactory factory;
    JNIJSONObject json;
    JNIHvlExpression* expression = program.createHvlExpressionLiteral(1);
    JNIHvlFunction* function = program.createHvlFunction("read", &json);
    HvlExpressionConditional::Clause clause{expression, expression};
    JNIHvlExpression::LambdaSignature signature{"p", nullptr};

    std::vector<JNIJSONObject*> jsons{&json, nullptr};
    std::vector<JNIHvlExpression*> expressions{expression, nullptr};
    std::vector<JNIHvlContainer*> containers{program.createContainer("c", "u", false), nullptr};
    std::vector<HvlExpressionConditional::Clause*> clauses{&clause, nullptr};
    std::vector<JNIHvlExpression::LambdaSignature*> signatures{&signature, nullptr};
    std::map<std::string, JNIHvlFunction*> inputs{{"l", function}, {"r", nullptr}};
    JNIHvlProgram::TypeMap types{{"f", JNIHvlExpression::Real}};
};

template <class Collection>
Collection* choose(Input input, Collection& full)
{
    static Collection empty;
    return input == Input::NullPointer ? nullptr : input == Input::Empty ? &empty : &full;
}

struct RuleCase
{
    const char* name;
    void (*call)(Parts& parts, Input input);
    Handed ofNullPointer;
    Handed ofEmpty;
    Handed ofFull;
};

const RuleCase Rules[] = {
    {"configurations",
     [](Parts& p, Input i) { p.program.createHvlFunction("f", choose(i, p.jsons), nullptr); },
     JavaNull, Nothing, OneAndNull},
    {"parameterContainers",
     [](Parts& p, Input i) { p.factory.createContainers(choose(i, p.containers), true); }, JavaNull,
     Nothing, OneAndNull},
    {"clauses",
     [](Parts& p, Input i) {
         p.program.createHvlExpressionConditional(choose(i, p.clauses), p.expression);
     },
     JavaNull, JavaNull, OneAndNull},
    {"signatures",
     [](Parts& p, Input i) {
         p.program.createHvlExpressionLambdaFunction(choose(i, p.signatures), p.expression);
     },
     JavaNull, JavaNull, OneAndNull},
    {"listItems",
     [](Parts& p, Input i) { p.program.createHvlExpressionList(choose(i, p.expressions)); },
     JavaNull, JavaNull, One},
    {"tupleComponents",
     [](Parts& p, Input i) { p.program.createHvlExpressionTuple(choose(i, p.expressions)); },
     JavaNull, Nothing, One},
    {"containers",
     [](Parts& p, Input i) {
         p.program.createHvlFunction("f", nullptr, choose(i, p.containers), choose(i, p.containers),
                                     p.function);
     },
     JavaNull, JavaNull, OneInEach},
    {"inputsByTag",
     [](Parts& p, Input i) { p.program.createHvlFunction("f", nullptr, choose(i, p.inputs)); },
     JavaNull, Nothing, One},
    {"types",
     [](Parts& p, Input i) {
         p.program.createHvlFunctionFilterRecords(p.expression, p.function, choose(i, p.types));
     },
     JavaNull, JavaNull, One},
};

class Conversions : public JvmTest, public testing::WithParamInterface<RuleCase>
{
protected:
    Handed handed(Parts& parts, Input input)
    {
        const int collections = jni().count("NewObjectA");
        const int added = jni().count("CallBooleanMethodA");
        const int put = jni().count("CallObjectMethodA");
        try {
            GetParam().call(parts, input);
        } catch (const JNIException&) {
            // What Java thinks of the value is not the matter here; telling it takes more calls,
            // and a java.io.PrintWriter onto a java.io.StringWriter.
            return {jni().count("NewObjectA") - collections - 2,
                    jni().count("CallBooleanMethodA") - added};
        }
        const int factoryCall = 1;
        return {jni().count("NewObjectA") - collections, jni().count("CallBooleanMethodA") - added +
                                                             jni().count("CallObjectMethodA") -
                                                             put - factoryCall};
    }
};
} // namespace

TEST_P(Conversions, HandOverWhatTheRuleSays)
{
    Parts parts;
    EXPECT_EQ(handed(parts, Input::NullPointer), GetParam().ofNullPointer);
    EXPECT_EQ(handed(parts, Input::Empty), GetParam().ofEmpty);
    EXPECT_EQ(handed(parts, Input::Full), GetParam().ofFull);
}

INSTANTIATE_TEST_SUITE_P(Rules, Conversions, testing::ValuesIn(Rules),
                         [](const auto& rule) { return rule.param.name; });

using ArrayTest = JvmTest;

TEST_F(ArrayTest, AMapReleasesItsArgumentsBetweenItsEntries)
{
    Parts parts;
    for (int i = 0; i < 100; ++i)
        parts.types["field" + std::to_string(i)] = JNIHvlExpression::Real;
    const int before = jni().liveLocals();
    parts.program.createHvlFunctionFilterRecords(parts.expression, parts.function, &parts.types);
    EXPECT_LT(jni().mostLocals(), before + 20);
}

TEST_F(ArrayTest, ArraysAreMadeUnlessTheVectorIsNull)
{
    JNIHvlProgram program;
    std::vector<std::string> arguments = {"1", "\"two\""};
    std::vector<std::string> none;
    std::vector<JNIHvlExpression*> oneAndNull = {program.createHvlExpressionLiteral(1), nullptr};
    program.createHvlFunctionGeneral("f", nullptr, &arguments, nullptr);
    program.createHvlFunctionGeneral("f", nullptr, &none, nullptr);
    EXPECT_THROW(program.createHvlExpression("%s %s", &oneAndNull), JNIException);
    EXPECT_EQ(jni().count("NewObjectArray"), 3);
    EXPECT_EQ(jni().count("SetObjectArrayElement"), 3);
    program.createHvlFunctionGeneral("f", nullptr, nullptr, nullptr);
    program.createHvlExpression("1", nullptr);
    EXPECT_EQ(jni().count("NewObjectArray"), 3);
}
