package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFragment;
import com.vexa.ae.hvlhelpers.HvlFunction;
import java.util.Set;

/** Given text of a job. It comes before everything that is composed. */
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
