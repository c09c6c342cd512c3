package com.vexa.ae.hvlhelpers;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTimeout;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.vexa.ae.hvlhelpers.impl.HvlFunctionImpl;
import java.time.Duration;
import java.util.HashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;
import org.junit.jupiter.api.Test;

/** How functions become pipelines, and the order of these. */
class FragmentTest
{
    private final Composer _composer = new Composer();
    private final HvlProgram _program = _composer.program;

    private List<String> ids()
    {
        return _composer.fragments().stream().map(HvlFragment::getId).toList();
    }

    @Test
    void aChainIsOneStatement()
    {
        HvlFunction read = _composer.step("read", null);
        HvlFunction write = _composer.step("write", _composer.open("filter", read));
        HvlFragment fragment = _composer.fragments().get(0);
        assertEquals("val f1Conf = {\"n\":\"read\"}\nval f3Conf = {\"n\":\"write\"}\n"
                         + "read(f1Conf) -> filter(_) -> write(f3Conf)",
                     fragment.toHVLText());
        assertEquals("f3", fragment.getId());
        assertTrue(fragment.containsFunction(read) && fragment.containsFunction(write));
        assertEquals(Set.of(), fragment.getPredecessorFragmentIds());
        assertEquals("read(f1Conf)", ((HvlFunctionImpl) read).generateInvocation(fragment));
    }

    @Test
    void aChainUsedTwiceIsBoundOnce()
    {
        HvlFunction filter = _composer.open("filter", _composer.open("read", null));
        _composer.open("write", filter);
        _composer.open("write", _composer.open("aggregate", filter));
        assertEquals("val f2 = read(_) -> filter(_)\nf2 -> write(_)\n"
                         + "f2 -> aggregate(_) -> write(_)",
                     _composer.text());
        HvlFragment shared = _composer.fragments().get(0);
        HvlFragment user = _composer.fragments().get(1);
        assertEquals(Set.of("f2"), user.getPredecessorFragmentIds());
        assertFalse(user.containsFunction(filter));
        HvlFunctionImpl elsewhere = _program.getPredecessors(_composer.open("x", filter))
                                        .get(0).getFunction();
        assertThrows(IllegalArgumentException.class, () -> elsewhere.generateInvocation(user));
        assertEquals("filter(_)", elsewhere.generateInvocation(shared));
    }

    @Test
    void aPipedChainIsNamedWhenThereAreOtherInputs()
    {
        HvlFunction a = _composer.open("read", null);
        HvlFunction b = _composer.open("read", null);
        _program.createHvlMetaFunction("each", null, a, b);
        assertEquals("val f1 = read(_)\nval f2 = read(_)\nf2 -> each(_, f1)", _composer.text());
        assertEquals(Set.of("f1", "f2"),
                     _composer.fragments().get(2).getPredecessorFragmentIds());

        Composer twice = new Composer();
        HvlFunction read = twice.open("read", null);
        twice.program.createHvlMetaFunction("each", null, read, read);
        assertEquals("val f1 = read(_)\nf1 -> each(_, f1)", twice.text());
    }

    @Test
    void dependenciesComeFirstThenTheOrderOfCreation()
    {
        HvlFunction first = _composer.open("a", null);
        HvlFunction second = _composer.open("b", null);
        HvlFunction third = _composer.open("c", null);
        assertEquals(List.of("f1", "f2", "f3"), ids());
        _program.addDependency(third, first);
        assertEquals(List.of("f2", "f3", "f1"), ids());
        _program.addDependency(second, third);
        _program.addDependency(second, third);
        assertEquals(List.of("f2", "f3", "f1"), ids());
        assertEquals("b(_)\nc(_)\na(_)", _composer.text());
    }

    @Test
    void aCycleNamesItsFunctions()
    {
        HvlFunction a = _composer.open("a", null);
        HvlFunction b = _composer.open("b", null);
        _composer.open("e", _composer.open("d", null));
        _program.addDependency(a, b);
        _program.addDependency(b, a);
        String message =
            assertThrows(IllegalStateException.class, _composer::fragments).getMessage();
        assertTrue(message.contains("a (f1)") && message.contains("b (f2)"), message);
        assertFalse(message.contains("d (f3)"), message);
    }

    @Test
    void aDependencyInsideAChainFollowsThePipeOrIsACycle()
    {
        HvlFunction a = _composer.open("a", null);
        HvlFunction b = _composer.open("b", a);
        _program.addDependency(a, b);
        assertEquals("a(_) -> b(_)", _composer.text());
        _program.addDependency(b, a);
        String message =
            assertThrows(IllegalStateException.class, _composer::fragments).getMessage();
        assertTrue(message.contains("a (f1) -> b (f2)"), message);

        HvlFunction c = _composer.open("c", null);
        _program.addDependency(c, c);
        assertThrows(IllegalStateException.class, _composer::fragments);
    }

    @Test
    void sortingTakesWhatItGets()
    {
        HvlFunction read = _composer.open("read", null);
        _composer.open("write", read);
        _composer.open("write", read);
        assertEquals(List.of(), HvlProgram.sortFragmentsIntoExecutionOrder(null));
        Set<HvlFragment> some = new HashSet<>(_program.getFragments());
        some.removeIf(fragment -> fragment.getId().equals("f1"));
        assertEquals(List.of("f2", "f3"), HvlProgram.sortFragmentsIntoExecutionOrder(some)
                                              .stream().map(HvlFragment::getId).toList());

        Composer other = new Composer();
        for (int i = 0; i < 4; ++i) {
            other.open("other", null);
        }
        for (HvlFragment foreign : other.program.getFragments()) {
            Set<HvlFragment> mixed = new HashSet<>(some);
            mixed.add(foreign);
            assertThrows(IllegalArgumentException.class,
                         () -> HvlProgram.sortFragmentsIntoExecutionOrder(mixed));
        }
    }

    @Test
    void longProgramsTakeNoStackAndLittleTime()
    {
        assertTimeout(Duration.ofSeconds(20), () -> {
            HvlFunction chain = _composer.open("read", null);
            HvlFunction fan = chain;
            for (int i = 0; i < 10_000; ++i) {
                chain = _composer.open("a", chain);
            }
            HvlFunction last = fan;
            for (int i = 0; i < 10_000; ++i) {
                last = _composer.open("b", last);
                _composer.open("c", last);
            }
            String text = _composer.text();
            // The read, the chain, and two for each turn; the last two are one chain.
            assertEquals(20_001, text.lines().count());
            assertTrue(text.lines().anyMatch(line -> line.length() > 60_000));
            _program.addDependency(last, fan);
            assertThrows(IllegalStateException.class, _composer::fragments);
        });
    }
}
