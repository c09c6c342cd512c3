package com.vexa.ae.hvlhelpers.impl;

/** One argument of a call. With a label, the call names a definition that holds the value. */
record Argument(String label, String value)
{
    static final Argument OPEN = inline("_");

    static Argument inline(String value)
    {
        return new Argument(null, value);
    }
}
