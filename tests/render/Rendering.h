#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "OutputTree.h"
#include "TnOutput.h"
#include "VexaDataSource.h"
#include "bridge/JNIJSONObject.h"
#include "render/jsonPivot.h"
#include "support/JvmFixture.h"

/// What the output tree says, in a line for each thing.
///
/// A table is `table TITLE [SUBTYPE]`, its marks, its dimensions as `row NAME: a g(b c)`, and its
/// cells as `a/x=text`, numbers as `number:type.decimals`. What is hidden has a "-" before it, and
/// footnotes follow in "^".
std::string outputText();

/// Tests of what results become. Single quotes replace double quotes in their JSON.
class RenderTest : public JvmTest
{
protected:
    void SetUp() override;
    void TearDown() override;

    static std::string json(std::string text);
    /// The text of an item; null if it has none.
    std::unique_ptr<TnCellText> textOf(const std::string& item, bool translate = false);
    /// Builds a table under the procedure, as `prepare` sets it up, and tells what came of it.
    using Preparation = void (*)(jsonPivot&);
    std::string tableOf(const std::string& table, Preparation prepare = nullptr);
    void buildTable(const std::string& table, Preparation prepare = nullptr);
    /// The only table under the procedure.
    static const OutputTable& onlyTable();

    ProcedureDataSource source;
    dataDictionary dictionary;
    std::unique_ptr<TnProcedure> procedure;
};
