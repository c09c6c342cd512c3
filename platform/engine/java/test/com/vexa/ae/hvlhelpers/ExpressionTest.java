package com.vexa.ae.hvlhelpers;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.vexa.ae.hvlhelpers.HvlExpression.LambdaSignature;
import com.vexa.ae.hvlhelpers.HvlExpression.SimpleTypes;
import com.vexa.ae.hvlhelpers.impl.HvlExpressionConditional.Clause;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.Random;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

/** Expressions and types as HVL text. */
class ExpressionTest
{
    private final Composer _composer = new Composer();
    private final HvlProgram _program = _composer.program;

    private static void refused(Runnable call, String part)
    {
        String message =
            assertThrows(IllegalArgumentException.class, call::run).getMessage();
        assertTrue(message.contains(part), message);
    }

    @Test
    void literalsReadBackAsTheirValue()
    {
        assertEquals("-7", _program.createHvlExpressionLiteral(-7).generate());
        assertEquals("9223372036854775807",
                     _program.createHvlExpressionLiteral(Long.MAX_VALUE).generate());
        assertEquals("(-9223372036854775807 - 1)",
                     _program.createHvlExpressionLiteral(Long.MIN_VALUE).generate());
        assertEquals("true", _program.createHvlExpressionLiteral(true).generate());
        assertEquals("\"a\\\"b\\\\c\\n/\u00e9\"",
                     _program.createHvlExpressionLiteral("a\"b\\c\n/\u00e9").generate());
        assertEquals("null", _program.createHvlExpressionNullValue().generate());
        assertEquals("null", _program.createHvlExpressionLiteral((String) null).generate());
        for (double value : new double[] {3, 0.1, 1e300, -1e-9, Double.MIN_VALUE}) {
            String text = _program.createHvlExpressionLiteral(value).generate();
            assertEquals(value, Double.parseDouble(text));
            assertTrue(text.matches(".*[.E].*"), text);
        }
        refused(() -> _program.createHvlExpressionLiteral(Double.NaN), "NaN");
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', quoteCharacter = '~',
               value = {"F|x.F", "_f1|x._f1", "\u00e9t\u00e9|x.\u00e9t\u00e9", "a b|x.`a b`",
                        "1st|x.`1st`", "if|x.`if`", "null|x.`null`", "_|x.`_`", "a.b|x.`a.b`",
                        "a`b|x.`a\\`b`", "a\"b|x.`a\"b`", "a\\b|x.`a\\\\b`",
                        "a\\\"b|x.`a\\\\\"b`", "a\tb|x.`a\\tb`",
                        "a\\|x.`a\\\\`", "\\`|x.`\\\\\\``", "a\u0001b|x.`a\\u0001b`"})
    void aFieldThatIsNoNameIsQuoted(String field, String text)
    {
        assertEquals(text, _composer.field(field).generate());
        assertEquals(text.replaceFirst("x", "row"),
                     _program.createHvlExpressionFieldReference("row", field).generate());
    }

    /** The text that the parser reads between the quotes. Checks that the text ends there. */
    private static String unquoted(String text)
    {
        char quote = text.charAt(0);
        StringBuilder result = new StringBuilder();
        int at = 1;
        for (; text.charAt(at) != quote; ++at) {
            char c = text.charAt(at);
            assertTrue(c >= ' ', text);
            if (c == '\\') {
                c = text.charAt(++at);
                int letter = "bfnrt".indexOf(c);
                if (c == 'u') {
                    c = (char) Integer.parseInt(text.substring(at + 1, at + 5), 16);
                    at += 4;
                } else if (letter >= 0) {
                    c = "\b\f\n\r\t".charAt(letter);
                }
            }
            result.append(c);
        }
        assertEquals(text.length() - 1, at, text);
        return result.toString();
    }

    @Test
    void anyNameAndAnyTextReadBackAsTheyWere()
    {
        String[] pieces = {"\\", "`", "\"", "'", "/", "a", "n", "u0041", " ", "\n", "\u0000", "\u007f",
                           "\u00e9", "\ud83d\ude00", "%s", "//", ")", "->"};
        Random random = new Random(1);
        for (int run = 0; run < 20000; ++run) {
            StringBuilder built = new StringBuilder();
            for (int left = 1 + random.nextInt(5); left > 0; --left) {
                built.append(pieces[random.nextInt(pieces.length)]);
            }
            String text = built.toString();
            assertEquals(text, unquoted(_program.createHvlExpressionLiteral(text).generate()));
            String field = _composer.field(text).generate().substring(2);
            assertEquals(text, field.startsWith("`") ? unquoted(field) : field);
        }
    }

