package com.vexa.ae.hvlhelpers;

/** One step of a program. Functions are immutable. */
public interface HvlFunction
{
    /** The id, unique in the program: "f1", "f2" and so on in order of creation. */
    String getId();

    /** The name of the step, with its namespace if it has one. */
    String getName();
}
