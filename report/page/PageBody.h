#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "report/page/PageContents.h"

/// Title, outline and items of a page.
struct PageBody
{
    const std::vector<OutputItem>& items;
    const PageContents& contents;
    std::string title;
    std::string subtitle;
};

void writePageBody(std::ostream& out, const PageBody& body);
