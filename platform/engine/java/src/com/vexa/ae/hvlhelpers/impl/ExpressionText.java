package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlExpression;

/** An expression that consists of its text. */
record ExpressionText(String text, Form form) implements HvlExpression
{
    ExpressionText(String text)
    {
        this(text, TextForm.of(text));
    }

    @Override
    public String generate()
    {
        return text;
    }

    static String parenthesised(HvlExpression expression)
    {
        return "(" + expression.generate() + ")";
    }
}
