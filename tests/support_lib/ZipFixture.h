#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/ScratchFolder.h"
#include "support/ZipReader.h"

/// A folder with the places of an archive and of what comes out of it.
class ZipFixture : public testing::Test
{
protected:
    const ScratchFolder scratch;
    const std::string archive = scratch.name("a.zip");
    const std::string out = scratch.name("out");
};

/// Calls with the name and the kind of each entry, while the reader is at it.
template <typename Take>
void forEachEntry(ZipReader& reader, Take take)
{
    std::string name;
    bool isDirectory = false;
    for (bool found = reader.GetFirst(name, isDirectory); found;
         found = reader.GetNext(name, isDirectory))
        take(name, isDirectory);
}
