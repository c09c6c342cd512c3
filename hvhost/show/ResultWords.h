#pragma once

#include <initializer_list>
#include <string>

#include "hvhost/show/ResultTable.h"

// Words of results that people read, in the host's language. CSV and JSON have them in English.

/// The host's text for a key. Returns the key if the host has no text for it.
std::string word(const std::string& key);
/// The host's text for a key, with ^1, ^2 and so on replaced by the parts.
std::string sentence(const std::string& key, std::initializer_list<std::string> parts);
/// A count and what is counted. The keys have a place for the count, as "^1 case" and "^1 cases".
std::string counted(double count, const std::string& one, const std::string& many);
/// A number with so many significant digits and the host's decimal sign.
std::string localNumber(double number, int digits = 6);

/// Translates the names of columns and the cells that are words. Names of fields stay.
ResultTable inWords(ResultTable table);
