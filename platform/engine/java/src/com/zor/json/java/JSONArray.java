package com.zor.json.java;

import java.util.ArrayList;
import java.util.List;

/**
 * A JSON array. Its values have the same types as those of a JSONObject. An index that is out of
 * range throws IndexOutOfBoundsException. For one thread at a time.
 */
public final class JSONArray
{
    private final List<Object> _values;

    /** An array without values. */
    public JSONArray()
    {
        _values = new ArrayList<>();
    }

    /** An array without values that reserves memory for `capacity` values. */
    public JSONArray(int capacity)
    {
        _values = new ArrayList<>(capacity);
    }

    /**
     * Parses one JSON array, by the rules of {@link JSONObject#parse}.
     *
     * @throws JSONException with line and column, if the text is anything else
     */
    public static JSONArray parse(String text)
    {
        return JsonReader.read(text, JSONArray.class);
    }

    /** Appends a value. Always returns true. */
    public boolean add(Object value)
    {
        return _values.add(JsonValues.checked(value));
    }

    /** Inserts a value. The values from the index on move up. */
    public void add(int index, Object value)
    {
        _values.add(index, JsonValues.checked(value));
    }

    /** Replaces a value. Returns the old value. */
    public Object set(int index, Object value)
    {
        return _values.set(index, JsonValues.checked(value));
    }

    /** The value at an index. */
    public Object get(int index)
    {
        return _values.get(index);
    }

    /** The number of values. */
    public int size()
    {
        return _values.size();
    }

    /** The compact JSON text. */
    public String serialize()
    {
        return serialize(false);
    }

    /**
     * The JSON text, on one line or indented.
     *
     * @throws JSONException for a number that is not finite, and for more than 500 levels
     */
    public String serialize(boolean indent)
    {
        return JsonWriter.write(this, indent);
    }

    /** The compact JSON text. */
    @Override
    public String toString()
    {
        return serialize(false);
    }
}
