#pragma once

#include <jni.h>

#include <memory>
#include <string>
#include <vector>

#include "ChartOutput.h"
#include "render/OutputOrder.h"
#include "render/ResultContext.h"

/// Shows the parts of one result object that an order selects.
class OrderRenderer
{
public:
    /// Context and result object are borrowed. The object is null if there is no document.
    OrderRenderer(ResultContext& context, jobject result) : _context(context), _result(result) {}
    /// Returns whether a table or a chart was shown. Throws JNIException; the headings then remain.
    bool render(const OutputOrder& order);

private:
    using Headings = std::vector<std::unique_ptr<TnHeading>>;

    bool renderUnder(TnHeading& heading, const OutputOrder& order);
    void renderTable(TnHeading& heading, const OutputOrder& order, jobject item);
    void renderChart(TnHeading& heading, const OutputOrder& order, jobject item);
    void renderView(TnHeading& heading, const OutputOrder& order);
    void addMapSources(xGlyph& chart, jobject item);
    void describe(XDocument& output, const OutputOrder& order) const;
    std::string viewJson(const OutputOrder& order);

    ResultContext& _context;
    jobject _result;
};
