package com.vexa.ae.hvlhelpers;

import java.util.Set;

/** A longest sequence of functions that feed only each other: one pipeline of the text. */
public interface HvlFragment
{
    boolean containsFunction(HvlFunction function);

    /** The id of the last function, which is also the name of the chain in the text. */
    String getId();

    /** The ids of the fragments that must come before this one, sorted. */
    Set<String> getPredecessorFragmentIds();

    /**
     * The definitions of the functions' arguments and then the pipeline, without a final line end.
     */
    String toHVLText();
}
