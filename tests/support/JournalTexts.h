#pragma once

#include <string>
#include <vector>

#include "Journal.h"

/// The texts of one kind in the host's journal, in order.
inline std::vector<std::string> journalTexts(HostJournal::Kind kind)
{
    std::vector<std::string> texts;
    for (const HostJournal::Entry& entry : HostJournal::instance().entries(kind))
        texts.push_back(entry.text);
    return texts;
}
