package com.zor.json.java;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.math.BigInteger;
import java.util.List;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;
import org.junit.jupiter.params.provider.ValueSource;

/** JSON texts and trees, in both directions. */
class JsonTest
{
    @ParameterizedTest
    @ValueSource(strings = {"{}", "{\"b\":1,\"a\":[],\"c\":{\"d\":null}}", "{\"\":true}",
                            "{\"path\":\"file:///a/b\"}", "{\"t\":\"\\\"\\\\\\n\\u0001\"}",
                            "{\"t\":\"\u00e9\u4e2d\ud83d\ude00\"}", "{\"n\":-9223372036854775808}",
                            "{\"n\":0.1,\"e\":1.0E-300,\"z\":-0.0}"})
    void aCompactTextComesBackAsItWas(String text)
    {
        assertEquals(text, JSONObject.parse(text).toString());
        assertEquals("[" + text + "]", JSONArray.parse(" [ " + text + " ] ").serialize());
    }

    @Test
    void aNumberGetsTheSmallestClassThatHoldsIt()
    {
        JSONArray numbers = JSONArray.parse(
            "[2147483647, 2147483648, 9223372036854775808, 1.0, 1e3, -2147483648]");
        assertEquals(Integer.MAX_VALUE, numbers.get(0));
        assertEquals(2147483648L, numbers.get(1));
        assertEquals(new BigInteger("9223372036854775808"), numbers.get(2));
        assertEquals(1.0, numbers.get(3));
        assertEquals(1000.0, numbers.get(4));
        assertEquals(Integer.MIN_VALUE, numbers.get(5));
    }

    @ParameterizedTest
    @CsvSource(delimiter = '|', quoteCharacter = '~',
               value = {"{\"a\": }|line 1, column 8: Unexpected character",
                        "{\"a\": 1,}|line 1, column 10: ", "{\"a\": 1|line 1, column 8: ",
                        "{'a': 1}|line 1, column 3: ", "{a: 1}|line 1, column 3: ",
                        "{\"a\": NaN}|line 1, column ", "{\"a\": 01}|line 1, column ",
                        "{\"a\": 1} x|line 1, column ", "{} {}|line 1, column 4: text follows",
                        "{\"a\": 1e999}|line 1, column 7: the number 1e999 is out of range",
                        "{} // end|line 1, column ", "[]|line 1, column 1: the text is not",
                        "7|line 1, column 1: the text is not", "~~|the JSON text is empty",
                        "~{\n\"a\": 1,\n  oops}~|line 3, column ",
                        "~  ~|the JSON text is empty"})
    void whatIsNoObjectIsRefusedWithItsPlace(String text, String start)
    {
        String message =
            assertThrows(JSONException.class, () -> JSONObject.parse(text)).getMessage();
        assertTrue(message.startsWith(start), message);
        assertTrue(!message.contains("Source"), message);
    }

    @Test
    void sizeIsBounded()
    {
        String deep = "[".repeat(500) + "]".repeat(500);
        assertEquals(deep, JSONArray.parse(deep).toString());
        assertThrows(JSONException.class, () -> JSONArray.parse("[" + deep + "]"));
        assertThrows(JSONException.class, () -> JSONArray.parse("[".repeat(1_000_000)));
        assertThrows(JSONException.class, () -> JSONArray.parse("[" + "9".repeat(1001) + "]"));

        JSONArray own = new JSONArray();
        own.add(own);
        assertThrows(JSONException.class, own::serialize);
    }

    @Test
    void anObjectKeepsTheOrderOfPutting()
    {
        JSONObject object = new JSONObject();
        assertNull(object.put("z", 1));
        object.put("a", null);
        assertEquals(1, object.put("z", 2L));
        object.put("m", 2.0);
        assertEquals("{\"z\":2,\"a\":null,\"m\":2.0}", object.serialize());
        assertEquals(List.of("z", "a", "m"), List.copyOf(object.keySet()));
        assertNull(object.get("a"));
        assertNull(object.get("absent"));
        assertEquals("{\"a\":2,\"b\":3}",
                     JSONObject.parse("{\"a\": 1, \"b\": 3, \"a\": 2}").toString());
    }

    @Test
    void whatJsonDoesNotHaveIsRefused()
    {
        JSONObject object = new JSONObject();
        assertThrows(JSONException.class, () -> object.put(null, 1));
        assertThrows(JSONException.class, () -> object.put(7, 1));
        assertThrows(JSONException.class, () -> object.put("a", new Object()));
        assertThrows(JSONException.class, () -> new JSONArray().add('c'));
        for (double number : new double[] {Double.NaN, Double.NEGATIVE_INFINITY}) {
            object.put("a", number);
            String message = assertThrows(JSONException.class, object::serialize).getMessage();
            assertTrue(message.contains(Double.toString(number)), message);
        }
    }

    @Test
    void theIndentedTextHasAMemberALine()
    {
        JSONObject object =
            JSONObject.parse("{\"a\":[1,{\"b\":2}],\"c\":{},\"d\":[],\"e\":\"x\"}");
        String text = """
            {
              "a": [
                1,
                {
                  "b": 2
                }
              ],
              "c": {},
              "d": [],
              "e": "x"
            }""";
        assertEquals(text, object.serialize(true));
        assertEquals(object.serialize(false), JSONObject.parse(text).serialize());
        assertEquals("[\n  1\n]", JSONArray.parse("[1]").serialize(true));
    }
}
