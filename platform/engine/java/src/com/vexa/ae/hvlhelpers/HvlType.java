package com.vexa.ae.hvlhelpers;

/** A type of the job language. */
public interface HvlType
{
    /** The type as HVL text. */
    String generate();
}
