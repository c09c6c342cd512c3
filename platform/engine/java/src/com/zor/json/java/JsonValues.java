package com.zor.json.java;

import java.math.BigInteger;
import java.util.Set;

/** Tells which Java objects stand for JSON values. */
final class JsonValues
{
    private static final Set<Class<?>> CLASSES =
        Set.of(String.class, Boolean.class, Integer.class, Long.class, BigInteger.class,
               Double.class, JSONObject.class, JSONArray.class);

    private JsonValues()
    {
    }

    /** The value itself; null is JSON's null, and any other class is a JSONException. */
    static Object checked(Object value)
    {
        if (value != null && !CLASSES.contains(value.getClass())) {
            throw new JSONException("a " + value.getClass().getName() + " is not a JSON value");
        }
        return value;
    }
}
