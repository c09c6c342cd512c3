package com.vexa.ae.hvlhelpers;

import com.zor.json.java.JSONObject;
import java.util.List;
import java.util.Map;
import java.util.stream.Collectors;

/** A program with short forms for the tests, and its job text. */
final class Composer
{
    final HvlProgram program;

    Composer()
    {
        this(new HvlProgram());
    }

    Composer(HvlProgram program)
    {
        this.program = program;
    }

    /** A function with the configuration {"n": name}. The predecessor may be null. */
    HvlFunction step(String name, HvlFunction predecessor)
    {
        return program.createHvlFunction(name, json("{\"n\":\"" + name + "\"}"), predecessor);
    }

    HvlFunction open(String name, HvlFunction predecessor)
    {
        return program.createHvlFunction(name, (JSONObject) null, predecessor);
    }

    HvlFunction join(Map<String, HvlFunction> inputs)
    {
        return program.createHvlFunction("join", (JSONObject) null, inputs);
    }

    HvlFunction general(String name, HvlFunctionParameter... parameters)
    {
        return program.createHvlFunctionGeneral(name, parameters);
    }

    HvlExpression field(String name)
    {
        return program.createHvlExpressionFieldReference(name);
    }

    HvlExpression template(String text, HvlExpression... arguments)
    {
        return program.createHvlExpression(text, arguments);
    }

    static JSONObject json(String text)
    {
        return JSONObject.parse(text);
    }

    List<HvlFragment> fragments()
    {
        return HvlProgram.sortFragmentsIntoExecutionOrder(program.getFragments());
    }

    String text()
    {
        return fragments().stream().map(HvlFragment::toHVLText).collect(Collectors.joining("\n"));
    }
}
