package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFragment;
import com.vexa.ae.hvlhelpers.HvlFunction;
import java.util.Set;

/** Text of a job that was given as it is; it stands before all that is composed. */
record TextFragment(String text) implements HvlFragment
{
    @Override
    public boolean containsFunction(HvlFunction function)
    {
        return false;
    }

    @Override
    public String getId()
    {
        return "text";
    }

    @Override
    public Set<String> getPredecessorFragmentIds()
    {
        return Set.of();
    }

    @Override
    public String toHVLText()
    {
        return text;
    }
}
