package com.zor.json.java;

/** A text is not the expected JSON, or a value cannot be expressed in JSON. */
public final class JSONException extends IllegalArgumentException
{
    private static final long serialVersionUID = 1L;

    JSONException(String message)
    {
        super(message);
    }
}
