package com.vexa.ae.hvlhelpers.impl;

/** An input of a function: where it comes from, and its tag, empty if it has none. */
public record TaggedFunctionInput(HvlFunctionImpl function, String tag)
{
    public HvlFunctionImpl getFunction()
    {
        return function;
    }

    public String getTag()
    {
        return tag;
    }
}
