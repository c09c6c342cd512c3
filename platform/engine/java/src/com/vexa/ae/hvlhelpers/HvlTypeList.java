package com.vexa.ae.hvlhelpers;

/** The type of a list: {@code [Real]}. */
public final class HvlTypeList implements HvlType
{
    private final HvlType _element;

    public HvlTypeList(HvlType element)
    {
        if (element == null) {
            throw new IllegalArgumentException("the element type of a list type is missing");
        }
        _element = element;
    }

    @Override
    public String generate()
    {
        return "[" + _element.generate() + "]";
    }
}
