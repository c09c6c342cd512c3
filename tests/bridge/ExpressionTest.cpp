#include <utility>

#include "JNIException.h"
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

TEST_F(ExpressionTest, TypesHaveTheirTexts)
{
    const char* names[] = {"Any",  "Number", "String", "Int",  "Real",
                           "Char", "Bool",   "Time",   "Date", "Timestamp"};
    for (int type = 0; type < 10; ++type)
        EXPECT_EQ(JNIHvlTypeSimple(static_cast<Type>(type)).generate(), names[type]);
    EXPECT_EQ(JNIHvlTypeSimple(static_cast<Type>(10)).generate(), "Any");
    EXPECT_EQ(JNIHvlTypeSimple(static_cast<Type>(-1)).generate(), "Any");

    JNIHvlTypeSimple real(JNIHvlExpression::Real);
    JNIHvlTypeList list(real);
    std::vector<JNIHvlType*> elements = {&real, &list};
    EXPECT_EQ(JNIHvlTypeTuple(elements).generate(), "(Real, [Real])");
    std::vector<JNIHvlType*> missing = {nullptr};
    JNIHvlTypeTuple refused(missing);
    EXPECT_EQ(refused.getObject(), nullptr);
    EXPECT_NE(refused.getErrorMessage(), "");
    EXPECT_THROW(refused.generate(), JNIException);
}

TEST_F(ExpressionTest, TreesAreComposed)
{
    JNIHvlProgram program;
    JNIHvlExpression* one = program.createHvlExpressionLiteral(1);
    std::vector<JNIHvlExpression*> operands = {program.createHvlExpressionFieldReference("f"), one};
    JNIHvlExpression* above = program.createHvlExpression("%s > %s", &operands);
    Clause clause(above, one);
    EXPECT_EQ(clause.getCondition(), above);
    EXPECT_EQ(clause.getValue(), one);
    EXPECT_NE(Clause(nullptr, nullptr).getObject(), nullptr);
    std::vector<Clause*> clauses = {&clause};
    JNIHvlTypeSimple real(JNIHvlExpression::Real);
    Signature parameter("a", &real);
    std::vector<Signature*> signatures = {&parameter};
    std::vector<Signature*> none;
    JNIHvlExpression* body = program.createHvlExpressionParameterName("a");

    using Row = std::pair<JNIHvlExpression*, const char*>;
    for (const auto& [expression, text] :
         {Row{program.createHvlExpressionLiteral(-3), "-3"},
          Row{program.createHvlExpressionLiteral(0.1), "0.1"},
          Row{program.createHvlExpressionLiteral(1LL << 40), "1099511627776"},
          Row{program.createHvlExpressionLiteral(true), "true"},
          Row{program.createHvlExpressionLiteral("a\"b"), R"("a\"b")"},
          Row{program.createHvlExpressionLiteral(static_cast<const char*>(nullptr)), "null"},
          Row{program.createHvlExpressionNullValue(), "null"},
          Row{program.createHvlExpressionFieldReference("two words"), "x.`two words`"},
          Row{program.createHvlExpressionFieldReference("r", "f"), "r.f"}, Row{above, "x.f > 1"},
          Row{program.createHvlExpressionList(&operands), "[x.f, 1]"},
          Row{program.createHvlExpressionTuple(&operands), "(x.f, 1)"},
          Row{program.createHvlExpressionConditional(&clauses, body), "if (x.f > 1) 1 else a"},
          Row{program.createHvlExpressionLambdaFunction(&signatures, body), "(a: Real) => a"},
          Row{program.createHvlExpressionLambdaFunction(&none, body), "() => a"}})
        EXPECT_EQ(expression->generate(), text);
    EXPECT_THROW(program.createHvlExpressionFieldReference(""), JNIException);

    const int calls = jni().count("CallObjectMethodA");
    EXPECT_EQ(parameter.getParameterName(), "a");
    EXPECT_EQ(parameter.getParameterType(), &real);
    EXPECT_EQ(jni().count("CallObjectMethodA"), calls);
}

TEST_F(ExpressionTest, AThousandExpressionsLiveAtOnce)
{
    JNIHvlProgram program;
    for (int index = 0; index < 1000; ++index)
        program.createHvlExpressionLiteral(index);
    EXPECT_EQ(jni().liveLocals(), 2000) << "each with its class";
}
