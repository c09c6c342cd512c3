package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlContainer;
import com.vexa.ae.hvlhelpers.HvlExpression;
import com.vexa.ae.hvlhelpers.HvlFunction;
import com.vexa.ae.hvlhelpers.HvlFunctionParameter;
import com.zor.json.java.JSONObject;
import java.util.List;
import java.util.Map;

/** The only factory of parameters. It has no state. */
public final class FunctionParameterFactory implements HvlFunctionParameter.Factory
{
    // A parameter keeps its source until its function is created. The lambdas give all kinds the
    // same form.
    private static HvlFunctionParameter parameter(FunctionParameter addition)
    {
        return addition;
    }

    @Override
    public HvlFunctionParameter createContainers(List<HvlContainer> containers, boolean bound)
    {
        return parameter(function -> function.containers(containers, "Containers", bound));
    }

    @Override
    public HvlFunctionParameter createExpression(HvlExpression expression, boolean bound)
    {
        return parameter(function -> function.expression(expression, bound));
    }

    @Override
    public HvlFunctionParameter createInput(HvlFunction input)
    {
        return parameter(function -> function.pipe(input));
    }

    @Override
    public HvlFunctionParameter createInputs(Map<String, HvlFunction> inputs, boolean tagged)
    {
        return parameter(function -> function.inputs(inputs, tagged));
    }

    @Override
    public HvlFunctionParameter createJson(JSONObject json, boolean bound)
    {
        return parameter(function -> function.json(json, bound));
    }

    @Override
    public HvlFunctionParameter createRaw(String text, boolean bound)
    {
        return parameter(function -> function.raw(text, bound));
    }
}
