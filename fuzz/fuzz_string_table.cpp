#include <cstddef>
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

#include "ErrorText.h"
#include "FacSTDictionary.h"
#include "ScratchFolder.h"

/// Any text as a string table: it is refused, or it gives each of its words by its key.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFolder folder;
    folder.put("table.json", textOf(data, size));
    const auto json = nlohmann::json::parse(textOf(data, size), nullptr, false);
    try {
        const FacSTDictionary table(folder.host("table.json"));
        require(json.is_object());
        for (const auto& [key, word] : json.items())
            require(table.LookUp(key) == (word.is_string() ? word.get<std::string>() : key));
    } catch (const ErrorText&) {
        require(!json.is_object());
    }
    return 0;
}
