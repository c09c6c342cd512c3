package com.vexa.ae.cluster;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;
import java.util.List;
import java.util.Objects;

/** Fills a batch value by value, and reads one: what native code does in place. */
final class Columns
{
    private final ByteBuffer _block = ByteBuffer.allocateDirect(16 << 20).order(ByteOrder.LITTLE_ENDIAN);
    private final long[] _layout;
    private int _column;
    private int _end;

    Columns(int columns)
    {
        _layout = new long[ColumnBatch.STRIDE * columns];
    }

    /** Appends a column of one type: Boolean, Integer (a date), Long, Double or String, or null. */
    void add(List<?> values)
    {
        int at = ColumnBatch.STRIDE * _column++;
        Object first = values.stream().map(Object.class::cast).filter(Objects::nonNull).findFirst()
            .orElse(0L);
        int bits = part(at + 1, (values.size() + 7) / 8);
        int offsets = first instanceof String ? part(at + 3, 4 * (values.size() + 1)) : 0;
        int width = first instanceof Integer ? 4 : 8;
        int size = first instanceof String
            ? values.stream().mapToInt(value -> value == null ? 0 : utf8(value).length).sum()
            : first instanceof Boolean ? (values.size() + 7) / 8 : width * values.size();
        int data = part(at + 5, size);
        int text = 0;
        for (int row = 0; row < values.size(); ++row) {
            Object value = values.get(row);
            _layout[at] += value == null ? 1 : 0;
            setBit(bits, row, value != null);
            if (value instanceof Boolean flag) {
                setBit(data, row, flag);
            } else if (value instanceof Integer number) {
                _block.putInt(data + 4 * row, number);
            } else if (value instanceof Long number) {
                _block.putLong(data + 8 * row, number);
            } else if (value instanceof Double number) {
                _block.putDouble(data + 8 * row, number);
            } else if (value instanceof String) {
                _block.put(data + text, utf8(value));
                text += utf8(value).length;
            }
            if (first instanceof String) {
                _block.putInt(offsets + 4 * (row + 1), text);
            }
        }
    }

    ColumnBatch batch(long records)
    {
        return new ColumnBatch(records, _block.duplicate().limit(_end), _layout);
    }

    private int part(int at, int length)
    {
        int start = _end;
        _layout[at] = start;
        _layout[at + 1] = length;
        _end += length + 7 & -8;
        return start;
    }

    private void setBit(int at, int row, boolean value)
    {
        if (value) {
            _block.put(at + row / 8, (byte) (_block.get(at + row / 8) | 1 << row % 8));
        }
    }

    private static byte[] utf8(Object value)
    {
        return value.toString().getBytes(StandardCharsets.UTF_8);
    }

    /** A value as text: dates and times as numbers, decimals without their point, null if
     * missing. */
    static String text(ColumnBatch batch, String type, int column, int row)
    {
        ByteBuffer block = batch.block();
        int at = ColumnBatch.STRIDE * column;
        long[] layout = batch.layout();
        if (layout[at] > 0 && (block.get((int) layout[at + 1] + row / 8) >> row % 8 & 1) == 0) {
            return null;
        }
        int data = (int) layout[at + 5];
        return switch (type.replaceAll("\\(.*", "")) {
            case "BOOLEAN" -> "" + (block.get(data + row / 8) >> row % 8 & 1);
            case "INT", "DATE" -> "" + block.getInt(data + 4 * row);
            case "DOUBLE" -> "" + block.getDouble(data + 8 * row);
            case "DECIMAL" -> "" + block.getLong(data + 16 * row);
            case "STRING" -> {
                int offsets = (int) layout[at + 3] + 4 * row;
                byte[] bytes = new byte[block.getInt(offsets + 4) - block.getInt(offsets)];
                block.get(data + block.getInt(offsets), bytes);
                yield new String(bytes, StandardCharsets.UTF_8);
            }
            default -> "" + block.getLong(data + 8 * row); // BIGINT, TIME, TIMESTAMP_NTZ
        };
    }
}
