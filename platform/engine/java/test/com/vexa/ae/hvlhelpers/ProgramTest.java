package com.vexa.ae.hvlhelpers;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.vexa.ae.hvlhelpers.HvlExpression.SimpleTypes;
import com.vexa.ae.hvlhelpers.impl.HvlFunctionImpl;
import com.zor.json.java.JSONException;
import com.zor.json.java.JSONObject;
import java.util.Arrays;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** The functions of a program, each as its definitions and its call. */
class ProgramTest
{
    private final Composer _composer = new Composer();
    private final HvlProgram _program = _composer.program;
    private final HvlFunctionParameter.Factory _factory =
        HvlFunctionParameter.FactoryInstance.getFactory();

    private static void refused(Runnable call, String part)
    {
        String message = assertThrows(IllegalArgumentException.class, call::run).getMessage();
        assertTrue(message.contains(part), message);
    }

    private static void assertFunction(String definitions, String call, HvlFunction function)
    {
        HvlFunctionImpl implementation = (HvlFunctionImpl) function;
        assertEquals(definitions, implementation.generateConfiguration());
        assertEquals(call, implementation.generateInvocation(null));
    }

    @Test
    void aConfigurationIsBoundAsItIsAtCreation()
    {
        JSONObject configuration = Composer.json("{\"b\": 1, \"a\": \"x/y\"}");
        HvlFunction read = _program.createHvlFunction("read", configuration);
        configuration.put("c", Double.NaN);
        assertFunction("val f1Conf = {\"b\":1,\"a\":\"x/y\"}", "read(f1Conf)", read);
        assertEquals("f1", read.getId());
        assertEquals("read", read.getName());

        assertThrows(JSONException.class,
                     () -> _program.createHvlFunction("write", configuration, read));
        assertFunction("", "write(_)", _composer.open("write", read));
        assertEquals("f1", _program.getFragments().iterator().next().toHVLText().substring(4, 6));
    }

    @Test
    void aListOfConfigurationsFillsPlaces()
    {
        HvlFunction read = _composer.open("read", null);
        JSONObject export = Composer.json("{\"export\":true}");
        assertFunction("val f2Conf = {\"export\":true}", "dataModelBuilder(_, f2Conf)",
                       _program.createHvlFunction("dataModelBuilder",
                                                  Arrays.asList(null, export), read));
        assertFunction("val f3Conf = {\"export\":true}\nval f3Conf2 = {\"export\":true}",
                       "dataModelBuilder(f3Conf, f3Conf2)",
                       _program.createHvlFunction("dataModelBuilder", List.of(export, export),
                                                  read));
        assertFunction("", "dataModelBuilder()",
                       _program.createHvlFunction("dataModelBuilder", (List<JSONObject>) null,
                                                  null));
    }

    @Test
    void theRecordMayDeclareItsTypes()
    {
        HvlFunction read = _composer.open("read", null);
        HvlExpression body = _composer.field("F");
        Map<String, SimpleTypes> types = new HashMap<>();
        types.put("G 1", SimpleTypes.String);
        types.put("F", SimpleTypes.Real);
        types.put("if", null);
        String record = "{F: Real, \"G 1\": String, \"if\": Any}";
        assertFunction("val f2Lambda = ctx => x: " + record + " => x.F",
                       "filterRecords(_, f2Lambda)",
                       _program.createHvlFunctionFilterRecords(body, read, types));
        assertFunction("val f3Lambda = ctx => x => (\"A\", x.F)", "deriveField(_, f3Lambda)",
                       _program.createHvlFunctionDeriveFields(
                           _program.createHvlFieldDerive("A", body), read, Map.of()));

        HvlExpression lambda = _composer.template("c => row => row.F");
        assertFunction("val f4Lambda = c => row => row.F", "filterRecords(_, f4Lambda)",
                       _program.createHvlFunctionFilterRecords(lambda, read));
        refused(() -> _program.createHvlFunctionFilterRecords(lambda, read, types), "types");
        refused(() -> _program.createHvlFunctionFilterRecords(null, read), "missing");
        refused(() -> _program.createHvlFunctionDeriveFields(null, read), "missing");
        refused(() -> _program.createHvlFieldDerive("A", null), "\"A\"");
        refused(() -> _program.createHvlFieldDerive("", body), "no name");
    }

