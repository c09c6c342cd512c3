package com.zor.json.java;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonLocation;
import com.fasterxml.jackson.core.JsonParser;
import com.fasterxml.jackson.core.JsonProcessingException;
import com.fasterxml.jackson.core.JsonToken;
import com.fasterxml.jackson.core.StreamReadFeature;
import java.io.IOException;
import java.util.ArrayDeque;
import java.util.Deque;
import java.util.regex.Pattern;

/** Builds the tree of a JSON text, without recursion. */
final class JsonReader implements AutoCloseable
{
    private static final JsonFactory FACTORY =
        JsonFactory.builder().disable(StreamReadFeature.INCLUDE_SOURCE_IN_LOCATION).build();
    /** The source reference in messages of the parser. */
    private static final Pattern SOURCE = Pattern.compile("\\[Source: [^;]*; ([^]]*)\\]");

    private final JsonParser _parser;
    private final Deque<Object> _open = new ArrayDeque<>();
    private final Deque<String> _keys = new ArrayDeque<>();

    private JsonReader(String text) throws IOException
    {
        _parser = FACTORY.createParser(text);
    }

    /**
     * Parses the whole text as one value of the given class. Anything else throws JSONException.
     */
    static <T> T read(String text, Class<T> wanted)
    {
        if (text == null) {
            throw new JSONException("no JSON text is given");
        }
        try (JsonReader reader = new JsonReader(text)) {
            return reader.readWhole(wanted);
        } catch (JsonProcessingException e) {
            throw new JSONException(at(e.getLocation())
                                    + SOURCE.matcher(e.getOriginalMessage()).replaceAll("$1"));
        } catch (IOException e) {
            throw new JSONException(e.getMessage());
        }
    }

    @Override
    public void close() throws IOException
    {
        _parser.close();
    }

    private <T> T readWhole(Class<T> wanted) throws IOException
    {
        if (_parser.nextToken() == null) {
            throw new JSONException("the JSON text is empty");
        }
        Object root = openOrScalar(_parser.currentToken());
        if (!wanted.isInstance(root)) {
            throw failure("the text is not a JSON "
                          + (wanted == JSONObject.class ? "object" : "array"));
        }
        while (!_open.isEmpty()) {
            step(_parser.nextToken());
        }
        if (_parser.nextToken() != null) {
            throw failure("text follows the end of the JSON value");
        }
        return wanted.cast(root);
    }

    private void step(JsonToken token) throws IOException
    {
        if (token == JsonToken.FIELD_NAME) {
            _keys.push(_parser.currentName());
        } else if (token.isStructEnd()) {
            _open.pop();
        } else {
            // The container of the value is the one on top before the value is opened.
            Object container = _open.peek();
            Object value = openOrScalar(token);
            if (container instanceof JSONObject object) {
                object.put(_keys.pop(), value);
            } else {
                ((JSONArray) container).add(value);
            }
        }
    }

    private Object openOrScalar(JsonToken token) throws IOException
    {
        return switch (token) {
            case START_OBJECT -> open(new JSONObject());
            case START_ARRAY -> open(new JSONArray());
            case VALUE_STRING -> _parser.getText();
            case VALUE_NUMBER_INT -> integer();
            case VALUE_NUMBER_FLOAT -> finite(_parser.getDoubleValue());
            case VALUE_TRUE -> Boolean.TRUE;
            case VALUE_FALSE -> Boolean.FALSE;
            default -> null;
        };
    }

    private Object open(Object container)
    {
        if (_open.size() == JsonLimits.NESTING) {
            throw failure("the JSON text is nested deeper than " + JsonLimits.NESTING + " levels");
        }
        _open.push(container);
        return container;
    }

    private Number integer() throws IOException
    {
        // The conversion time grows with the square of the length.
        if (_parser.getTextLength() > JsonLimits.DIGITS) {
            throw failure("a number has more than " + JsonLimits.DIGITS + " digits");
        }
        return _parser.getNumberValue();
    }

    private Double finite(double value) throws IOException
    {
        if (Double.isInfinite(value)) {
            throw failure("the number " + _parser.getText() + " is out of range");
        }
        return value;
    }

    private JSONException failure(String what)
    {
        return new JSONException(at(_parser.getTokenLocation()) + what);
    }

    private static String at(JsonLocation location)
    {
        // Messages about the parser's own limits have no location.
        if (location == null) {
            return "";
        }
        return "line " + location.getLineNr() + ", column " + location.getColumnNr() + ": ";
    }
}
