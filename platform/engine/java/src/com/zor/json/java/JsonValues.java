package com.zor.json.java;

import java.math.BigInteger;
import java.util.Set;

/** Checks which Java objects are JSON values. */
final class JsonValues
{
    private static final Set<Class<?>> CLASSES =
        Set.of(String.class, Boolean.class, Integer.class, Long.class, BigInteger.class,
               Double.class, JSONObject.class, JSONArray.class);

    private JsonValues()
    {
    }

    /** Returns the value. Null is JSON's null. Any other class throws JSONException. */
    static Object checked(Object value)
    {
        if (value != null && !CLASSES.contains(value.getClass())) {
            throw new JSONException("a " + value.getClass().getName() + " is not a JSON value");
        }
        return value;
    }
}
