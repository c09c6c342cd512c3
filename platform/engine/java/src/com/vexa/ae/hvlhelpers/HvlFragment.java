package com.vexa.ae.hvlhelpers;

import java.util.Set;

/** A longest run of functions that feed each other and nobody else: one pipeline of the text. */
public interface HvlFragment
{
    boolean containsFunction(HvlFunction function);

    /** The id of the last function, and the name to which the text binds the chain. */
    String getId();

    /** The ids of the fragments that have to stand before this one, sorted. */
    Set<String> getPredecessorFragmentIds();

    /** The definitions of the functions' arguments, then the pipeline; without a last line end. */
    String toHVLText();
}
