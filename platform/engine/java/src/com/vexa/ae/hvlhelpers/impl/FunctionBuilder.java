package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlContainer;
import com.vexa.ae.hvlhelpers.HvlExpression;
import com.vexa.ae.hvlhelpers.HvlFunction;
import com.vexa.ae.hvlhelpers.HvlFunctionParameter;
import com.zor.json.java.JSONObject;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.TreeMap;
import java.util.function.Predicate;
import java.util.stream.Collectors;

/**
 * Collects the arguments and inputs of one function. Each operation adds the next argument and
 * returns the builder. Null leaves the place open.
 */
public final class FunctionBuilder
{
    private static final String CONFIGURATION = "Conf";
    private static final String LAMBDA = "Lambda";

    private final String _name;
    private final Predicate<HvlFunction> _isOwn;
    private final List<Argument> _arguments = new ArrayList<>();
    private final List<TaggedFunctionInput> _named = new ArrayList<>();
    private HvlFunctionImpl _piped;

    /** {@code isOwn} tests whether a function belongs to the program of this one. */
    public FunctionBuilder(String name, Predicate<HvlFunction> isOwn)
    {
        _name = HvlNames.step(name);
        _isOwn = isOwn;
    }

    /** Makes the function with the id that the program assigns. */
    public HvlFunctionImpl build(String id)
    {
        List<TaggedFunctionInput> inputs = new ArrayList<>();
        if (_piped != null) {
            inputs.add(new TaggedFunctionInput(_piped, ""));
        }
        inputs.addAll(_named);
        return new HvlFunctionImpl(id, _name, _arguments, _piped, inputs);
    }

    /** Sets the function whose records are piped in. It takes no place. Null means none. */
    public FunctionBuilder pipe(HvlFunction function)
    {
        if (function != null) {
            if (_piped != null) {
                throw failure("has more than one piped input");
            }
            _piped = own(function);
        }
        return this;
    }

    /** Adds a place without a value. */
    public FunctionBuilder open()
    {
        _arguments.add(Argument.OPEN);
        return this;
    }

    /** Adds a configuration. Copies its text now. */
    public FunctionBuilder json(JSONObject json, boolean bound)
    {
        return place(json == null ? null : json.toString(), CONFIGURATION, bound);
    }

    /** Adds a place for each element. A null list adds none. */
    public FunctionBuilder jsonList(List<JSONObject> list)
    {
        if (list != null) {
            list.forEach(json -> json(json, true));
        }
        return this;
    }

    /** Adds any expression. */
    public FunctionBuilder expression(HvlExpression expression, boolean bound)
    {
        if (expression == null) {
            return open();
        }
        if (expression.form() == HvlExpression.Form.Lambda) {
            return place(expression.generate(), LAMBDA, bound);
        }
        // On the right side of a definition, a call would be a step and a name a chain.
        String text = expression.generate();
        boolean stepLike = bound && HvlNames.isNameStart(text.charAt(0));
        return place(stepLike ? ExpressionText.parenthesised(expression) : text, "Value", bound);
    }

    /** Adds the containers as one list. Null elements are left out. */
    public FunctionBuilder containers(List<HvlContainer> containers, String label, boolean bound)
    {
        return place(containers == null ? null
                                        : containers.stream()
                                              .filter(Objects::nonNull)
                                              .map(HvlContainer::toString)
                                              .collect(Collectors.joining(", ", "[", "]")),
                     label, bound);
    }

    /** Adds HVL text unchanged. A blank text is an error. */
    public FunctionBuilder raw(String text, boolean bound)
    {
        if (text != null && text.isBlank()) {
            throw failure("has an empty text as argument " + (_arguments.size() + 1));
        }
        return place(text, "Raw", bound);
    }

    /** Adds texts inside the call. A null array adds none. */
    public FunctionBuilder raws(String[] texts)
    {
        if (texts != null) {
            for (String text : texts) {
                raw(text, false);
            }
        }
        return this;
    }

    /** Adds inputs in ascending order of their tags, with the tag or only by position. */
    public FunctionBuilder inputs(Map<String, HvlFunction> inputs, boolean tagged)
    {
        if (inputs == null) {
            return this;
        }
        if (inputs.keySet().stream().anyMatch(Objects::isNull)) {
            throw failure("has an input without a tag");
        }
        Map<String, HvlFunction> ordered = new TreeMap<>(TagOrder.INSTANCE);
        ordered.putAll(inputs);
        ordered.forEach((tag, function) -> {
            if (function == null) {
                throw failure("has no function for the input \"" + tag + "\"");
            }
            byName(own(function), tagged ? tag : null);
        });
        return this;
    }

    /** Adds a chain as an ordinary argument. */
    public FunctionBuilder operand(HvlFunction function)
    {
        if (function == null) {
            return open();
        }
        byName(own(function), null);
        return this;
    }

    /** Adds a parameter. Null leaves its place open. */
    public FunctionBuilder parameter(HvlFunctionParameter parameter)
    {
        if (parameter == null) {
            return open();
        }
        if (!(parameter instanceof FunctionParameter known)) {
            throw failure("has a parameter that the factory has not made");
        }
        known.addTo(this);
        return this;
    }

    private void byName(HvlFunctionImpl function, String tag)
    {
        String prefix = tag == null ? "" : HvlNames.label(tag) + ": ";
        _arguments.add(Argument.inline(prefix + function.getId()));
        _named.add(new TaggedFunctionInput(function, tag == null ? "" : tag));
    }

    private FunctionBuilder place(String value, String label, boolean bound)
    {
        if (value == null) {
            return open();
        }
        _arguments.add(new Argument(bound ? label : null, value));
        return this;
    }

    private HvlFunctionImpl own(HvlFunction function)
    {
        if (!_isOwn.test(function)) {
            throw failure("has " + function + " as an input, which belongs to another program");
        }
        return (HvlFunctionImpl) function;
    }

    private IllegalArgumentException failure(String what)
    {
        return new IllegalArgumentException("the function " + _name + " " + what);
    }
}
