package com.zor.json.java;

import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CharsetEncoder;
import java.nio.charset.CodingErrorAction;
import java.nio.charset.StandardCharsets;
import java.util.Arrays;

/**
 * A JSON value in two arrays. Native code copies both instead of asking for each value.
 *
 * The first array holds two numbers for each value, a container before its content and a key before
 * its member. The first number is the kind plus {@link #KINDS} times the index of the value after
 * the content. The second depends on the kind: the number itself, the bits of a double, 0 or 1, or
 * the count of elements or members. For a text it is the position in the second array (UTF-8) in
 * the upper half and the length in the lower half.
 */
public final class JSONImage
{
    static final int KINDS = 8;
    private static final int NULL = 0;
    private static final int FLAG = 1;
    private static final int INTEGER = 2;
    private static final int REAL = 3;
    private static final int TEXT = 4;
    private static final int ARRAY = 5;
    private static final int OBJECT = 6;
    private static final byte[] REPLACEMENT = {(byte) 0xEF, (byte) 0xBF, (byte) 0xBD};

    private final CharsetEncoder _encoder = StandardCharsets.UTF_8.newEncoder()
                                                .onMalformedInput(CodingErrorAction.REPLACE)
                                                .replaceWith(REPLACEMENT);
    private long[] _values = new long[64];
    private int _count;
    private byte[] _texts = new byte[256];
    private int _length;
    private int _depth;

    private JSONImage()
    {
    }

    /**
     * The two arrays, a long[] and a byte[].
     *
     * @throws JSONException for more than 500 levels
     */
    public static Object[] of(Object value)
    {
        JSONImage image = new JSONImage();
        image.add(value);
        return new Object[] {Arrays.copyOf(image._values, 2 * image._count),
                             Arrays.copyOf(image._texts, image._length)};
    }

    private void add(Object value)
    {
        if (value instanceof Double real) {
            put(REAL, Double.doubleToRawLongBits(real));
        } else if (value instanceof Integer || value instanceof Long) {
            put(INTEGER, ((Number) value).longValue());
        } else if (value instanceof Number number) {
            put(REAL, Double.doubleToRawLongBits(number.doubleValue()));
        } else if (value instanceof String text) {
            text(text);
        } else if (value instanceof Boolean truth) {
            put(FLAG, truth ? 1 : 0);
        } else if (value instanceof JSONArray array) {
            array(array);
        } else if (value instanceof JSONObject object) {
            object(object);
        } else {
            put(NULL, 0);
        }
    }

    private void array(JSONArray array)
    {
        int own = enter(ARRAY, array.size());
        for (int i = 0; i < array.size(); ++i) {
            add(array.get(i));
        }
        leave(own);
    }

    private void object(JSONObject object)
    {
        int own = enter(OBJECT, object.keySet().size());
        for (String key : object.keySet()) {
            text(key);
            add(object.get(key));
        }
        leave(own);
    }

    private int enter(int kind, int size)
    {
        if (++_depth > JsonLimits.NESTING) {
            throw new JSONException("the JSON value is nested deeper than " + JsonLimits.NESTING
                                    + " levels, or contains itself");
        }
        put(kind, size);
        return _count - 1;
    }

    private void leave(int own)
    {
        --_depth;
        _values[2 * own] = _values[2 * own] % KINDS + (long) KINDS * _count;
    }

    private void put(int kind, long value)
    {
        if (2 * _count == _values.length) {
            _values = Arrays.copyOf(_values, Math.multiplyExact(2, _values.length));
        }
        _values[2 * _count] = kind + (long) KINDS * (_count + 1);
        _values[2 * _count + 1] = value;
        ++_count;
    }

    private void text(String text)
    {
        int most = Math.addExact(_length, Math.multiplyExact(3, text.length()));
        if (most > _texts.length) {
            _texts = Arrays.copyOf(_texts, Math.max(most, (int) Math.min(Integer.MAX_VALUE - 8L,
                                                                        2L * _texts.length)));
        }
        // There is room for any text of this length, so the encoder always finishes.
        ByteBuffer target = ByteBuffer.wrap(_texts, _length, _texts.length - _length);
        _encoder.reset().encode(CharBuffer.wrap(text), target, true);
        put(TEXT, (long) _length << 32 | target.position() - _length);
        _length = target.position();
    }
}
