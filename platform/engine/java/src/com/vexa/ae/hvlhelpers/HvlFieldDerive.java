package com.vexa.ae.hvlhelpers;

import com.vexa.ae.hvlhelpers.impl.HvlNames;

/** A field, and the expression for its value. */
public final class HvlFieldDerive
{
    private final String _name;
    private final HvlExpression _expression;

    HvlFieldDerive(String name, HvlExpression expression)
    {
        _name = HvlNames.present(name, "a derived field");
        if (expression == null) {
            throw new IllegalArgumentException("the derived field \"" + name
                                               + "\" has no expression");
        }
        _expression = expression;
    }

    public String getName()
    {
        return _name;
    }

    public HvlExpression getExpression()
    {
        return _expression;
    }
}
