package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFragment;
import java.util.ArrayList;
import java.util.Collection;
import java.util.Collections;
import java.util.Comparator;
import java.util.HashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.PriorityQueue;
import java.util.Set;
import java.util.stream.Collectors;

/** Sorts fragments so that each comes after those that it needs, otherwise by creation. */
public final class ExecutionOrder
{
    private Object _program;
    private final Map<String, HvlFragment> _byId = new HashMap<>();
    private final Map<String, List<HvlFragment>> _successors = new HashMap<>();
    private final Map<String, Integer> _missing = new HashMap<>();

    private ExecutionOrder(Collection<HvlFragment> fragments)
    {
        fragments.forEach(this::add);
        fragments.forEach(this::link);
    }

    /**
     * The fragments in order. Needed fragments that are not in the collection are ignored.
     *
     * @throws IllegalStateException if fragments wait for each other
     * @throws IllegalArgumentException if the fragments come from more than one program
     */
    public static List<HvlFragment> of(Collection<HvlFragment> fragments)
    {
        return new ExecutionOrder(fragments).sorted();
    }

    private void add(HvlFragment fragment)
    {
        if (fragment == null) {
            throw new IllegalArgumentException("a fragment to sort is missing");
        }
        if (_byId.putIfAbsent(fragment.getId(), fragment) != null) {
            throw new IllegalArgumentException("two fragments to sort have the id "
                                               + fragment.getId());
        }
        if (fragment instanceof HvlFragmentImpl composed) {
            _program = _program == null ? composed.program() : _program;
            if (_program != composed.program()) {
                throw new IllegalArgumentException("the fragment " + fragment.getId()
                                                   + " to sort belongs to another program");
            }
        }
        _successors.put(fragment.getId(), new ArrayList<>());
    }

    private void link(HvlFragment fragment)
    {
        int missing = 0;
        for (String id : fragment.getPredecessorFragmentIds()) {
            if (_byId.containsKey(id)) {
                _successors.get(id).add(fragment);
                ++missing;
            }
        }
        _missing.put(fragment.getId(), missing);
    }

    private List<HvlFragment> sorted()
    {
        PriorityQueue<HvlFragment> ready =
            new PriorityQueue<>(Comparator.comparingInt(ExecutionOrder::rank));
        _byId.values().stream().filter(f -> _missing.get(f.getId()) == 0).forEach(ready::add);
        List<HvlFragment> order = new ArrayList<>();
        while (!ready.isEmpty()) {
            HvlFragment next = ready.poll();
            order.add(next);
            for (HvlFragment successor : _successors.get(next.getId())) {
                if (_missing.merge(successor.getId(), -1, Integer::sum) == 0) {
                    ready.add(successor);
                }
            }
        }
        if (order.size() < _byId.size()) {
            throw new IllegalStateException("the functions wait for each other: " + cycle());
        }
        return order;
    }

    // Given text comes before everything that was composed.
    private static int rank(HvlFragment fragment)
    {
        return fragment instanceof HvlFragmentImpl composed ? composed.rank() : -1;
    }

    // Every remaining fragment has a remaining predecessor, so walking back leads into a cycle.
    private String cycle()
    {
        Set<HvlFragment> path = new LinkedHashSet<>();
        HvlFragment at = _byId.values().stream()
                             .filter(this::isWaiting)
                             .min(Comparator.comparingInt(ExecutionOrder::rank))
                             .orElseThrow();
        while (path.add(at)) {
            at = at.getPredecessorFragmentIds().stream()
                     .map(_byId::get)
                     .filter(f -> f != null && isWaiting(f))
                     .findFirst()
                     .orElseThrow();
        }
        List<HvlFragment> walk = new ArrayList<>(path);
        List<HvlFragment> cycle = walk.subList(walk.indexOf(at), walk.size());
        Collections.reverse(cycle);
        return cycle.stream().map(Object::toString).collect(Collectors.joining(", "));
    }

    private boolean isWaiting(HvlFragment fragment)
    {
        return _missing.get(fragment.getId()) > 0;
    }
}
