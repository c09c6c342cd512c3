package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlExpression;
import com.vexa.ae.hvlhelpers.HvlExpression.LambdaSignature;
import java.util.List;
import java.util.stream.Collectors;
import java.util.stream.IntStream;

/** Makes expressions. */
public final class Expressions
{
    private static final HvlExpression NULL = new ExpressionText("null");

    private Expressions()
    {
    }

    public static HvlExpression nullValue()
    {
        return NULL;
    }

    public static HvlExpression literal(Boolean value)
    {
        return value == null ? NULL : new ExpressionText(value.toString());
    }

    public static HvlExpression literal(String value)
    {
        return value == null ? NULL : new ExpressionText(HvlNames.string(value));
    }

    public static HvlExpression literal(Long value)
    {
        if (value == null) {
            return NULL;
        }
        // Without the minus, the smallest integer exceeds 64 bits.
        return new ExpressionText(value == Long.MIN_VALUE ? "(" + (value + 1) + " - 1)"
                                                          : value.toString());
    }

    /** The text converts back to the same number. */
    public static HvlExpression literal(Double value)
    {
        if (value == null) {
            return NULL;
        }
        if (!Double.isFinite(value)) {
            throw new IllegalArgumentException("the number " + value + " has no literal in HVL");
        }
        return new ExpressionText(value.toString());
    }

    public static HvlExpression parameterName(String name)
    {
        return new ExpressionText(HvlNames.parameter(name));
    }

    /** A field of the record that is a parameter. */
    public static HvlExpression fieldReference(String parameter, String field)
    {
        return new ExpressionText(HvlNames.parameter(parameter) + "." + HvlNames.field(field));
    }

    /** A template filled with the arguments. */
    public static HvlExpression template(String template, HvlExpression[] arguments)
    {
        if (template == null || template.isBlank()) {
            throw new IllegalArgumentException("the template of an expression is empty");
        }
        // Leading blanks would hide the first character of the text.
        return new ExpressionText(ExpressionTemplate.fill(template.strip(), arguments));
    }

    public static HvlExpression conditional(List<HvlExpressionConditional.Clause> clauses,
                                            HvlExpression otherwise)
    {
        return new HvlExpressionConditional(clauses, otherwise);
    }

    /** Elements in brackets. */
    public static HvlExpression list(List<HvlExpression> elements)
    {
        return new ExpressionText("[" + joined(elements, "list") + "]");
    }

    /**
     * A tuple of one element keeps its comma. Without it, it would be an expression in parentheses.
     */
    public static HvlExpression tuple(List<HvlExpression> elements)
    {
        String comma = elements != null && elements.size() == 1 ? "," : "";
        return new ExpressionText("(" + joined(elements, "tuple") + comma + ")");
    }

    /** Parameters, always in parentheses, and the body. */
    public static HvlExpression lambda(List<LambdaSignature> signatures, HvlExpression body)
    {
        if (body == null) {
            throw new IllegalArgumentException("a lambda has no body");
        }
        String parameters = signatures == null ? ""
            : signatures.stream().map(Expressions::parameter).collect(Collectors.joining(", "));
        return new ExpressionText("(" + parameters + ") => " + body.generate());
    }

    private static String parameter(LambdaSignature signature)
    {
        if (signature == null) {
            throw new IllegalArgumentException("a parameter of a lambda is missing");
        }
        String name = HvlNames.parameter(signature.getParameterName());
        return signature.getParameterType() == null
            ? name
            : name + ": " + signature.getParameterType().generate();
    }

    private static String joined(List<HvlExpression> elements, String what)
    {
        if (elements == null) {
            return "";
        }
        return IntStream.range(0, elements.size())
            .mapToObj(i -> element(elements, i, what))
            .collect(Collectors.joining(", "));
    }

    private static String element(List<HvlExpression> elements, int index, String what)
    {
        HvlExpression element = elements.get(index);
        if (element == null) {
            throw new IllegalArgumentException("element " + (index + 1) + " of a " + what
                                               + " is missing");
        }
        return element.generate();
    }
}
