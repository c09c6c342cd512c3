package com.zor.json.java;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonGenerator;
import com.fasterxml.jackson.core.util.DefaultIndenter;
import com.fasterxml.jackson.core.util.DefaultPrettyPrinter;
import java.io.IOException;
import java.io.StringWriter;
import java.math.BigInteger;

/** Writes a tree as JSON text. */
final class JsonWriter
{
    private static final JsonFactory FACTORY = new JsonFactory();

    private final JsonGenerator _generator;
    private int _depth;

    private JsonWriter(JsonGenerator generator)
    {
        _generator = generator;
    }

    /** Two spaces for each level, one member on each line, and line feeds on every system. */
    private static final class Layout extends DefaultPrettyPrinter
    {
        private static final long serialVersionUID = 1L;

        Layout()
        {
            DefaultIndenter indenter = new DefaultIndenter("  ", "\n");
            indentObjectsWith(indenter);
            indentArraysWith(indenter);
        }

        @Override
        public DefaultPrettyPrinter createInstance()
        {
            return new Layout();
        }

        @Override
        public void writeObjectFieldValueSeparator(JsonGenerator generator) throws IOException
        {
            generator.writeRaw(": ");
        }

        @Override
        public void writeEndObject(JsonGenerator generator, int members) throws IOException
        {
            end(generator, _objectIndenter, members, '}');
        }

        @Override
        public void writeEndArray(JsonGenerator generator, int values) throws IOException
        {
            end(generator, _arrayIndenter, values, ']');
        }

        private void end(JsonGenerator generator, Indenter indenter, int count, char bracket)
            throws IOException
        {
            --_nesting;
            if (count > 0) {
                indenter.writeIndentation(generator, _nesting);
            }
            generator.writeRaw(bracket);
        }
    }

    /** The text of an object or array. A value that JSON cannot express throws JSONException. */
    static String write(Object root, boolean indent)
    {
        StringWriter text = new StringWriter();
        try (JsonGenerator generator = FACTORY.createGenerator(text)) {
            if (indent) {
                generator.setPrettyPrinter(new Layout());
            }
            // After a failure, brackets are still open. Closing must not hide the reason.
            generator.disable(JsonGenerator.Feature.AUTO_CLOSE_JSON_CONTENT);
            new JsonWriter(generator).value(root);
        } catch (IOException e) {
            throw new JSONException(e.getMessage());
        }
        return text.toString();
    }

    private void value(Object value) throws IOException
    {
        if (value instanceof JSONObject object) {
            object(object);
        } else if (value instanceof JSONArray array) {
            array(array);
        } else if (value instanceof String text) {
            _generator.writeString(text);
        } else if (value instanceof Number number) {
            number(number);
        } else if (value instanceof Boolean truth) {
            _generator.writeBoolean(truth);
        } else {
            _generator.writeNull();
        }
    }

    private void object(JSONObject object) throws IOException
    {
        enter();
        _generator.writeStartObject();
        for (String key : object.keySet()) {
            _generator.writeFieldName(key);
            value(object.get(key));
        }
        _generator.writeEndObject();
        --_depth;
    }

    private void array(JSONArray array) throws IOException
    {
        enter();
        _generator.writeStartArray();
        for (int i = 0; i < array.size(); ++i) {
            value(array.get(i));
        }
        _generator.writeEndArray();
        --_depth;
    }

    private void number(Number number) throws IOException
    {
        if (number instanceof Double real) {
            if (!Double.isFinite(real)) {
                throw new JSONException("the number " + real + " cannot be written as JSON");
            }
            _generator.writeNumber(real);
        } else if (number instanceof BigInteger big) {
            _generator.writeNumber(big);
        } else {
            _generator.writeNumber(number.longValue());
        }
    }

    private void enter()
    {
        if (++_depth > JsonLimits.NESTING) {
            throw new JSONException("the JSON value is nested deeper than " + JsonLimits.NESTING
                                    + " levels, or contains itself");
        }
    }
}
