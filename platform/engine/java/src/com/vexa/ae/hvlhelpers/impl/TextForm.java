package com.vexa.ae.hvlhelpers.impl;

import com.vexa.ae.hvlhelpers.HvlExpression.Form;

/**
 * Finds the form of an expression from its text, because templates may contain any text. Only the
 * text outside all brackets counts.
 */
final class TextForm
{
    private static final String OPERATORS = "+-*/%<>=!&|";

    private final String _text;
    private int _at;
    private int _depth;
    private Form _form = Form.Closed;

    private TextForm(String text)
    {
        _text = text;
    }

    static Form of(String text)
    {
        TextForm scan = new TextForm(text);
        while (scan._at < text.length() && scan._form != Form.Lambda) {
            scan.token();
        }
        return scan._form;
    }

    private void token()
    {
        char c = _text.charAt(_at);
        if (c == '"' || c == '`') {
            skipQuoted(c);
        } else if (HvlNames.isDigit(c)) {
            skipNumber();
        } else if (HvlNames.isNameStart(c)) {
            word();
        } else {
            symbol(c);
        }
    }

    private void skipQuoted(char quote)
    {
        for (++_at; _at < _text.length() && _text.charAt(_at) != quote; ++_at) {
            if (_text.charAt(_at) == '\\') {
                ++_at;
            }
        }
        ++_at;
    }

    // The sign of an exponent is not an operator.
    private void skipNumber()
    {
        skipWhileNumber();
        boolean exponent = (_text.charAt(_at - 1) | 0x20) == 'e';
        if (exponent && _at < _text.length() && "+-".indexOf(_text.charAt(_at)) >= 0) {
            ++_at;
            skipWhileNumber();
        }
    }

    private void skipWhileNumber()
    {
        while (_at < _text.length()
               && (HvlNames.isNamePart(_text.charAt(_at)) || _text.charAt(_at) == '.')) {
            ++_at;
        }
    }

    private void word()
    {
        int start = _at;
        while (_at < _text.length() && HvlNames.isNamePart(_text.charAt(_at))) {
            ++_at;
        }
        if (_depth == 0 && _text.substring(start, _at).equals("if")) {
            _form = Form.Conditional;
        }
    }

    private void symbol(char c)
    {
        if ("([{".indexOf(c) >= 0) {
            ++_depth;
        } else if (")]}".indexOf(c) >= 0) {
            --_depth;
        } else if (_depth == 0 && OPERATORS.indexOf(c) >= 0) {
            operator();
        }
        ++_at;
    }

    private void operator()
    {
        // The body of a lambda may have any form. An arrow after `if` or an operator belongs to an
        // inner lambda.
        if (_text.startsWith("=>", _at) && _form == Form.Closed) {
            _form = Form.Lambda;
        } else if (_form == Form.Closed) {
            _form = Form.Operators;
        }
    }
}
