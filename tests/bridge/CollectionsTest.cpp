#include <JNIException.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "bridge/JNIHvlContainer.h"
#include "bridge/JNIHvlFunction.h"
#include "bridge/JNIHvlFunctionParameterFactory.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "support/JvmFixture.h"

namespace {
/// What a call hands to Java can be told by what it makes: no collection for a Java null, one with
/// so many elements added otherwise.
struct Handed
{
    int collections;
    int elements;
    friend bool operator==(const Handed&, const Handed&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Handed& handed)
    {
        return out << handed.collections << " with " << handed.elements;
    }
};

constexpr Handed JavaNull{0, 0};

enum class Input
{
    NullPointer,
    Empty,
    OneAndNull
};

/// The vector or map of a case, or null.
template <class Collection>
Collection* choose(Input input, Collection& empty, Collection& full)
{
    switch (input) {
    case Input::Empty:
        return &empty;
    case Input::OneAndNull:
        return &full;
    default:
        return nullptr;
    }
}

/// Elements for the calls, made before they are counted.
struct Parts
{
    JNIHvlProgram program;
    JNIHvlFunctionParameterFactory factory;
    JNIJSONObject json;
    JNIHvlExpression* expression = program.createHvlExpressionLiteral(1);
    JNIHvlContainer* container = program.createContainer("c", "file:///c", false);
    JNIHvlFunction* function = program.createHvlFunction("read", &json);
    HvlExpressionConditional::Clause clause{expression, expression};
    JNIHvlExpression::LambdaSignature signature{"p", nullptr};
};

using Call = std::function<void(Parts&, Input)>;

/// A call with a vector of one element and a null.
template <class Element, class Take>
Call withVector(Element* (*element)(Parts&), Take take)
{
    return [=](Parts& parts, Input input) {
        std::vector<Element*> empty;
        std::vector<Element*> full = {element(parts), nullptr};
        take(parts, choose(input, empty, full));
    };
}

struct RuleCase
{
    const char* name;
    Call call;
    Handed ofNullPointer;
    Handed ofEmpty;
    Handed ofOneAndNull;
};

JNIJSONObject* jsonOf(Parts& parts)
{
    return &parts.json;
}
JNIHvlExpression* expressionOf(Parts& parts)
{
    return parts.expression;
}
JNIHvlContainer* containerOf(Parts& parts)
{
    return parts.container;
}
HvlExpressionConditional::Clause* clauseOf(Parts& parts)
{
    return &parts.clause;
}
JNIHvlExpression::LambdaSignature* signatureOf(Parts& parts)
{
    return &parts.signature;
}

const RuleCase Rules[] = {
    {"configurations",
     withVector<JNIJSONObject>(
         jsonOf,
         [](Parts& parts, auto* list) { parts.program.createHvlFunction("f", list, nullptr); }),
     JavaNull,
     {1, 0},
     {1, 2}},
    {"parameterContainers",
     withVector<JNIHvlContainer>(
         containerOf, [](Parts& parts, auto* list) { parts.factory.createContainers(list, true); }),
     JavaNull,
     {1, 0},
     {1, 2}},
    {"clauses",
     withVector<HvlExpressionConditional::Clause>(clauseOf,
                                                  [](Parts& parts, auto* list) {
                                                      parts.program.createHvlExpressionConditional(
                                                          list, parts.expression);
                                                  }),
     JavaNull,
     JavaNull,
     {1, 2}},
    {"signatures",
     withVector<JNIHvlExpression::LambdaSignature>(
         signatureOf,
         [](Parts& parts, auto* list) {
             parts.program.createHvlExpressionLambdaFunction(list, parts.expression);
         }),
     JavaNull,
     JavaNull,
     {1, 2}},
    {"listItems",
     withVector<JNIHvlExpression>(
         expressionOf,
         [](Parts& parts, auto* list) { parts.program.createHvlExpressionList(list); }),
     JavaNull,
     JavaNull,
     {1, 1}},
    {"tupleComponents",
     withVector<JNIHvlExpression>(
         expressionOf,
         [](Parts& parts, auto* list) { parts.program.createHvlExpressionTuple(list); }),
     JavaNull,
     {1, 0},
     {1, 1}},
    {"containers",
     withVector<JNIHvlContainer>(containerOf,
                                 [](Parts& parts, auto* list) {
                                     parts.program.createHvlFunction("f", nullptr, list, list,
                                                                     parts.function);
                                 }),
     JavaNull,
     JavaNull,
     {2, 2}},
    {"inputsByTag",
     [](Parts& parts, Input input) {
         std::map<std::string, JNIHvlFunction*> empty;
         std::map<std::string, JNIHvlFunction*> full = {{"l", parts.function}, {"r", nullptr}};
         parts.program.createHvlFunction("f", nullptr, choose(input, empty, full));
     },
     JavaNull,
     {1, 0},
     {1, 1}},
    {"types",
     [](Parts& parts, Input input) {
         JNIHvlProgram::TypeMap empty;
         JNIHvlProgram::TypeMap full = {{"f", JNIHvlExpression::Real}};
         parts.program.createHvlFunctionFilterRecords(parts.expression, parts.function,
                                                      choose(input, empty, full));
     },
     JavaNull,
     JavaNull,
     {1, 1}},
};

class Conversions : public JvmTest, public testing::WithParamInterface<RuleCase>
{
protected:
    Handed handed(Parts& parts, Input input)
    {
        const auto puts = [this] { return jni().count("CallObjectMethodA"); };
        const int collections = jni().count("NewObjectA");
        const int added = jni().count("CallBooleanMethodA");
        const int put = puts();
        int descriptions = 0;
        try {
            GetParam().call(parts, input);
            descriptions = 1; // the factory call itself
        } catch (const JNIException&) {
            // What Java thinks of the value is not the matter here; telling it takes more calls.
            return {jni().count("NewObjectA") - collections - TraceObjects,
                    jni().count("CallBooleanMethodA") - added};
        }
        return {jni().count("NewObjectA") - collections,
                jni().count("CallBooleanMethodA") - added + puts() - put - descriptions};
    }

private:
    /// A trace is written through a java.io.PrintWriter onto a java.io.StringWriter.
    static constexpr int TraceObjects = 2;
};
} // namespace

