package com.vexa.ae.hvlhelpers.impl;

import java.util.Set;

/** The lexical rules of the job language: names, quoted names and strings. */
public final class HvlNames
{
    private static final Set<String> RESERVED =
        Set.of("_", "val", "if", "else", "true", "false", "null");
    private static final String CONTROLS = "\b\f\n\r\t";
    private static final String CONTROL_LETTERS = "bfnrt";

    private HvlNames()
    {
    }

    /**
     * Returns the text if it is not empty. Otherwise throws a message that begins with {@code
     * what}.
     */
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

    /** Whether a text is a valid name without quotes. */
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

    /** The name of a parameter. It cannot be quoted. */
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
        return quoted(text, '"');
    }

    /** A field name after a dot. */
    static String field(String name)
    {
        return isName(present(name, "a field")) ? name : quoted(name, '`');
    }

    /** The tag of an input, or a field of a record type. */
    static String label(String name)
    {
        return isName(name) ? name : string(name);
    }

    // All quoting of the renderer is here. An unescaped quote or backslash would end the quoted
    // text too early or hide its end. Then a name could add steps to the job.
    private static String quoted(String text, char quote)
    {
        StringBuilder result = new StringBuilder(text.length() + 2).append(quote);
        for (int i = 0; i < text.length(); ++i) {
            char c = text.charAt(i);
            int escape = CONTROLS.indexOf(c);
            if (c == quote || c == '\\') {
                result.append('\\').append(c);
            } else if (escape >= 0) {
                result.append('\\').append(CONTROL_LETTERS.charAt(escape));
            } else if (c < ' ') {
                result.append(String.format("\\u%04X", (int) c));
            } else {
                result.append(c);
            }
        }
        return result.append(quote).toString();
    }
}
