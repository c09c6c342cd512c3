package com.vexa.ae.hvlhelpers;

import static org.junit.jupiter.api.Assertions.assertEquals;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.junit.jupiter.api.BeforeAll;
import org.junit.jupiter.api.Test;

/** The renderer writes the examples of the language's page. */
class DocumentationTest
{
    private static List<String> _examples;

    @BeforeAll
    static void readExamples() throws IOException
    {
        String page = Files.readString(Path.of(System.getProperty("hvl.page")));
        String section = page.substring(page.indexOf("\n## The renderer\n") + 1);
        int next = section.indexOf("\n## ");
        Matcher block = Pattern.compile("```hvl\n(.*?)\n```", Pattern.DOTALL)
                            .matcher(next < 0 ? section : section.substring(0, next));
        _examples = new ArrayList<>();
        while (block.find()) {
            _examples.add(block.group(1));
        }
        assertEquals(3, _examples.size());
    }

    @Test
    void aChain()
    {
        Composer composer = new Composer();
        HvlProgram program = composer.program;
        HvlFunction read =
            program.createHvlFunction("read", Composer.json("{\"dataSource\": \"weather\"}"));
        HvlFunction warm = program.createHvlFunctionFilterRecords(
            composer.template("%s > 20", composer.field("temp_max")), read);
        HvlFunction spread = program.createHvlFunctionDeriveFields(
            program.createHvlFieldDerive(
                "spread", composer.template("%s - %s", composer.field("temp_max"),
                                            composer.field("temp min"))),
            warm);
        program.createHvlFunction("write", Composer.json("{\"dataSource\": \"spread\"}"), spread);
        assertEquals(_examples.get(0), composer.text());
    }

    @Test
    void sharedAndTaggedChains()
    {
        Composer composer = new Composer();
        HvlFunction people = composer.open("read", null);
        HvlFunction cities = composer.open("read", null);
        composer.open("write", people);
        composer.open("write", composer.join(Map.of("l", people, "1st", cities)));
        assertEquals(_examples.get(1), composer.text());
    }

    @Test
    void boundAndInline()
    {
        Composer composer = new Composer();
        HvlFunctionParameter.Factory factory = HvlFunctionParameter.FactoryInstance.getFactory();
        HvlFunction a = composer.open("read", null);
        HvlFunction b = composer.open("read", null);
        composer.general("ns:step", factory.createJson(Composer.json("{\"k\": 1}"), true),
                         factory.createJson(Composer.json("{\"k\": 2}"), false),
                         factory.createInputs(Map.of("a", a, "b", b), true));
        composer.general("ns:step", factory.createInputs(Map.of("a", a, "b", b), false));
        assertEquals(_examples.get(2), composer.text());
    }
}
