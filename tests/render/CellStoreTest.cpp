#include "render/CellStore.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "render/KeyWalk.h"

namespace {
using Model = std::map<std::string, double>;
}

TEST(CellKeyTest, WidthsAndDigits)
{
    const std::pair<std::uint64_t, unsigned> widths[] = {
        {0, 1}, {1, 1}, {86, 1}, {87, 2}, {7396, 2}, {7397, 3}, {~std::uint64_t{0}, 10}};
    for (const auto& [leaves, width] : widths)
        EXPECT_EQ(CellKey::widthOf(leaves), width) << leaves;
    const std::pair<std::uint64_t, const char*> digits[] = {{0, "00"},  {61, "0Z"}, {62, "0 "},
                                                            {85, "0~"}, {86, "10"}, {7395, "~~"}};
    for (const auto& [position, text] : digits) {
        EXPECT_EQ(CellKey::of(position, 2), text);
        EXPECT_EQ(CellKey::positionOf(text), position);
    }
    for (const char* none : {"", "*", "0\"", "\\", "~~~~~~~~~~~~"})
        EXPECT_EQ(CellKey::positionOf(none), CellKey::kNowhere) << none;
}

// Against a map that holds what the rules say, for tables of all shapes and keys of all kinds.
TEST(CellStoreTest, IsAMapFromKeyToCell)
{
    std::mt19937 random(7);
    for (const std::vector<std::uint64_t>& shape : std::vector<std::vector<std::uint64_t>>{
             {3, 2}, {87, 3}, {1}, {}, {0, 4}, {5, 0, 2}, {200, 200, 200, 200, 200}}) {
        CellStore store{KeyLayout(shape)};
        Model model;
        const std::string letters = std::string(CellKey::kDigits.substr(0, 4)) + "*~";
        for (int round = 0; round < 500; ++round) {
            std::string key;
            for (std::size_t left = random() % (store.layout().keyLength() + 2); left > 0; --left)
                key += letters[random() % letters.size()];
            // Cells of runs and single cells are kept apart, and are the same to whoever asks.
            if (random() % 2 == 0)
                model[key] = (random() % 3 == 0 ? store.inRun(key) : store.at(key)).value = round;
            const Cell* cell = store.find(key);
            const double found = cell == nullptr ? Cell::kNoValue : cell->value;
            EXPECT_EQ(found, model.contains(key) ? model[key] : Cell::kNoValue) << key;
        }
    }
}

TEST(KeyWalkTest, GoesThroughKeysInOrder)
{
    const auto keysOf = [](KeyWalk walk) {
        std::string keys;
        for (; walk.isAtKey(); walk.next())
            keys += walk.key() + " ";
        return keys;
    };
    const KeyLayout layout({3, 2});
    EXPECT_EQ(keysOf(KeyWalk::from(layout, "")), "00 01 10 11 20 21 ");
    EXPECT_EQ(keysOf(KeyWalk::from(layout, "11")), "11 20 21 ");
    EXPECT_EQ(keysOf(KeyWalk::from(layout, "1~")), "10 11 20 21 ");
    EXPECT_EQ(keysOf(KeyWalk::from(layout, "111")), "00 01 10 11 20 21 ");
    EXPECT_EQ(keysOf(KeyWalk::from(KeyLayout({2, 0}), "")), "");
    EXPECT_EQ(keysOf(KeyWalk::from(KeyLayout({}), "")), "");
}
