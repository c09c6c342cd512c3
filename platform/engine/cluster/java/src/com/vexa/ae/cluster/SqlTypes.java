package com.vexa.ae.cluster;

import com.fasterxml.jackson.core.JsonFactory;
import com.fasterxml.jackson.core.JsonGenerator;
import java.io.IOException;
import java.io.StringWriter;
import org.apache.spark.connect.proto.DataType;

/** The server's types as names of SQL. */
final class SqlTypes
{
    private SqlTypes() {}

    /** A list with an object for each column: name, type, nullable. */
    static String json(DataType.Struct columns)
    {
        StringWriter text = new StringWriter();
        try (JsonGenerator json = new JsonFactory().createGenerator(text)) {
            json.writeStartArray();
            for (DataType.StructField column : columns.getFieldsList()) {
                json.writeStartObject();
                json.writeStringField("name", column.getName());
                json.writeStringField("type", name(column.getDataType()));
                json.writeBooleanField("nullable", column.getNullable());
                json.writeEndObject();
            }
            json.writeEndArray();
        } catch (IOException impossible) {
            throw new IllegalStateException(impossible); // a text takes everything
        }
        return text.toString();
    }

    private static String name(DataType type)
    {
        return switch (type.getKindCase()) {
            case NULL -> "VOID";
            case BYTE -> "TINYINT";
            case SHORT -> "SMALLINT";
            case INTEGER -> "INT";
            case LONG -> "BIGINT";
            case TIMESTAMP_NTZ -> "TIMESTAMP_NTZ";
            case TIME -> "TIME(" + type.getTime().getPrecision() + ")";
            case CHAR, VAR_CHAR -> "STRING";
            case DECIMAL -> "DECIMAL(" + type.getDecimal().getPrecision() + "," + type.getDecimal().getScale() + ")";
            default -> type.getKindCase().name(); // BOOLEAN, FLOAT, DOUBLE, STRING, DATE, ARRAY, ...
        };
    }
}
