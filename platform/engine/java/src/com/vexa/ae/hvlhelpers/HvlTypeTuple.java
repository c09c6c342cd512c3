package com.vexa.ae.hvlhelpers;

import java.util.Arrays;
import java.util.Objects;
import java.util.stream.Collectors;

/** A tuple type: {@code (Real, String)}. */
public final class HvlTypeTuple implements HvlType
{
    private final HvlType[] _elements;

    public HvlTypeTuple(HvlType[] elements)
    {
        if (elements == null || elements.length == 0) {
            throw new IllegalArgumentException("a tuple type needs an element type");
        }
        if (Arrays.stream(elements).anyMatch(Objects::isNull)) {
            throw new IllegalArgumentException("an element type of a tuple type is missing");
        }
        _elements = elements.clone();
    }

    @Override
    public String generate()
    {
        return Arrays.stream(_elements)
            .map(HvlType::generate)
            .collect(Collectors.joining(", ", "(", ")"));
    }
}
