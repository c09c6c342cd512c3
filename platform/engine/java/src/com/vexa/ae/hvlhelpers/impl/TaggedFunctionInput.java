package com.vexa.ae.hvlhelpers.impl;

/** An input of a function: its source, and its tag, which may be empty. */
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
