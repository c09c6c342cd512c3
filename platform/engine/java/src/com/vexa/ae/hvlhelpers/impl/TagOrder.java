package com.vexa.ae.hvlhelpers.impl;

import java.util.Comparator;

/**
 * Ascending order of tags. Digits compare as a number: str2 comes before str10. So inputs with
 * numbered tags keep the order of their numbers.
 */
final class TagOrder implements Comparator<String>
{
    static final TagOrder INSTANCE = new TagOrder();

    @Override
    public int compare(String left, String right)
    {
        int i = 0;
        int j = 0;
        while (i < left.length() && j < right.length()) {
            int leftEnd = endOfDigits(left, i);
            int rightEnd = endOfDigits(right, j);
            boolean numbers = leftEnd > i && rightEnd > j;
            int order = numbers
                ? compareNumbers(left.substring(i, leftEnd), right.substring(j, rightEnd))
                : Character.compare(left.charAt(i), right.charAt(j));
            if (order != 0) {
                return order;
            }
            i = numbers ? leftEnd : i + 1;
            j = numbers ? rightEnd : j + 1;
        }
        int order = Integer.compare(left.length() - i, right.length() - j);
        // Tags that differ only in leading zeros are different.
        return order != 0 ? order : left.compareTo(right);
    }

    private static int endOfDigits(String text, int from)
    {
        int end = from;
        while (end < text.length() && HvlNames.isDigit(text.charAt(end))) {
            ++end;
        }
        return end;
    }

    private static int compareNumbers(String left, String right)
    {
        String first = left.replaceFirst("^0+", "");
        String second = right.replaceFirst("^0+", "");
        int order = Integer.compare(first.length(), second.length());
        return order != 0 ? order : first.compareTo(second);
    }
}
