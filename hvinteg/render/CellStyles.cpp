#include "render/CellStyles.h"

#include <algorithm>
#include <utility>

#include "render/Footnotes.h"

namespace {
/// The format of an entry for a pattern without a type: the cell keeps its type.
VEXA_Format formatOfType(std::uint8_t type)
{
    VEXA_Format format{CellFormat::kWidth, type, CellFormat::generalNumber.decimals};
    if (isTextFormat(format))
        format.decimals = 0;
    return format;
}
} // namespace

void CellStyles::read(const JsonValue& formats)
{
    for (const JsonValue json : formats) {
        const std::string_view index = json["index"].text();
        if (!index.empty())
            add(index,
                {CellFormat::formatOf(json["format"]), Footnotes::indexesOf(json["footnotes"]),
                 CellFormat::isInfinite(json["format"]), index.find(CellKey::kAny) != index.npos});
    }
}

void CellStyles::add(std::string_view index, Entry entry)
{
    const bool isPattern = entry.isPattern;
    _entries.push_back(std::move(entry));
    if (isPattern)
        addPattern(index);
    else
        _patterns[{}].entries[std::string(index)].push_back(_entries.size() - 1);
}

/// A wildcard in any digit of a dimension matches all its leaves. Digits beyond the last dimension
/// are ignored. A pattern that is too short matches no cell.
void CellStyles::addPattern(std::string_view index)
{
    Pattern pattern;
    std::vector<std::size_t> dimensions;
    std::string key;
    for (const KeyLayout::Segment& segment : _layout.segments()) {
        const std::string_view digits = index.substr(0, segment.width);
        index.remove_prefix(digits.size());
        if (digits.find(CellKey::kAny) == digits.npos) {
            key += digits;
            continue;
        }
        dimensions.push_back(segment.offset);
        pattern.wildcards.push_back(&segment);
        key.append(segment.width, CellKey::kAny);
    }
    if (key.size() != _layout.keyLength())
        return;
    Pattern& known = _patterns.emplace(std::move(dimensions), std::move(pattern)).first->second;
    known.entries[std::move(key)].push_back(_entries.size() - 1);
}

CellStyle CellStyles::of(std::string_view key)
{
    _found.clear();
    for (const auto& [dimensions, pattern] : _patterns)
        collect(pattern, key);
    // Later entries of the document override earlier ones.
    std::sort(_found.begin(), _found.end());
    CellStyle style;
    for (const std::size_t entry : _found)
        apply(_entries[entry], style);
    return style;
}

void CellStyles::collect(const Pattern& pattern, std::string_view key)
{
    if (!pattern.wildcards.empty() && key.size() != _layout.keyLength())
        return;
    _probe.assign(key);
    for (const KeyLayout::Segment* segment : pattern.wildcards)
        std::fill_n(_probe.begin() + static_cast<std::ptrdiff_t>(segment->offset), segment->width,
                    CellKey::kAny);
    const auto found = pattern.entries.find(_probe);
    if (found == pattern.entries.end())
        return;
    // A leaf may have a key that is not a position of its dimension. Wildcards do not match it.
    for (const KeyLayout::Segment* segment : pattern.wildcards)
        if (CellKey::positionOf(key.substr(segment->offset, segment->width)) >= segment->leaves)
            return;
    _found.insert(_found.end(), found->second.begin(), found->second.end());
}

/// Properties that the entry does not set are unchanged, except infinity: an entry without it
/// resets it.
void CellStyles::apply(const Entry& entry, CellStyle& style) const
{
    if (entry.format.type != CellFormat::kNoType)
        style.format = entry.format;
    else if (entry.isPattern)
        style.format = formatOfType(style.format.type);
    if (!entry.footnotes.empty())
        style.footnotes = &entry.footnotes;
    style.isInfinite = entry.isInfinite;
}
