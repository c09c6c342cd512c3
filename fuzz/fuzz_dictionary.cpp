#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ScratchFolder.h"
#include "base/Utf8.h"
#include "datafile/Dictionary.h"
#include "datafile/Fault.h"
#include "datafile/FieldDictionary.h"

/// Any text as the dictionary of a file: it is refused, or it passes through text and fields whole.
namespace {

using namespace datafile;

/// Whoever writes a text can read it. Throws nothing.
Dictionary again(const Dictionary& dictionary)
{
    try {
        return dictionaryOf(dictionaryText(dictionary), "what was written");
    } catch (const Fault&) {
        std::abort();
    }
}

/// The bare fields of a file with such variables, the numbers among them of all storages in turn.
Fields bareFields(const Dictionary& dictionary)
{
    constexpr CFField::StorageType kNumbers[] = {CFField::Integer, CFField::Real, CFField::Date,
                                                 CFField::Time, CFField::Timestamp};
    Fields fields;
    std::size_t turn = 0;
    for (const DictionaryVariable& variable : dictionary.variables)
        fields.emplace_back(variable.name, CFField::Continuous,
                            variable.isText ? CFField::String
                                            : kNumbers[turn++ % std::size(kNumbers)]);
    return fields;
}

/// What fields take from a dictionary they give to one, and take from that again.
void passThroughFields(const Dictionary& dictionary)
{
    Fields fields = bareFields(dictionary);
    adoptDictionary(fields, dictionary);
    for (const CFField& field : fields)
        require(holdsMissingValues(field));
    Fields second = bareFields(dictionary);
    adoptDictionary(second, again(dictionaryOfFields(fields)));
    require(second == fields);
}

/// Any bytes may be a label; those that are no UTF-8 are replaced.
void passThroughLabel(const std::string& text)
{
    Dictionary dictionary;
    dictionary.documents = {text};
    DictionaryVariable& variable = dictionary.variables.emplace_back();
    variable.name = "v";
    variable.label = text;
    variable.valueLabels = {{1.5, text}};
    const Dictionary read = again(dictionary);
    require(again(read) == read);
    require(!base::isUtf8(text) || read == dictionary);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    passThroughLabel(text);
    try {
        const Dictionary dictionary = dictionaryOf(text, "the input");
        require(again(dictionary) == dictionary);
        passThroughFields(dictionary);
    } catch (const Fault&) { // what most texts come to
    }
    return 0;
}