    @Test
    void listsAndTuples()
    {
        HvlExpression a = _composer.field("a");
        HvlExpression sum = _composer.template("%s + 1", a);
        assertEquals("[x.a, x.a + 1]",
                     _program.createHvlExpressionList(List.of(a, sum)).generate());
        assertEquals("[]", _program.createHvlExpressionList(null).generate());
        assertEquals("()", _program.createHvlExpressionTuple(List.of()).generate());
        assertEquals("(x.a,)", _program.createHvlExpressionTuple(List.of(a)).generate());
        assertEquals("(x.a, x.a)", _program.createHvlExpressionTuple(List.of(a, a)).generate());
        refused(() -> _program.createHvlExpressionTuple(Arrays.asList(a, null)), "element 2");
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', quoteCharacter = '~',
               value = {"%s * 2|(a + b) * 2", "2 - %s|2 - (a + b)", "toReal(%s)|toReal(a + b)",
                        "f(1, %s , 2)|f(1, a + b , 2)", "[%s]|[a + b]", "%s|a + b",
                        "(%s) * 2|(a + b) * 2", "-%s|-(a + b)", "f(%s * 2)|f((a + b) * 2)",
                        "7 %% %s|7 % (a + b)", "{\"v\": %s}|{\"v\": a + b}",
                        "y => %s|y => (a + b)"})
    void anOperatorKeepsItsOperandsTogether(String template, String text)
    {
        HvlExpression sum = _composer.template("a + b");
        assertEquals(text, _composer.template(template, sum).generate());
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', quoteCharacter = '~',
               value = {"a|a * 2", "x.`a - b`|x.`a - b` * 2", "\"a - b\"|\"a - b\" * 2",
                        "\"\\\"-\"|\"\\\"-\" * 2", "1.5E-3|1.5E-3 * 2", "f(a - b)|f(a - b) * 2",
                        "[a - b]|[a - b] * 2", "-1|(-1) * 2", "!a|(!a) * 2", "a == b|(a == b) * 2",
                        "if (a) b|(if (a) b) * 2", "y => y|(y => y) * 2", "iff|iff * 2"})
    void onlyAnOpenOperandGetsParentheses(String operand, String text)
    {
        assertEquals(text, _composer.template("%s * 2", _composer.template(operand)).generate());
    }

    @ParameterizedTest
    @ValueSource(strings = {"", " ", "%s", "%s + %s + %s", "a %d", "a %", "100% %s %s"})
    void aTemplateThatDoesNotFitIsRefused(String template)
    {
        HvlExpression a = _composer.field("a");
        refused(() -> _composer.template(template, a, a), "template");
    }

    @Test
    void aTemplateNeedsItsArguments()
    {
        refused(() -> _program.createHvlExpression(null, null), "template");
        refused(() -> _program.createHvlExpression("%s", null), "more places");
        refused(() -> _composer.template("%s", (HvlExpression) null), "place 1");
    }

    @Test
    void conditionsFormAChain()
    {
        HvlExpression one = _program.createHvlExpressionLiteral(1);
        HvlExpression c = _composer.template("x.a > 0");
        Clause first = new Clause(c, one);
        Clause second = new Clause(_composer.field("b"), _composer.template("1 + 1"));
        assertEquals("if (x.a > 0) 1 else if (x.b) 1 + 1 else null",
                     _program.createHvlExpressionConditional(
                             List.of(first, second), _program.createHvlExpressionNullValue())
                         .generate());
        HvlExpression short1 = _program.createHvlExpressionConditional(List.of(first), null);
        assertEquals("if (x.a > 0) 1", short1.generate());
        // The inner chain has no else and must not take that of the outer chain.
        assertEquals("if (x.b) (if (x.a > 0) 1) else 1",
                     _program.createHvlExpressionConditional(
                             List.of(new Clause(_composer.field("b"), short1)), one)
                         .generate());
        refused(() -> _program.createHvlExpressionConditional(null, one), "clause");
        refused(() -> _program.createHvlExpressionConditional(
                    List.of(first, new Clause(null, one)), one), "clause 2");
        refused(() -> _program.createHvlExpressionConditional(
                    List.of(new Clause(c, null)), one), "value");
    }

    @Test
    void lambdasDeclareTheirParameters()
    {
        HvlExpression body = _program.createHvlExpressionParameterName("a");
        HvlType real = new HvlTypeSimple(SimpleTypes.Real);
        assertEquals("(a: Real, b: [(Int, Any)], c) => a",
                     _program.createHvlExpressionLambdaFunction(
                             List.of(new LambdaSignature("a", real),
                                     new LambdaSignature("b", new HvlTypeList(new HvlTypeTuple(
                                         new HvlType[] {new HvlTypeSimple(SimpleTypes.Int),
                                                        new HvlTypeSimple(null)}))),
                                     new LambdaSignature("c", null)),
                             body)
                         .generate());
        assertEquals("() => a",
                     _program.createHvlExpressionLambdaFunction(null, body).generate());
        refused(() -> _program.createHvlExpressionLambdaFunction(null, null), "body");
        refused(() -> _program.createHvlExpressionLambdaFunction(
                    List.of(new LambdaSignature("a b", real)), body), "a b");
        refused(() -> _program.createHvlExpressionLambdaFunction(
                    Collections.singletonList(null), body), "missing");
    }

    @Test
    void aTypeNeedsItsElements()
    {
        refused(() -> new HvlTypeList(null), "element type");
        refused(() -> new HvlTypeTuple(new HvlType[0]), "element type");
        refused(() -> new HvlTypeTuple(new HvlType[1]), "element type");
    }

    @ParameterizedTest
    @ValueSource(strings = {"", "a b", "else", "_", "1a"})
    void aParameterIsAName(String name)
    {
        assertThrows(IllegalArgumentException.class,
                     () -> _program.createHvlExpressionParameterName(name));
    }
}
