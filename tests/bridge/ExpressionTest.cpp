#include <JNIException.h>

#include "bridge/HvlExpressionConditional.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIHvlTypeList.h"
#include "bridge/JNIHvlTypeSimple.h"
#include "bridge/JNIHvlTypeTuple.h"
#include "support/JvmFixture.h"

namespace {
using ExpressionTest = JvmTest;
using Type = JNIHvlExpression::SimpleTypes;
using Signature = JNIHvlExpression::LambdaSignature;
using Clause = HvlExpressionConditional::Clause;
} // namespace

TEST_F(ExpressionTest, SimpleTypesHaveTheirNames)
{
    const char* names[] = {"Any",  "Number", "String", "Int",  "Real",
                           "Char", "Bool",   "Time",   "Date", "Timestamp"};
    for (int type = 0; type < 10; ++type)
        EXPECT_EQ(JNIHvlTypeSimple(static_cast<Type>(type)).generate(), names[type]);
    EXPECT_EQ(JNIHvlTypeSimple(static_cast<Type>(10)).generate(), "Any");
    EXPECT_EQ(JNIHvlTypeSimple(static_cast<Type>(-1)).generate(), "Any");
}

TEST_F(ExpressionTest, TypesNest)
{
    JNIHvlTypeSimple real(JNIHvlExpression::Real);
    JNIHvlTypeList list(real);
    std::vector<JNIHvlType*> elements = {&real, &list};
    JNIHvlTypeTuple tuple(elements);
    EXPECT_EQ(list.generate(), "[Real]");
    EXPECT_EQ(tuple.generate(), "(Real, [Real])");
}

TEST_F(ExpressionTest, ATypeThatJavaRefusesWrapsNothing)
{
    std::vector<JNIHvlType*> elements = {nullptr};
    JNIHvlTypeTuple tuple(elements);
    if (tuple.getObject() == nullptr) {
        EXPECT_NE(tuple.getErrorMessage(), "");
        EXPECT_THROW(tuple.generate(), JNIException);
    } else {
        EXPECT_EQ(tuple.getErrorMessage(), "");
    }
}

TEST_F(ExpressionTest, LiteralsAndReferences)
{
    JNIHvlProgram program;
    EXPECT_EQ(program.createHvlExpressionLiteral(-3)->generate(), "-3");
    EXPECT_EQ(program.createHvlExpressionLiteral(0.1)->generate(), "0.1");
    EXPECT_EQ(program.createHvlExpressionLiteral(1LL << 40)->generate(), "1099511627776");
    EXPECT_EQ(program.createHvlExpressionLiteral(true)->generate(), "true");
    EXPECT_EQ(program.createHvlExpressionLiteral("a\"b")->generate(), R"("a\"b")");
    EXPECT_EQ(program.createHvlExpressionNullValue()->generate(), "null");
    EXPECT_EQ(program.createHvlExpressionParameterName("p")->generate(), "p");
    EXPECT_EQ(program.createHvlExpressionFieldReference("two words")->generate(), "x.`two words`");
    EXPECT_EQ(program.createHvlExpressionFieldReference("r", "f")->generate(), "r.f");
    EXPECT_THROW(program.createHvlExpressionFieldReference(""), JNIException);
}

TEST_F(ExpressionTest, TreesAreComposed)
{
    JNIHvlProgram program;
    JNIHvlExpression* field = program.createHvlExpressionFieldReference("f");
    JNIHvlExpression* one = program.createHvlExpressionLiteral(1);
    std::vector<JNIHvlExpression*> operands = {field, one};
    JNIHvlExpression* above = program.createHvlExpression("%s > %s", &operands);
    EXPECT_EQ(above->generate(), "x.f > 1");

    Clause clause(above, one);
    std::vector<Clause*> clauses = {&clause};
    JNIHvlExpression* conditional =
        program.createHvlExpressionConditional(&clauses, program.createHvlExpressionNullValue());
    EXPECT_EQ(conditional->generate(), "if (x.f > 1) 1 else null");
    EXPECT_EQ(clause.getCondition(), above);
    EXPECT_EQ(clause.getValue(), one);

    std::vector<JNIHvlExpression*> single = {one};
    EXPECT_EQ(program.createHvlExpressionTuple(&single)->generate(), "(1,)");
    EXPECT_EQ(program.createHvlExpressionList(&operands)->generate(), "[x.f, 1]");
}

TEST_F(ExpressionTest, ALambdaKeepsItsSignatures)
{
    JNIHvlProgram program;
    JNIHvlTypeSimple real(JNIHvlExpression::Real);
    Signature a("a", &real);
    std::vector<Signature*> signatures = {&a};
    JNIHvlExpression* body = program.createHvlExpressionParameterName("a");
    EXPECT_EQ(program.createHvlExpressionLambdaFunction(&signatures, body)->generate(),
              "(a: Real) => a");
    std::vector<Signature*> none;
    EXPECT_EQ(program.createHvlExpressionLambdaFunction(&none, body)->generate(), "() => a");

    const int calls = jni().count("CallObjectMethodA");
    EXPECT_EQ(a.getParameterName(), "a");
    EXPECT_EQ(a.getParameterType(), &real);
    EXPECT_EQ(jni().count("CallObjectMethodA"), calls);
}

TEST_F(ExpressionTest, AClauseWithoutACondition)
{
    Clause clause(nullptr, nullptr);
    EXPECT_NE(clause.getObject(), nullptr) << clause.getErrorMessage();
}

TEST_F(ExpressionTest, AThousandExpressionsLiveAtOnce)
{
    JNIHvlProgram program;
    for (int index = 0; index < 1000; ++index)
        program.createHvlExpressionLiteral(index);
    EXPECT_EQ(jni().liveLocals(), 2000) << "each with its class";
}
