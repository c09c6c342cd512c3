package com.vexa.ae.hvlhelpers;

/** An expression of the job language. Expressions never change once they are made. */
public interface HvlExpression
{
    /** The expression as HVL text. */
    String generate();

    /** How the text of an expression holds together beside other text. */
    Form form();

    /** What decides where an expression needs parentheses. */
    enum Form
    {
        /** A literal, a name, a field, a call, or text in brackets: fits anywhere. */
        Closed,
        /** Operators: needs parentheses beside another operator. */
        Operators,
        /** A conditional: takes everything that follows for its own, an {@code else} too. */
        Conditional,
        /** A function with parameters of its own. */
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

    /** A parameter of a lambda: its name, and its type if it declares one. */
    final class LambdaSignature
    {
        private final String _name;
        private final HvlType _type;

        /** A null type declares none. The lambda that takes the signature checks the name. */
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
