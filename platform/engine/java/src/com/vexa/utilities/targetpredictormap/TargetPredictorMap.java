package com.vexa.utilities.targetpredictormap;

import com.zor.json.java.JSONArray;
import com.zor.json.java.JSONObject;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Map;
import java.util.Set;

/**
 * The targets of a temporal causal model, and the predictors of each target. Series are identified
 * by their ids. Both lists have the order in which the model first names the series. For one thread
 * at a time.
 */
public final class TargetPredictorMap
{
    private final Map<String, Set<Integer>> _targets = new LinkedHashMap<>();
    private final Map<String, Integer> _predictors = new LinkedHashMap<>();

    /** A map without series. */
    public TargetPredictorMap()
    {
    }

    /**
     * Reads the network of a model and replaces the content of the map. Returns false if the text
     * is not a network; the map is then empty.
     */
    public boolean fromJSON(String text)
    {
        clear();
        try {
            read(JSONObject.parse(text));
            return true;
        } catch (IllegalArgumentException exception) {
            clear();
            return false;
        }
    }

    /** Whether the model predicts the series. */
    public boolean isTarget(String series)
    {
        return _targets.containsKey(series);
    }

    /** Whether the series predicts others, or itself. */
    public boolean isPredictor(String series)
    {
        return _predictors.containsKey(series);
    }

    /** All series that the model predicts. */
    public List<String> getAllTargetSeries()
    {
        return new ArrayList<>(_targets.keySet());
    }

    /** All series that predict another series, or themselves. */
    public List<String> getAllPredictorSeries()
    {
        return new ArrayList<>(_predictors.keySet());
    }

    /**
     * The predictors of a target, as positions in the list of all predictors. Empty for any other
     * series.
     */
    public Set<Integer> getPredictorIndexSet(String target)
    {
        return new LinkedHashSet<>(_targets.getOrDefault(target, Set.of()));
    }

    private void clear()
    {
        _targets.clear();
        _predictors.clear();
    }

    private void read(JSONObject network)
    {
        for (Object target : values(network, "targets")) {
            Set<Integer> indexes =
                _targets.computeIfAbsent(seriesOf(target), series -> new LinkedHashSet<>());
            for (Object predictor : values((JSONObject) target, "predictors")) {
                indexes.add(_predictors.computeIfAbsent(seriesOf(predictor),
                                                        series -> _predictors.size()));
            }
        }
    }

    /** The values of an array; empty if it is absent. */
    private static List<Object> values(JSONObject object, String key)
    {
        List<Object> values = new ArrayList<>();
        Object array = object.get(key);
        if (array == null) {
            return values;
        }
        if (!(array instanceof JSONArray list)) {
            throw new IllegalArgumentException(key + " is not a list");
        }
        for (int index = 0; index < list.size(); ++index) {
            values.add(list.get(index));
        }
        return values;
    }

    private static String seriesOf(Object node)
    {
        if (node instanceof JSONObject object && object.get("series") instanceof String series) {
            return series;
        }
        throw new IllegalArgumentException("a node of the network names no series");
    }
}
