package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFragment;
import com.vexa.ae.hvlhelpers.HvlFunction;
import java.util.ArrayList;
import java.util.Collections;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Set;
import java.util.SortedSet;
import java.util.TreeSet;
import java.util.stream.Collectors;

/** A pipeline of a program, as it was when the program was asked for its fragments. */
final class HvlFragmentImpl implements HvlFragment
{
    private final Object _program;
    private final int _rank;
    private final Set<HvlFunctionImpl> _functions = new LinkedHashSet<>();
    private final SortedSet<String> _predecessors = new TreeSet<>();
    private HvlFunctionImpl _last;
    private boolean _isUsed;

    /** {@code rank} is the position of the first function in the order of creation. */
    HvlFragmentImpl(Object program, int rank)
    {
        _program = program;
        _rank = rank;
    }

    void append(HvlFunctionImpl function)
    {
        _functions.add(function);
        _last = function;
    }

    void addPredecessor(HvlFragmentImpl fragment)
    {
        _predecessors.add(fragment.getId());
    }

    /** Records that other fragments use the output. The pipeline then becomes a definition. */
    void markUsed()
    {
        _isUsed = true;
    }

    Object program()
    {
        return _program;
    }

    int rank()
    {
        return _rank;
    }

    @Override
    public boolean containsFunction(HvlFunction function)
    {
        return _functions.contains(function);
    }

    @Override
    public String getId()
    {
        return _last.getId();
    }

    @Override
    public Set<String> getPredecessorFragmentIds()
    {
        return Collections.unmodifiableSet(_predecessors);
    }

    @Override
    public String toHVLText()
    {
        List<String> lines = new ArrayList<>();
        List<String> steps = new ArrayList<>();
        HvlFunctionImpl input = _functions.iterator().next().piped();
        if (input != null) {
            steps.add(input.getId());
        }
        for (HvlFunctionImpl function : _functions) {
            if (!function.generateConfiguration().isEmpty()) {
                lines.add(function.generateConfiguration());
            }
            steps.add(function.generateInvocation(this));
        }
        lines.add((_isUsed ? "val " + getId() + " = " : "") + String.join(" -> ", steps));
        return String.join("\n", lines);
    }

    /** The functions, for messages. */
    @Override
    public String toString()
    {
        return _functions.stream().map(Object::toString).collect(Collectors.joining(" -> "));
    }
}
