package com.vexa.ae.cluster;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import org.sparkproject.com.google.protobuf.ByteString;
import org.sparkproject.org.apache.arrow.flatbuf.Buffer;
import org.sparkproject.org.apache.arrow.flatbuf.FieldNode;
import org.sparkproject.org.apache.arrow.flatbuf.Message;
import org.sparkproject.org.apache.arrow.flatbuf.MessageHeader;
import org.sparkproject.org.apache.arrow.flatbuf.RecordBatch;
import org.sparkproject.org.apache.arrow.flatbuf.Schema;
import org.sparkproject.org.apache.arrow.flatbuf.Type;

/** Finds the columns in a stream of Arrow messages, which holds a schema and at most one batch.
 * The bytes are copied once, from the network's memory to the block. */
final class ArrowReader
{
    private static final int CONTINUES = 0xFFFFFFFF;

    private ByteBuffer block = ByteBuffer.allocateDirect(1 << 16);
    private final Message message = new Message();
    private boolean[] isText = {};

    ColumnBatch read(ByteString stream) throws ClusterFault
    {
        ByteBuffer bytes = copy(stream);
        ColumnBatch batch = new ColumnBatch(0, bytes, new long[0]);
        int position = 0;
        while (position + 8 <= bytes.limit() && bytes.getInt(position) == CONTINUES) {
            int length = bytes.getInt(position + 4);
            if (length == 0) {
                break;
            }
            int body = position + 8 + length;
            Message.getRootAsMessage(at(bytes, position + 8), message);
            if (message.headerType() == MessageHeader.Schema) {
                readSchema((Schema) message.header(new Schema()));
            } else if (message.headerType() == MessageHeader.RecordBatch) {
                batch = columns((RecordBatch) message.header(new RecordBatch()), bytes, body);
            } else {
                throw unreadable("a message of kind " + message.headerType());
            }
            position = Math.toIntExact(body + message.bodyLength());
        }
        return batch;
    }

    private ByteBuffer copy(ByteString stream)
    {
        if (block.capacity() < stream.size()) {
            block = ByteBuffer.allocateDirect(Math.max(stream.size(), 2 * block.capacity()));
        }
        block.clear();
        stream.copyTo(block);
        block.flip();
        return block.order(ByteOrder.LITTLE_ENDIAN);
    }

    private static ByteBuffer at(ByteBuffer bytes, int position)
    {
        return bytes.duplicate().order(ByteOrder.LITTLE_ENDIAN).position(position);
    }

    private void readSchema(Schema schema) throws ClusterFault
    {
        isText = new boolean[schema.fieldsLength()];
        for (int index = 0; index < isText.length; ++index) {
            byte type = schema.fields(index).typeType();
            switch (type) {
                case Type.Utf8, Type.Binary -> isText[index] = true;
                case Type.Bool, Type.Int, Type.FloatingPoint, Type.Decimal, Type.Date, Type.Time,
                    Type.Timestamp, Type.Duration -> isText[index] = false;
                default -> throw unreadable(
                    "column " + (index + 1) + ", of the Arrow type " + Type.name(type));
            }
        }
    }

    private ColumnBatch columns(RecordBatch batch, ByteBuffer bytes, int body) throws ClusterFault
    {
        if (batch.compression() != null) {
            throw unreadable("a compressed batch");
        }
        long[] layout = new long[ColumnBatch.STRIDE * isText.length];
        FieldNode node = new FieldNode();
        Buffer buffer = new Buffer();
        int number = 0;
        for (int column = 0; column < isText.length; ++column) {
            int at = ColumnBatch.STRIDE * column;
            layout[at] = batch.nodes(node, column).nullCount();
            // Validity, offsets of texts, values.
            for (int part = 0; part < 3; ++part) {
                if (part == 1 && !isText[column]) {
                    continue;
                }
                batch.buffers(buffer, number++);
                layout[at + 1 + 2 * part] = body + buffer.offset();
                layout[at + 2 + 2 * part] = buffer.length();
            }
        }
        return new ColumnBatch(batch.length(), bytes, layout);
    }

    private static ClusterFault unreadable(String what)
    {
        return new ClusterFault(ClusterFault.Kind.USE, "A result has " + what + ", which cannot be read", null);
    }
}
