#pragma once

#include <array>
#include <string>
#include <string_view>

/// The kinds of data files.
enum class DataKind
{
    Csv,
    Sav,
    Hvbf,
    Json, ///< only as input
    Sheet ///< of an xlsx workbook; only as input
};

/// A word for a kind, in options and as the extension of a file name.
struct DataKindWord
{
    std::string_view word;
    DataKind kind;
};
inline constexpr std::array<DataKindWord, 13> kDataKinds{{{"csv", DataKind::Csv},
                                                          {"sav", DataKind::Sav},
                                                          {"hvbf", DataKind::Hvbf},
                                                          {"parquet", DataKind::Hvbf},
                                                          {"tsv", DataKind::Csv},
                                                          {"tab", DataKind::Csv},
                                                          {"txt", DataKind::Csv},
                                                          {"json", DataKind::Json},
                                                          {"jsonl", DataKind::Json},
                                                          {"ndjson", DataKind::Json},
                                                          {"xlsx", DataKind::Sheet},
                                                          {"xlsm", DataKind::Sheet},
                                                          {"xls", DataKind::Sheet}}};
/// The first of them are the kinds of outputs as well.
inline constexpr std::size_t kOutputKinds = 4;
/// The rest are only extensions of names: an old workbook is refused as what it is.
inline constexpr std::size_t kInputKinds = kDataKinds.size() - 1;

/// The kind of an input from a word, or from the extension of a path if the word is empty; .gz
/// and .zst after it do not count. The kind of a standard stream or a pipe, whose content is in
/// `content`, is found from its first bytes. A folder or a pattern of names without the extension
/// of another kind is Hvbf. Throws CommandFault (Usage). Its hint names `option`
/// unless that is null.
DataKind inputKind(const std::string& word, const std::string& path, const std::string& content,
                   const char* option);
/// The kind of an output. A standard stream is csv.
DataKind outputKind(const std::string& word, const std::string& path, const char* option);

/// Whether the file is UTF-16 with its mark: only TextImport reads it.
bool isUtf16(const std::string& path);
