#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>

#include <nlohmann/json.hpp>

#include "datafile/Dictionary.h"
#include "datafile/FieldDictionary.h"
#include "datafile/ScratchFile.h"
#include "datafile/SealedFile.h"
#include "engine/DocsPage.h"
#include "engine/MissingValues.h"

/// What data files say of their columns, in the form that docs/sav.md promises to other programs.
namespace datafile {
namespace {

using Json = nlohmann::json;

/// The part of the page about the dictionary.
std::string dictionaryPage()
{
    const std::string page = docspage::contentOf(HV_SAV_DOCS);
    const std::size_t begin = page.find("\n## The dictionary\n");
    return page.substr(begin, page.find("\n## ", begin + 1) - begin);
}

std::string documentedExample()
{
    const std::string page = dictionaryPage();
    const std::size_t begin = page.find("```json\n") + 8;
    return page.substr(begin, page.find("```", begin) - begin);
}

/// The words between backquotes.
std::set<std::string> quotedIn(const std::string& cell)
{
    std::set<std::string> words;
    for (std::size_t at = cell.find('`'); at != std::string::npos; at = cell.find('`', at)) {
        const std::size_t end = cell.find('`', at + 1);
        words.insert(cell.substr(at + 1, end - at - 1));
        at = end + 1;
    }
    return words;
}

void collectKeys(const Json& json, std::set<std::string>& keys)
{
    if (json.is_object())
        for (const auto& item : json.items())
            keys.insert(item.key());
    for (const Json& inner : json)
        if (inner.is_structured())
            collectKeys(inner, keys);
}

TEST(Dictionary, ThePagesExamplePassesThroughWholeAndTheTablesHaveItsKeys)
{
    const Json example = Json::parse(documentedExample());
    EXPECT_EQ(Json::parse(dictionaryText(dictionaryOf(example.dump(), "the page"))), example);
    std::set<std::string> keys;
    collectKeys(example, keys);
    std::set<std::string> documented;
    for (const docspage::Row& row : docspage::tableRows(dictionaryPage()))
        documented.merge(quotedIn(row.front()));
    EXPECT_EQ(documented, keys);
}

TEST(Dictionary, ThePagesWordsAreTheCodes)
{
    Dictionary all;
    for (int i = 0; i <= static_cast<int>(DictionaryRole::RecordId); ++i) {
        DictionaryVariable& variable = all.variables.emplace_back();
        variable.name = std::to_string(i);
        variable.role = static_cast<DictionaryRole>(i);
        variable.level =
            static_cast<DictionaryLevel>(i % (static_cast<int>(DictionaryLevel::Scale) + 1));
    }
    std::set<std::string> levels;
    std::set<std::string> roles;
    const Json written = Json::parse(dictionaryText(all));
    for (const Json& variable : written["variables"]) {
        levels.insert(variable["level"]);
        roles.insert(variable["role"]);
    }
    for (const docspage::Row& row : docspage::tableRows(dictionaryPage())) {
        const bool isLevel = row.front() == "`level`";
        if (isLevel || row.front() == "`role`") {
            EXPECT_EQ(quotedIn(row[2]), isLevel ? levels : roles);
        }
    }
}

constexpr double kLowest = std::numeric_limits<double>::lowest();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

/// What a field declares, and what of it comes back from a dictionary.
struct Passage
{
    const char* what;
    CFField::StorageType storage;
    CFMissingValues given;
    CFMissingValues kept;
    bool whole = true;
};

const Passage kPassages[] = {
    {"three values", CFField::Real, missing({}, 1.5, -1e300, 7.0), missing({}, 1.5, -1e300, 7.0)},
    {"four", CFField::Real, missing({}, 1.5, 2.5, 3.5, 4.5), missing({}, 1.5, 2.5, 3.5), false},
    {"a range and two", CFField::Integer, missing({CFDatum(90), CFDatum()}, 1, 2),
     missing({CFDatum(90), CFDatum()}, 1), false},
    {"a range of a text", CFField::String, missing({CFDatum("a"), CFDatum("b")}, "a", "b"),
     missing({}, "a", "b")},
    {"values of another kind", CFField::Date, missing({}, "x", 3.0, CFDatum()), missing({}, 3.0)},
    {"a range of another kind", CFField::Real, missing({CFDatum("a"), CFDatum()}), {}},
    {"integers without a double", CFField::Integer,
     missing({}, kLargest, std::int64_t{9007199254740993}, std::int64_t{1} << 60),
     missing({}, std::int64_t{1} << 60)},
    {"a limit without a double", CFField::Integer, missing({CFDatum(kLargest), CFDatum()}),
     missing({CFDatum(9223372036854775808.0), CFDatum()})},
    {"no limit at all", CFField::Time, missing({CFDatum(-kInfinity), CFDatum(kInfinity)}),
     missing({CFDatum(kLowest), CFDatum()})},
};

TEST(Dictionary, WhatAFieldGivesIsReadableAndTellsNothingOfAnotherValue)
{
    for (const Passage& passage : kPassages) {
        SCOPED_TRACE(passage.what);
        CFField field("f", CFField::Ordinal, passage.storage, CFField::None);
        field.SetMissingValues(passage.given);
        std::vector<CFValue> labels;
        for (const CFValue& value : passage.given.GetValues())
            labels.emplace_back(value.GetDatum(), "label");
        field.SetValueLabels(std::move(labels));
        EXPECT_EQ(holdsMissingValues(field), passage.whole);
        Fields fields = {CFField("f", CFField::Continuous, passage.storage)};
        adoptDictionary(fields, dictionaryOf(dictionaryText(dictionaryOfFields({field})), "here"));
        EXPECT_TRUE(fields[0].GetMissingValues() == passage.kept);
        if (passage.whole) {
            EXPECT_EQ(fields[0].GetValueLabels().size(), passage.kept.GetValues().size());
        }
    }
    // A column whose storage is unknown contains texts.
    CFField unknown("f", CFField::Typeless, CFField::Unknown);
    unknown.SetMissingValues(missing({}, "?"));
    Fields texts = {CFField("f", CFField::Nominal, CFField::String)};
    adoptDictionary(texts, dictionaryOfFields({unknown}));
    EXPECT_TRUE(texts[0].GetMissingValues() == missing({}, "?"));
}

/// Made by the page's recipe, not by this library: whoever has such a file can open it for ever.
TEST(SealedFile, AFileOfTheFirstVersionOpens)
{
    constexpr char kSealed[] =
        "HVSEALED1\n"
        "\x00\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f\xdc\xa0\x20\xfe\x4d\xc9"
        "\x5a\xbc\x50\x6f\x45\x31\x46\xef\xdb\xe0\x7e\x3b\xd1\x14\x0c\x2a\x69\x92\x6b\x9f\x7e\xa9"
        "\x40\x55\x4f\xcb\xe1\xe7\xc2\x8f\xd2\x14\xb5\x6e\x47\x5b\x12\x05\xe7\xe4\x0d\xe5\x09\x18";
    const ScratchFile sealed(testing::TempDir());
    const ScratchFile plain(testing::TempDir());
    ASSERT_TRUE(sealed.write(std::string(kSealed, sizeof kSealed - 1)));
    sealed.rewind();
    openSealedFile(sealed.descriptor(), plain.descriptor(), "pässword");
    EXPECT_EQ(docspage::contentOf(plain.path().c_str()), "as it was");
}

TEST(SealedFile, BytesBehindAFullChunkAreAnError)
{
    const ScratchFile content(testing::TempDir());
    const ScratchFile sealed(testing::TempDir());
    const ScratchFile plain(testing::TempDir());
    ASSERT_TRUE(content.write(std::string(std::size_t{64} * 1024, 'a')));
    content.rewind();
    sealFile(content.descriptor(), sealed.descriptor(), "password");
    ASSERT_TRUE(sealed.write("x"));
    sealed.rewind();
    EXPECT_THROW(openSealedFile(sealed.descriptor(), plain.descriptor(), "password"),
                 SealedFileError);
}

} // namespace
} // namespace datafile