    @Test
    void aComponentTakesContainers()
    {
        HvlContainer in = _program.createContainer("in", "file:///a", false);
        HvlContainer out = _program.createContainer("out", "file:///b", true);
        JSONObject configuration = Composer.json("{}");
        assertFunction("val f1Conf = {}\nval f1In = [{\"name\":\"in\",\"uri\":\"file:///a\"}]\n"
                           + "val f1Out = [{\"export\":true,\"name\":\"out\","
                           + "\"uri\":\"file:///b\"}]",
                       "scoring:scoring(f1Conf, f1In, f1Out)",
                       _program.createHvlFunction("scoring:scoring", configuration, List.of(in),
                                                  List.of(out), null));
        assertFunction("", "a:b(_, _, _)",
                       _program.createHvlFunction("a:b", null, (List<HvlContainer>) null, null,
                                                  null));
        refused(() -> _program.createContainer(null, "u", true), "no name");
        refused(() -> _program.createContainer("c", null, true), "\"c\"");
        refused(() -> HvlHelpers.formatContainerListJSON(new String[1], new String[2],
                                                         new boolean[1]), "2 addresses");
    }

    @Test
    void taggedInputsStandInOrderOfTag()
    {
        HvlFunction a = _composer.open("read", null);
        HvlFunction b = _composer.open("read", null);
        HvlFunction join = _composer.join(new HashMap<>(Map.of("str2", b, "str1", a, "a b", b)));
        assertFunction("", "join(_, \"a b\": f2, str1: f1, str2: f2)", join);
        assertEquals(List.of("a b", "str1", "str2"),
                     _program.getPredecessors(join).stream().map(i -> i.getTag()).toList());
        assertSame(a, _program.getPredecessors(join).get(1).getFunction());
        assertFunction("", "join(_)", _composer.join(null));
        Map<String, HvlFunction> many = new HashMap<>();
        List.of("str10", "str2", "str02", "str9x", "str", "str1", "s3")
            .forEach(tag -> many.put(tag, a));
        assertEquals(List.of("s3", "str", "str1", "str02", "str2", "str9x", "str10"),
                     _program.getPredecessors(_composer.join(many)).stream()
                         .map(i -> i.getTag()).toList());

        Map<String, HvlFunction> missing = new HashMap<>();
        missing.put("l", null);
        refused(() -> _composer.join(missing), "\"l\"");
        Map<String, HvlFunction> untagged = new HashMap<>();
        untagged.put(null, a);
        refused(() -> _composer.join(untagged), "without a tag");
    }

    @Test
    void aGeneralFunctionTakesWhatTheFactoryMakes()
    {
        HvlFunction a = _composer.open("read", null);
        HvlFunction b = _composer.open("read", null);
        JSONObject json = Composer.json("{\"k\":1}");
        HvlExpression call = _composer.template(" toReal(3)");
        List<HvlContainer> containers = Arrays.asList(
            null, _program.createContainer("c", "u", false));
        HvlFunction bound = _composer.general(
            "ns:step", _factory.createJson(json, true), _factory.createInput(a),
            _factory.createExpression(call, true),
            _factory.createExpression(_composer.template("x => x"), true), null,
            _factory.createContainers(containers, true), _factory.createRaw("[1]", true),
            _factory.createInputs(Map.of("t", b), true));
        // On the right side of `=` a call would be a step.
        assertFunction("val f3Conf = {\"k\":1}\nval f3Value = (toReal(3))\nval f3Lambda = x => x\n"
                           + "val f3Containers = [{\"name\":\"c\",\"uri\":\"u\"}]\nval f3Raw = [1]",
                       "ns:step(f3Conf, f3Value, f3Lambda, _, f3Containers, f3Raw, t: f2)", bound);
        assertEquals("", _program.getPredecessors(bound).get(0).getTag());

        assertFunction("", "step({\"k\":1}, toReal(3), [], x.`a`, f2, _, _, _, _)",
                       _composer.general("step", _factory.createJson(json, false),
                                         _factory.createExpression(call, false),
                                         _factory.createContainers(List.of(), false),
                                         _factory.createRaw("x.`a`", false),
                                         _factory.createInputs(Map.of("t", b), false),
                                         _factory.createJson(null, true),
                                         _factory.createExpression(null, true),
                                         _factory.createContainers(null, true),
                                         _factory.createRaw(null, true),
                                         _factory.createInput(null),
                                         _factory.createInputs(null, true)));
        assertFunction("", "step()",
                       _program.createHvlFunctionGeneral("step", (HvlFunctionParameter[]) null));
        refused(() -> _composer.general("step", _factory.createInput(a), _factory.createInput(b)),
                "more than one piped input");
        refused(() -> _composer.general("step", _factory.createRaw("  ", false)), "argument 1");
    }

