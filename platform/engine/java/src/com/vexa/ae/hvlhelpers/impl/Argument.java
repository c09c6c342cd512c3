package com.vexa.ae.hvlhelpers.impl;

/** One place of a call; with a label, the place names a definition that holds the value. */
record Argument(String label, String value)
{
    static final Argument OPEN = inline("_");

    static Argument inline(String value)
    {
        return new Argument(null, value);
    }
}
