package com.vexa.ae.hvlhelpers;

import java.util.StringJoiner;

/** Helpers that need no program. */
public final class HvlHelpers
{
    private HvlHelpers()
    {
    }

    /**
     * A JSON array of containers from three parallel arrays; an empty array if one of them is null.
     * {@code exports} marks output containers.
     */
    public static String formatContainerListJSON(String[] names, String[] uris, boolean[] exports)
    {
        if (names == null || uris == null || exports == null) {
            return "[]";
        }
        if (uris.length != names.length || exports.length != names.length) {
            throw new IllegalArgumentException(
                names.length + " container names come with " + uris.length + " addresses and "
                + exports.length + " export flags");
        }
        StringJoiner text = new StringJoiner(",", "[", "]");
        for (int i = 0; i < names.length; ++i) {
            text.add(new HvlContainer(names[i], uris[i], exports[i]).toString());
        }
        return text.toString();
    }
}
