#pragma once

#include <CLI/CLI.hpp>

/// What an option takes; what it does not take ends in a usage fault that names the option.

/// Anything but nothing, which is what a shell makes of a variable that is not set.
CLI::Validator notEmpty();
/// A file, not a standard stream.
CLI::Validator noStream();
/// A whole number from this one up.
CLI::Validator wholeNumberFrom(long long minimum);
/// A finite number above 0.
CLI::Validator positiveNumber();
/// A character that separates fields, or a word for one.
CLI::Validator separatorWordCheck();
/// A word for a kind of data file, in any case.
CLI::Validator dataKindWord();
