#pragma once

#include <array>
#include <string>
#include <string_view>

/// The kinds of data files.
enum class DataKind
{
    Csv,
    Sav,
    Hvbf
};

/// A word for a kind, in options and as the extension of a file name.
struct DataKindWord
{
    std::string_view word;
    DataKind kind;
};
inline constexpr std::array<DataKindWord, 4> kDataKinds{{{"csv", DataKind::Csv},
                                                         {"sav", DataKind::Sav},
                                                         {"hvbf", DataKind::Hvbf},
                                                         {"parquet", DataKind::Hvbf}}};

/// The kind from a word, or from the extension of a path if the word is empty. A standard stream is
/// csv. Throws CommandFault (Usage). Its hint names `option` unless that is null.
DataKind dataKind(const std::string& word, const std::string& path, const char* option);
