package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlFragment;
import com.vexa.ae.hvlhelpers.HvlFunction;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.StringJoiner;

/**
 * A function of a program. It has its text and its inputs but no reference to a program, so a
 * program and its copies share it.
 */
public final class HvlFunctionImpl implements HvlFunction
{
    private final String _id;
    private final String _name;
    private final HvlFunctionImpl _piped;
    private final List<TaggedFunctionInput> _inputs;
    private final String _configuration;
    private final String _invocation;

    HvlFunctionImpl(String id, String name, List<Argument> arguments, HvlFunctionImpl piped,
                    List<TaggedFunctionInput> inputs)
    {
        _id = id;
        _name = name;
        _piped = piped;
        _inputs = List.copyOf(inputs);
        StringJoiner definitions = new StringJoiner("\n");
        StringJoiner places = new StringJoiner(", ", name + "(", ")");
        Map<String, Integer> used = new HashMap<>();
        for (Argument argument : arguments) {
            if (argument.label() == null) {
                places.add(argument.value());
                continue;
            }
            int count = used.merge(argument.label(), 1, Integer::sum);
            String bound = id + argument.label() + (count == 1 ? "" : count);
            definitions.add("val " + bound + " = " + argument.value());
            places.add(bound);
        }
        _configuration = definitions.toString();
        _invocation = places.toString();
    }

    @Override
    public String getId()
    {
        return _id;
    }

    @Override
    public String getName()
    {
        return _name;
    }

    /**
     * The definitions of the function's bound arguments, one on each line.
     */
    public String generateConfiguration()
    {
        return _configuration;
    }

    /**
     * The call, as in the pipeline of its fragment. A fragment that does not contain the function
     * throws IllegalArgumentException. Null means the right fragment.
     */
    public String generateInvocation(HvlFragment fragment)
    {
        if (fragment != null && !fragment.containsFunction(this)) {
            throw new IllegalArgumentException(this + " is not in the fragment "
                                               + fragment.getId());
        }
        return _invocation;
    }

    /** All inputs: first the piped input, then the others in order. */
    public List<TaggedFunctionInput> inputs()
    {
        return _inputs;
    }

    /** The input that is piped with `->`, or null. */
    HvlFunctionImpl piped()
    {
        return _piped;
    }

    /** Name and id, for messages. */
    @Override
    public String toString()
    {
        return _name + " (" + _id + ")";
    }
}
