package com.zor.json.java;

/** Limits for reading and writing. */
final class JsonLimits
{
    /**
     * The deepest nesting of objects and arrays. The job language has the same limit, so every
     * object fits into a job. The limit also stops at an object that contains itself.
     */
    static final int NESTING = 500;

    /** The longest integer, in digits. */
    static final int DIGITS = 1000;

    private JsonLimits()
    {
    }
}
