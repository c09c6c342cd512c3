package com.vexa.ae.hvlhelpers.impl;

import com.fasterxml.jackson.core.io.JsonStringEncoder;
import java.util.Set;

/** The lexical rules of the job language: names, quoted names and strings. */
public final class HvlNames
{
    private static final Set<String> RESERVED =
        Set.of("_", "val", "if", "else", "true", "false", "null");

    private HvlNames()
    {
    }

    /** The text, if there is one; {@code what} is the start of the sentence otherwise. */
    public static String present(String text, String what)
    {
        if (text == null || text.isEmpty()) {
            throw new IllegalArgumentException(what + " has no name");
        }
        return text;
    }

    static boolean isNameStart(char c)
    {
        return c >= 'a' && c <= 'z' || c >= 'A' && c <= 'Z' || c == '_' || c > 0x7f;
    }

    static boolean isDigit(char c)
    {
        return c >= '0' && c <= '9';
    }

    static boolean isNamePart(char c)
    {
        return isNameStart(c) || isDigit(c);
    }

    /** True for a text that can stand as a name without quotes. */
    static boolean isName(String text)
    {
        return !text.isEmpty() && isNameStart(text.charAt(0))
            && text.chars().allMatch(c -> isNamePart((char) c)) && !RESERVED.contains(text);
    }

    /** The name of a step, "name" or "ns:name". */
    static String step(String name)
    {
        present(name, "a function");
        int colon = name.indexOf(':');
        if (!isName(name.substring(colon + 1)) || colon >= 0 && !isName(name.substring(0, colon))) {
            throw new IllegalArgumentException("\"" + name + "\" is not the name of a function");
        }
        return name;
    }

    /** The name of a parameter, which cannot be quoted. */
    static String parameter(String name)
    {
        if (!isName(present(name, "a parameter"))) {
            throw new IllegalArgumentException("\"" + name + "\" is not the name of a parameter");
        }
        return name;
    }

    /** A string literal. */
    static String string(String text)
    {
        return '"' + new String(JsonStringEncoder.getInstance().quoteAsString(text)) + '"';
    }

    /** A field as it follows a dot. */
    static String field(String name)
    {
        if (isName(present(name, "a field"))) {
            return name;
        }
        // Inside backquotes the escapes of a string hold, but it is the backquote that needs one.
        String string = string(name).replace("\\\"", "\"").replace("`", "\\`");
        return '`' + string.substring(1, string.length() - 1) + '`';
    }

    /** A tag of an input, or a field of a record type. */
    static String label(String name)
    {
        return isName(name) ? name : string(name);
    }
}
