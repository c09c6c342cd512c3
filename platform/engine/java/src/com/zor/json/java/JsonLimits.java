package com.zor.json.java;

/** Bounds that reading and writing share. */
final class JsonLimits
{
    /**
     * Deepest nesting of objects and arrays. The job language has the same bound, so every object
     * that can be built can also stand in a job; and it ends an object that contains itself.
     */
    static final int NESTING = 500;

    /** Longest integer, in digits. */
    static final int DIGITS = 1000;

    private JsonLimits()
    {
    }
}
