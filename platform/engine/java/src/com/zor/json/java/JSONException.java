package com.zor.json.java;

/** A text that is not the JSON asked for, or a value that JSON cannot express. */
public final class JSONException extends IllegalArgumentException
{
    private static final long serialVersionUID = 1L;

    JSONException(String message)
    {
        super(message);
    }
}
