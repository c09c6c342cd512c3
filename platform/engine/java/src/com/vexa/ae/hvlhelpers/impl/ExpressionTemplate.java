package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlExpression;

/** Replaces each {@code %s} of a text with an expression, in order. */
final class ExpressionTemplate
{
    private final String _template;
    private final HvlExpression[] _arguments;
    private final StringBuilder _text = new StringBuilder();
    private int _used;

    private ExpressionTemplate(String template, HvlExpression[] arguments)
    {
        _template = template;
        _arguments = arguments;
    }

    static String fill(String template, HvlExpression[] arguments)
    {
        ExpressionTemplate filling =
            new ExpressionTemplate(template, arguments == null ? new HvlExpression[0] : arguments);
        return filling.fill();
    }

    private String fill()
    {
        for (int at = 0; at < _template.length(); ++at) {
            char c = _template.charAt(at);
            if (c != '%') {
                _text.append(c);
            } else {
                place(++at);
            }
        }
        if (_used != _arguments.length) {
            throw failure("has " + _used + " places for " + _arguments.length + " arguments");
        }
        return _text.toString();
    }

    private void place(int at)
    {
        char kind = at < _template.length() ? _template.charAt(at) : ' ';
        if (kind == '%') {
            _text.append('%');
        } else if (kind == 's') {
            argument(at);
        } else {
            throw failure("has a single % that is not %s; the operator is written %%");
        }
    }

    private void argument(int at)
    {
        if (_used == _arguments.length) {
            throw failure("has more places than its " + _arguments.length + " arguments");
        }
        HvlExpression argument = _arguments[_used++];
        if (argument == null) {
            throw failure("has no expression for place " + _used);
        }
        boolean whole = argument.form() == HvlExpression.Form.Closed || standsAlone(at);
        _text.append(whole ? argument.generate() : ExpressionText.parenthesised(argument));
    }

    // Between brackets and commas no expression needs parentheses.
    private boolean standsAlone(int at)
    {
        int before = at - 2;
        while (before >= 0 && Character.isWhitespace(_template.charAt(before))) {
            --before;
        }
        int after = at + 1;
        while (after < _template.length() && Character.isWhitespace(_template.charAt(after))) {
            ++after;
        }
        return (before < 0 || "([,:".indexOf(_template.charAt(before)) >= 0)
            && (after == _template.length() || ")],}".indexOf(_template.charAt(after)) >= 0);
    }

    private IllegalArgumentException failure(String what)
    {
        return new IllegalArgumentException("the template \"" + _template + "\" " + what);
    }
}
