package com.zor.json.java;

import java.util.Collections;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.Set;

/**
 * A JSON object. Keys keep the order in which they were first put, also in the text. Values are
 * String, Boolean, Integer, Long, BigInteger, Double, JSONObject, JSONArray or null. For one thread
 * at a time.
 */
public final class JSONObject
{
    private final Map<String, Object> _members = new LinkedHashMap<>();

    /** An object without keys. */
    public JSONObject()
    {
    }

    /**
     * Parses one JSON object, strictly: no comments, no trailing text, at most 500 levels. If a key
     * occurs twice, the last value is used. An integer becomes an Integer, a Long or a BigInteger,
     * the smallest that can hold it. Any other number becomes a Double.
     *
     * @throws JSONException with line and column, if the text is anything else
     */
    public static JSONObject parse(String text)
    {
        return JsonReader.read(text, JSONObject.class);
    }

    /** Sets the value of a key, which must be a String. Returns the old value, or null. */
    public Object put(Object key, Object value)
    {
        if (!(key instanceof String name)) {
            throw new JSONException("the key of a JSON object must be a text");
        }
        return _members.put(name, JsonValues.checked(value));
    }

    /** The value of a key; null if the key is absent or its value is null. */
    public Object get(Object key)
    {
        return _members.get(key);
    }

    /** The keys in their order, as an unmodifiable view. */
    public Set<String> keySet()
    {
        return Collections.unmodifiableSet(_members.keySet());
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
