package com.vexa.ae.cluster;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonGenerator;
import java.io.IOException;
import java.io.StringWriter;
import java.util.Map;
import java.util.TreeMap;

/** What the cluster could not do, as data. No caller needs to read the sentences. */
public final class ClusterFault extends Exception
{
    private static final long serialVersionUID = 1L;

    /** Where a fault comes from, which decides what a user can do about it. */
    public enum Kind
    {
        /** The address is not one of a server. Nothing was sent. */
        ADDRESS,
        /** No server answers at the address, or the connection is lost and does not come back. */
        UNREACHABLE,
        /** The server rejects the user. */
        DENIED,
        /** The session is not on the server any more, for example because the server was started
         * again. */
        SESSION_LOST,
        /** The operation was interrupted. */
        INTERRUPTED,
        /** The statement or its data: `condition` says what. */
        STATEMENT,
        /** Everything else on the server. */
        SERVER,
        /** A wrong call of this library, or a result that it cannot read. */
        USE
    }

    private final Kind kind;
    private final String condition;
    private final String sqlState;
    private final transient Map<String, String> parameters;
    private final int start;
    private final int line;

    ClusterFault(Kind kind, String message, Throwable cause)
    {
        this(kind, "", "", Map.of(), -1, 0, message, cause);
    }

    ClusterFault(Kind kind, String condition, String sqlState, Map<String, String> parameters,
            int start, int line, String message, Throwable cause)
    {
        super(message, cause);
        this.kind = kind;
        this.condition = condition == null ? "" : condition;
        this.sqlState = sqlState == null ? "" : sqlState;
        this.parameters = new TreeMap<>(parameters);
        this.start = start;
        this.line = line;
    }

    public Kind kind()
    {
        return kind;
    }

    /** The name of the server's error condition, for example "DIVIDE_BY_ZERO"; "" if it has
     * none. */
    public String condition()
    {
        return condition;
    }

    /** The fault as one JSON object: kind, condition, sqlState, parameters, start, line,
     * message. Members without a value are missing. `start` counts characters of the statement
     * from 0, `line` from 1. */
    public String data()
    {
        StringWriter text = new StringWriter();
        try (JsonGenerator json = new JsonFactory().createGenerator(text)) {
            json.writeStartObject();
            json.writeStringField("kind", kind.name());
            writeIfGiven(json, "condition", condition);
            writeIfGiven(json, "sqlState", sqlState);
            if (parameters != null && !parameters.isEmpty()) {
                json.writeObjectFieldStart("parameters");
                for (Map.Entry<String, String> entry : parameters.entrySet()) {
                    json.writeStringField(entry.getKey(), entry.getValue());
                }
                json.writeEndObject();
            }
            if (start >= 0) {
                json.writeNumberField("start", start);
            }
            if (line > 0) {
                json.writeNumberField("line", line);
            }
            writeIfGiven(json, "message", getMessage());
            json.writeEndObject();
        } catch (IOException impossible) {
            throw new IllegalStateException(impossible); // a text takes everything
        }
        return text.toString();
    }

    private static void writeIfGiven(JsonGenerator json, String name, String value) throws IOException
    {
        if (value != null && !value.isEmpty()) {
            json.writeStringField(name, value);
        }
    }
}
