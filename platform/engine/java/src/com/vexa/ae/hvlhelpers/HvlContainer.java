package com.vexa.ae.hvlhelpers;

import com.vexa.ae.hvlhelpers.impl.HvlNames;
import com.zor.json.java.JSONObject;

/** A named file of a job. A component reads it or, with the export flag, writes it. */
public final class HvlContainer
{
    private final JSONObject _json = new JSONObject();

    HvlContainer(String name, String uri, boolean export)
    {
        HvlNames.present(name, "a container");
        if (uri == null) {
            throw new IllegalArgumentException("the container \"" + name + "\" has no address");
        }
        if (export) {
            _json.put("export", true);
        }
        _json.put("name", name);
        _json.put("uri", uri);
    }

    /** The JSON object of the container in a job text. */
    @Override
    public String toString()
    {
        return _json.toString();
    }
}
