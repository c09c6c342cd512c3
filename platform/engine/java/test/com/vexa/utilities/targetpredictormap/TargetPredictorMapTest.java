package com.vexa.utilities.targetpredictormap;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.List;
import java.util.Set;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.ValueSource;

/** The network of a model as a map of its series. */
class TargetPredictorMapTest
{
    private static final String NETWORK =
        "{\"version\": 7, \"targets\": [{\"series\": \"b\", \"fit\": {\"r2\": 0.9},"
        + " \"predictors\": [{\"series\": \"c\", \"lags\": [1]}, {\"series\": \"b\"}]},"
        + " {\"series\": \"a\", \"predictors\": [{\"series\": \"a\"}]}, {\"series\": \"d\"},"
        + " {\"series\": \"a\", \"predictors\": [{\"series\": \"c\"}, {\"series\": \"a\"}]}]}";

    private final TargetPredictorMap _map = new TargetPredictorMap();

    @Test
    void seriesComeInTheOrderOfTheModelWithPlacesForThePredictors()
    {
        assertTrue(_map.fromJSON(NETWORK));
        assertEquals(List.of("b", "a", "d"), _map.getAllTargetSeries());
        assertEquals(List.of("c", "b", "a"), _map.getAllPredictorSeries());
        assertEquals(Set.of(0, 1), _map.getPredictorIndexSet("b"));
        assertEquals(Set.of(0, 2), _map.getPredictorIndexSet("a"));
        assertEquals(Set.of(), _map.getPredictorIndexSet("d"));
        assertEquals(Set.of(), _map.getPredictorIndexSet("c"));
        assertTrue(_map.isTarget("a") && _map.isPredictor("a"));
        assertTrue(_map.isPredictor("c") && !_map.isTarget("c"));
        assertFalse(_map.isPredictor("d") || _map.isTarget("e"));
    }

    @ParameterizedTest
    @ValueSource(strings = {"", "[]", "{\"targets\": [{\"series\": \"x\"}", "{\"targets\": {}}",
                            "{\"targets\": [\"x\"]}", "{\"targets\": [{\"series\": 1}]}",
                            "{\"targets\": [{\"series\": \"x\"}, {}]}",
                            "{\"targets\": [{\"series\": \"x\", \"predictors\": \"x\"}]}",
                            "{\"targets\": [{\"series\": \"x\", \"predictors\": [null]}]}"})
    void aTextThatIsNoNetworkLeavesTheMapEmpty(String text)
    {
        assertTrue(_map.fromJSON(NETWORK));
        assertFalse(_map.fromJSON(text));
        assertEquals(List.of(), _map.getAllTargetSeries());
        assertEquals(List.of(), _map.getAllPredictorSeries());
    }

    @Test
    void aNetworkWithoutTargetsIsOne()
    {
        assertTrue(_map.fromJSON("{\"targets\": null}"));
        assertEquals(List.of(), _map.getAllTargetSeries());
    }
}
