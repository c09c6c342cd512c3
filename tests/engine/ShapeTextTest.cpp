#include <cmath>

#include <gtest/gtest.h>

#include "maps/ShapeText.h"

// Shapes as texts: which texts are shapes, and what is left of one when its points move.

namespace {

using EmbeddedHV::maps::MovedShape;

/// Moves one to the east and two to the north, and has no place beyond a hundred.
class Shift : public EmbeddedHV::maps::PointMover
{
public:
    void move(double* x, double* y, double*, std::size_t count) override
    {
        for (std::size_t i = 0; i < count; ++i) {
            x[i] = x[i] > 100 ? HUGE_VAL : x[i] + 1;
            y[i] += 2;
        }
    }
    std::optional<CFGeo::Envelope> moved(const CFGeo::Envelope& envelope) override
    {
        return envelope;
    }
};

struct Case
{
    const char* text;
    const char* moved; ///< null: no shape
};

constexpr Case kCases[] = {
    {R"({"type":"Point","coordinates":[0,0.5]})", R"({"type":"Point","coordinates":[1,2.5]})"},
    {R"( { "coordinates" : [ -1e2, 0, 7.25, 9 ], "type" : "Point" } )",
     R"({"type":"Point","coordinates":[-99,2,7.25]})"},
    // Digits are tested eight at a time.
    {R"({"type":"MultiPoint","coordinates":[[1,12345678],[-123456789012.5,0.1234567890123456]]})",
     R"({"type":"MultiPoint","coordinates":[[2,12345680],[-123456789011.5,2.1234567890123457]]})"},
    {R"({"type":"MultiPoint","coordinates":[[0,0],[1,1,1]]})",
     R"({"type":"MultiPoint","coordinates":[[1,2],[2,3,1]]})"},
    {R"({"type":"MultiPolygon","coordinates":[[[[0,0],[1,0]],[[2,2]]],[[[3,3]]]]})",
     R"({"type":"MultiPolygon","coordinates":[[[[1,2],[2,2]],[[3,4]]],[[[4,5]]]]})"},
    {R"({"type":"LineString","bbox":[0,0,1,1],"coordinates":[[0,0]],"a":{"coordinates":[[5]]}})",
     R"({"type":"LineString","coordinates":[[1,2]]})"},
    {R"({"type":"MultiPoint","coordinates":[]})", R"({"type":"MultiPoint","coordinates":[]})"},
    {"", nullptr},
    {"7", nullptr},
    {"[1,2]", nullptr},
    {R"({"type":"Point"})", nullptr},
    {R"({"coordinates":[1,2]})", nullptr},
    {R"({"type":"Point","coordinates":[1]})", nullptr},
    {R"({"type":"Point","coordinates":5})", nullptr},
    {R"({"type":"Point","coordinates":[1,"2"]})", nullptr},
    {R"({"type":"Point","coordinates":[1,null]})", nullptr},
    {R"({"type":"Point","coordinates":{"x":1}})", nullptr},
    {R"({"type":"Point","coordinates":[[1,2]]})", nullptr},
    {R"({"type":"Polygon","coordinates":[[1,2],[3,4]]})", nullptr},
    {R"({"type":"LineString","coordinates":[[1,2],3]})", nullptr},
    {R"({"type":"LineString","coordinates":[[1,2],[[3,4]]]})", nullptr},
    {R"({"type":"Point","coordinates":[1,2],"coordinates":[3,4]})", nullptr},
    {R"({"type":"Circle","coordinates":[1,2]})", nullptr},
    {R"({"type":"Point","coordinates":[1,2]}x)", nullptr},
    {R"({"type":"Point","coordinates":[1,2)", nullptr},
    {R"({"type":"Point","coordinates":[01,2]})", nullptr},
    {R"({"type":"Point","coordinates":[1.,2]})", nullptr},
    {R"({"type":"Point","coordinates":[.5,2]})", nullptr},
    {R"({"type":"Point","coordinates":[-,2]})", nullptr},
    {R"({"type":"Point","coordinates":[1,2,]})", nullptr},
    {R"({"type":"Point","coordinates":[1234567:,2]})", nullptr},
    {R"({"type":"Point","coordinates":[12345678/1,2]})", nullptr},
    {"{\"type\":\"Point\",\"coordinates\":[1234567\xB0,2]}", nullptr},
    {R"({"type":"LineString","coordinates":[[1,2],]})", nullptr},
    {R"({"type":"LineString","coordinates":[[1,2][3,4]]})", nullptr},
    {R"({"type":"Polygon","coordinates":[[[1,2]]}]})", nullptr},
};

TEST(ShapeText, MovesPointsAndRefusesWhatIsNoShape)
{
    // One mover for all: nothing of a shape may remain in the next.
    EmbeddedHV::maps::ShapeMover shift(std::make_unique<Shift>());
    for (const auto& [text, moved] : kCases) {
        SCOPED_TRACE(text);
        std::string out;
        EXPECT_EQ(EmbeddedHV::maps::isShape(text), moved != nullptr);
        EXPECT_EQ(shift.move(text, out), moved ? MovedShape::Moved : MovedShape::NotAShape);
        EXPECT_EQ(out, moved ? moved : "");
    }
    std::string out;
    EXPECT_EQ(shift.move(R"({"type":"MultiPoint","coordinates":[[1,1],[101,1]]})", out),
              MovedShape::Lost);
}

} // namespace
