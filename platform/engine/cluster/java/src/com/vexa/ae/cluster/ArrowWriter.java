package com.vexa.ae.cluster;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import org.sparkproject.com.google.flatbuffers.FlatBufferBuilder;
import org.sparkproject.com.google.protobuf.ByteString;
import org.sparkproject.com.google.protobuf.UnsafeByteOperations;
import org.sparkproject.org.apache.arrow.flatbuf.Bool;
import org.sparkproject.org.apache.arrow.flatbuf.Buffer;
import org.sparkproject.org.apache.arrow.flatbuf.Date;
import org.sparkproject.org.apache.arrow.flatbuf.DateUnit;
import org.sparkproject.org.apache.arrow.flatbuf.Endianness;
import org.sparkproject.org.apache.arrow.flatbuf.Field;
import org.sparkproject.org.apache.arrow.flatbuf.FieldNode;
import org.sparkproject.org.apache.arrow.flatbuf.FloatingPoint;
import org.sparkproject.org.apache.arrow.flatbuf.Int;
import org.sparkproject.org.apache.arrow.flatbuf.Message;
import org.sparkproject.org.apache.arrow.flatbuf.MessageHeader;
import org.sparkproject.org.apache.arrow.flatbuf.MetadataVersion;
import org.sparkproject.org.apache.arrow.flatbuf.Precision;
import org.sparkproject.org.apache.arrow.flatbuf.RecordBatch;
import org.sparkproject.org.apache.arrow.flatbuf.Schema;
import org.sparkproject.org.apache.arrow.flatbuf.Time;
import org.sparkproject.org.apache.arrow.flatbuf.TimeUnit;
import org.sparkproject.org.apache.arrow.flatbuf.Timestamp;
import org.sparkproject.org.apache.arrow.flatbuf.Type;
import org.sparkproject.org.apache.arrow.flatbuf.Utf8;

/** Makes a stream of Arrow messages from batches of the same columns. The blocks are not copied. */
final class ArrowWriter
{
    private final ByteString schema;
    private final boolean[] isText;

    /** `types` are BOOLEAN, BIGINT, DOUBLE, STRING, DATE, TIME and TIMESTAMP_NTZ. */
    ArrowWriter(String[] names, String[] types) throws ClusterFault
    {
        if (names.length != types.length) {
            throw new ClusterFault(ClusterFault.Kind.USE, "There are not as many names as types", null);
        }
        FlatBufferBuilder builder = new FlatBufferBuilder(1024);
        int[] fields = new int[names.length];
        isText = new boolean[names.length];
        for (int index = 0; index < names.length; ++index) {
            fields[index] = field(builder, names[index], types[index]);
            isText[index] = types[index].equals("STRING");
        }
        int list = Schema.createFieldsVector(builder, fields);
        int header = Schema.createSchema(builder, Endianness.Little, list, 0, 0);
        schema = message(builder, MessageHeader.Schema, header, 0);
    }

    /** The stream refers to the block, which must stay unchanged as long as the stream is used. */
    ByteString write(ColumnBatch batch) throws ClusterFault
    {
        requireLayout(batch);
        FlatBufferBuilder builder = new FlatBufferBuilder(1024);
        RecordBatch.startBuffersVector(builder, numberOfBuffers());
        // Vectors are written from their end.
        for (int column = isText.length - 1; column >= 0; --column) {
            for (int part = 2; part >= 0; --part) {
                if (part != 1 || isText[column]) {
                    writeBuffer(builder, batch.layout, ColumnBatch.STRIDE * column + 1 + 2 * part);
                }
            }
        }
        int buffers = builder.endVector();
        RecordBatch.startNodesVector(builder, isText.length);
        for (int column = isText.length - 1; column >= 0; --column) {
            FieldNode.createFieldNode(builder, batch.records, batch.layout[ColumnBatch.STRIDE * column]);
        }
        int nodes = builder.endVector();
        int header = RecordBatch.createRecordBatch(builder, batch.records, nodes, buffers, 0, 0);
        ByteBuffer block = batch.block.duplicate();
        ByteString body = UnsafeByteOperations.unsafeWrap(block);
        ByteString end = ByteString.copyFrom(new byte[padding(body.size())]);
        return schema.concat(message(builder, MessageHeader.RecordBatch, header, body.size() + end.size()))
            .concat(body).concat(end);
    }

    private static void writeBuffer(FlatBufferBuilder builder, long[] layout, int at)
    {
        Buffer.createBuffer(builder, layout[at], layout[at + 1]);
    }

    private int numberOfBuffers()
    {
        int number = 2 * isText.length;
        for (boolean each : isText) {
            number += each ? 1 : 0;
        }
        return number;
    }

    private void requireLayout(ColumnBatch batch) throws ClusterFault
    {
        if (batch.layout.length != ColumnBatch.STRIDE * isText.length) {
            throw new ClusterFault(ClusterFault.Kind.USE, "The layout has " + batch.layout.length
                + " numbers for " + isText.length + " columns", null);
        }
    }

    private static int field(FlatBufferBuilder builder, String name, String type) throws ClusterFault
    {
        int text = builder.createString(name);
        int children = Field.createChildrenVector(builder, new int[0]);
        return switch (type) {
            case "BOOLEAN" -> field(builder, text, children, Type.Bool, empty(builder, Type.Bool));
            case "STRING" -> field(builder, text, children, Type.Utf8, empty(builder, Type.Utf8));
            case "BIGINT" -> field(builder, text, children, Type.Int, Int.createInt(builder, 64, true));
            case "DOUBLE" -> field(builder, text, children, Type.FloatingPoint,
                FloatingPoint.createFloatingPoint(builder, Precision.DOUBLE));
            case "DATE" -> field(builder, text, children, Type.Date, Date.createDate(builder, DateUnit.DAY));
            case "TIME" -> field(builder, text, children, Type.Time,
                Time.createTime(builder, TimeUnit.NANOSECOND, 64));
            case "TIMESTAMP_NTZ" -> field(builder, text, children, Type.Timestamp,
                Timestamp.createTimestamp(builder, TimeUnit.MICROSECOND, 0));
            default -> throw new ClusterFault(ClusterFault.Kind.USE,
                "Columns of the type " + type + " cannot be sent", null);
        };
    }

    private static int empty(FlatBufferBuilder builder, byte type)
    {
        if (type == Type.Bool) {
            Bool.startBool(builder);
            return Bool.endBool(builder);
        }
        Utf8.startUtf8(builder);
        return Utf8.endUtf8(builder);
    }

    private static int field(FlatBufferBuilder builder, int name, int children, byte kind, int type)
    {
        return Field.createField(builder, name, true, kind, type, 0, children, 0);
    }

    /** A message with its prefix, padded to eight bytes. */
    private static ByteString message(FlatBufferBuilder builder, byte kind, int header, long body)
    {
        int root = Message.createMessage(builder, MetadataVersion.V5, kind, header, body, 0);
        Message.finishMessageBuffer(builder, root);
        byte[] bytes = builder.sizedByteArray();
        int length = bytes.length + padding(bytes.length);
        ByteBuffer message = ByteBuffer.allocate(8 + length).order(ByteOrder.LITTLE_ENDIAN);
        message.putInt(0xFFFFFFFF).putInt(length).put(bytes).clear();
        return UnsafeByteOperations.unsafeWrap(message);
    }

    private static int padding(int length)
    {
        return -length & 7;
    }
}
