package com.vexa.ae.hvlhelpers;

/** One step of a program. Functions never change once they are created. */
public interface HvlFunction
{
    /** The id, unique in the program: "f1", "f2" and so on in order of creation. */
    String getId();

    /** The name of the step, with its name space if it has one. */
    String getName();
}