TEST_P(Conversions, HandOverWhatTheRuleSays)
{
    Parts parts;
    EXPECT_EQ(handed(parts, Input::NullPointer), GetParam().ofNullPointer);
    EXPECT_EQ(handed(parts, Input::Empty), GetParam().ofEmpty);
    EXPECT_EQ(handed(parts, Input::OneAndNull), GetParam().ofOneAndNull);
}

INSTANTIATE_TEST_SUITE_P(Rules, Conversions, testing::ValuesIn(Rules),
                         [](const auto& rule) { return rule.param.name; });

using ArrayTest = JvmTest;

TEST_F(ArrayTest, ArraysAreMadeUnlessTheVectorIsNull)
{
    JNIHvlProgram program;
    JNIHvlFunction* read = program.createHvlFunction("read", nullptr);
    std::vector<std::string> arguments = {"1", "\"two\""};
    std::vector<std::string> none;
    program.createHvlFunctionGeneral("f", nullptr, &arguments, read);
    EXPECT_EQ(jni().count("NewObjectArray"), 1);
    EXPECT_EQ(jni().count("SetObjectArrayElement"), 2);
    program.createHvlFunctionGeneral("f", nullptr, &none, read);
    EXPECT_EQ(jni().count("NewObjectArray"), 2);
    program.createHvlFunctionGeneral("f", nullptr, nullptr, read);
    program.createHvlExpression("1", nullptr);
    EXPECT_EQ(jni().count("NewObjectArray"), 2);
}
