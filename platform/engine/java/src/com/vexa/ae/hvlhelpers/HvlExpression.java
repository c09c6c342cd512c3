package com.vexa.ae.hvlhelpers;

/** An expression of the job language. Expressions are immutable. */
public interface HvlExpression
{
    /** The expression as HVL text. */
    String generate();

    /** How the text of an expression combines with other text. */
    Form form();

    /** The forms of expressions. The form decides where parentheses are needed. */
    enum Form
    {
        /** A literal, a name, a field, a call, or text in brackets. Never needs parentheses. */
        Closed,
        /** Operators. Needs parentheses next to another operator. */
        Operators,
        /** A conditional. Everything that follows belongs to it, also an {@code else}. */
        Conditional,
        /** A function with its own parameters. */
        Lambda
    }

    /** The named types. */
    enum SimpleTypes
    {
        Any,
        Number,
        String,
        Int,
        Real,
        Char,
        Bool,
        Time,
        Date,
        Timestamp
    }

    /** A parameter of a lambda: its name and its optional type. */
    final class LambdaSignature
    {
        private final String _name;
        private final HvlType _type;

        /** A null type declares none. The lambda checks the name. */
        public LambdaSignature(String name, HvlType type)
        {
            _name = name;
            _type = type;
        }

        public String getParameterName()
        {
            return _name;
        }

        public HvlType getParameterType()
        {
            return _type;
        }
    }
}