    @Test
    void textsAndChainsAsArguments()
    {
        HvlFunction a = _composer.open("read", null);
        HvlFunction b = _composer.open("read", null);
        assertFunction("val f3Conf = {}", "step(f3Conf, 1 + 2, _)",
                       _program.createHvlFunctionGeneral("step", Composer.json("{}"),
                                                         new String[] {"1 + 2", null}, a));
        assertFunction("", "step(_)",
                       _program.createHvlFunctionGeneral("step", null, null, null));
        HvlFunction meta = _program.createHvlMetaFunction("each", null, a, b);
        assertFunction("", "each(_, f1)", meta);
        assertEquals(List.of(b, a),
                     _program.getPredecessors(meta).stream().map(i -> i.getFunction()).toList());
        assertFunction("", "each(_, _)", _program.createHvlMetaFunction("each", null, null, null));
    }

    @ParameterizedTest
    @ValueSource(strings = {"", "a b", "a:", ":a", "a:b:c", "if", "val:a", "1", "a(", "a->b"})
    void aFunctionHasAName(String name)
    {
        assertThrows(IllegalArgumentException.class, () -> _composer.open(name, null));
    }

    @Test
    void aFunctionOfAnotherProgramIsRefused()
    {
        HvlFunction foreign = new Composer().open("read", null);
        HvlFunction own = _composer.open("read", null);
        refused(() -> _composer.open("write", foreign), "read (f1)");
        refused(() -> _composer.join(Map.of("a", foreign)), "another program");
        refused(() -> _program.createHvlMetaFunction("m", null, foreign, null), "another program");
        refused(() -> _program.addDependency(own, foreign), "another program");
        refused(() -> _program.addDependency(null, own), "missing");
        refused(() -> _program.getPredecessors(foreign), "another program");
        refused(() -> _composer.open(null, null), "no name");
        assertEquals("f2", _composer.open("write", own).getId(), "a failure takes no id");
    }

    @Test
    void aCloneGoesItsOwnWay()
    {
        HvlFunction read = _composer.open("read", null);
        Composer copy = new Composer(_program.clone());
        HvlFunction filter = copy.open("filter", read);
        HvlFunction write = _composer.open("write", read);
        assertEquals("read(_) -> filter(_)", copy.text());
        assertEquals("read(_) -> write(_)", _composer.text());
        assertEquals(write.getId(), filter.getId());
        refused(() -> copy.open("step", write), "write (f2)");
    }

    @Test
    void givenTextStandsFirstAndKeepsItsNames()
    {
        Composer composer = new Composer(new HvlProgram("val f2Conf = 1"));
        composer.open("read", composer.open("read", null));
        assertEquals("val f2Conf = 1\nread(_) -> read(_)", composer.text());
        assertEquals("f3", composer.fragments().get(1).getId());
        HvlFragment text = composer.fragments().get(0);
        assertFalse(text.containsFunction(null));
        assertEquals("", new Composer(new HvlProgram("")).fragments().get(0).toHVLText());
        assertEquals(List.of(), _composer.fragments());
    }
}
