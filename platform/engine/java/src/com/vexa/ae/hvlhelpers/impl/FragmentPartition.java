package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFragment;
import java.util.Collection;
import java.util.HashMap;
import java.util.LinkedHashSet;
import java.util.Map;
import java.util.Set;

/**
 * Splits a program into fragments, in linear time. Functions come in order of creation, so the
 * inputs of a function are placed before it.
 */
public final class FragmentPartition
{
    /** The second function runs after the first. */
    public record Dependency(HvlFunctionImpl first, HvlFunctionImpl second)
    {
    }

    private final Object _program;
    private final Map<HvlFunctionImpl, Integer> _uses = new HashMap<>();
    private final Map<HvlFunctionImpl, Integer> _rankOf = new HashMap<>();
    private final Map<HvlFunctionImpl, HvlFragmentImpl> _fragmentOf = new HashMap<>();
    private final Set<HvlFragment> _fragments = new LinkedHashSet<>();

    private FragmentPartition(Object program)
    {
        _program = program;
    }

    /** The fragments in order of creation. A null text adds none. */
    public static Set<HvlFragment> of(Object program, String text,
                                      Collection<HvlFunctionImpl> functions,
                                      Collection<Dependency> dependencies)
    {
        FragmentPartition partition = new FragmentPartition(program);
        if (text != null) {
            partition._fragments.add(new TextFragment(text));
        }
        partition.countUses(functions);
        functions.forEach(partition::place);
        functions.forEach(partition::link);
        dependencies.forEach(partition::order);
        return partition._fragments;
    }

    private void countUses(Collection<HvlFunctionImpl> functions)
    {
        for (HvlFunctionImpl function : functions) {
            function.inputs().forEach(input -> _uses.merge(input.function(), 1, Integer::sum));
        }
    }

    private void place(HvlFunctionImpl function)
    {
        boolean continues = function.inputs().size() == 1 && function.piped() != null
            && _uses.get(function.piped()) == 1;
        int rank = _rankOf.size();
        HvlFragmentImpl fragment = continues ? _fragmentOf.get(function.piped())
                                             : new HvlFragmentImpl(_program, rank);
        fragment.append(function);
        _rankOf.put(function, rank);
        _fragmentOf.put(function, fragment);
        _fragments.add(fragment);
    }

    // Fragments refer to each other by id. The ids are known after all functions are placed.
    private void link(HvlFunctionImpl function)
    {
        HvlFragmentImpl fragment = _fragmentOf.get(function);
        for (TaggedFunctionInput input : function.inputs()) {
            HvlFragmentImpl source = _fragmentOf.get(input.function());
            if (source != fragment) {
                fragment.addPredecessor(source);
                source.markUsed();
            }
        }
    }

    private void order(Dependency dependency)
    {
        HvlFragmentImpl first = _fragmentOf.get(dependency.first());
        HvlFragmentImpl second = _fragmentOf.get(dependency.second());
        // Within one fragment the pipe keeps the order or contradicts it. If it contradicts it, the
        // fragment waits for itself, and sorting reports the cycle.
        if (first != second
            || _rankOf.get(dependency.first()) >= _rankOf.get(dependency.second())) {
            second.addPredecessor(first);
        }
    }
}
