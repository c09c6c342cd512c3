package com.vexa.ae.cluster;

import java.nio.ByteBuffer;

/**
 * Records by columns, in the layout of Apache Arrow, in one block of memory outside the heap. Native code
 * reads and fills it in place: nothing is called for a single value.
 *
 * The layout has seven numbers for each column: how many values are missing, and offset and length in
 * bytes of three parts of the block: validity, text offsets, values. A length of 0 is a part that the
 * column does not have: no validity if no value is missing, offsets only of texts.
 *
 * - validity: one bit for each record, the first one lowest; 0 is a missing value
 * - BOOLEAN: bits as in validity; BIGINT, DOUBLE: 8 bytes; INT, DATE (days since 1970-01-01): 4 bytes
 * - TIMESTAMP_NTZ: 8 bytes, microseconds since 1970-01-01; TIME: 8 bytes, nanoseconds since midnight
 * - STRING: UTF-8; text n is between the numbers n and n + 1 of 4 bytes each in the offsets
 * - DECIMAL: 16 bytes, the number without its point. All numbers are little-endian.
 */
public final class ColumnBatch
{
    /** The numbers that the layout has for a column. */
    public static final int STRIDE = 7;

    final long records;
    final ByteBuffer block;
    final long[] layout;

    public ColumnBatch(long records, ByteBuffer block, long[] layout)
    {
        this.records = records;
        this.block = block;
        this.layout = layout;
    }

    public long records()
    {
        return records;
    }

    /** A direct buffer. One of a result is valid until the next batch is asked for. */
    public ByteBuffer block()
    {
        return block;
    }

    public long[] layout()
    {
        return layout;
    }
}
