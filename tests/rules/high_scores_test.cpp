// The table of scores: order, ties, a full table, names, and what is read of a file.
#include "config/config_file.h"
#include "rules/high_scores.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>

namespace {

std::string List(const HighScoreTable& table) {
    std::string text;
    for (int rank = 0; rank < HighScoreTable::Size; rank++) {
        if (table[rank].score != 0)
            text += std::string(table[rank].name.data()) + ' ' + std::to_string(table[rank].score) + ", ";
    }
    return text;
}

TEST(HighScores, BestStandFirstAndANewScoreBehindItsEquals) {
    HighScoreTable table;
    const std::tuple<const char*, std::uint32_t, int> scores[] = {
        {"nobody", 0, -1}, {"a", 500, 0}, {"b", 300, 1},        {"c", 400, 1},
        {"d", 300, 3},     {"e", 300, 4}, {"f", 4000000000U, 0}}; // which have no sign
    for (const auto& [name, score, rank] : scores)
        EXPECT_EQ(table.Insert(name, score), rank) << name;
    // The sort swaps, so a new best one may reorder equal ones behind it.
    EXPECT_EQ(List(table), "f 4000000000, a 500, c 400, d 300, e 300, b 300, ");
    table.Clear();
    table.Insert("a name of nineteen bytes", 20);
    table.Insert(nullptr, 10);
    table.Insert("ab", 30);
    EXPECT_EQ(List(table), "ab 30, a name of nineteen  20,  10, ");
}

TEST(HighScores, AFullTableTakesOnlyHigherScores) {
    HighScoreTable table;
    for (int i = 1; i <= 10; i++)
        table.Insert(std::to_string(i).c_str(), static_cast<std::uint32_t>(i) * 100);
    EXPECT_EQ(table.Insert("late", 100), -1);
    EXPECT_EQ(table.Insert("just", 101), 9);
    EXPECT_EQ(table.Insert("third", 800), 3);
    EXPECT_EQ(List(table), "10 1000, 9 900, 8 800, third 800, 7 700, 6 600, 5 500, 4 400, 3 300, 2 200, ");
}

TEST(HighScores, AFileIsReadInAnyOrderAndTheTenBestStay) {
    std::string text = "<highscores>\n";
    for (int i = 0; i < 12; i++)
        text += "<score>\nname = \"n" + std::to_string(i) + "\"\nscore = " + std::to_string(i * 7 % 12 * 10) +
                "\n</score>\n";
    ConfigFile file = ConfigFile::FromMemory(text + "</highscores>\n<score>\nscore = 999\n</score>\n");
    HighScoreTable table;
    EXPECT_TRUE(table.Read(&file));
    EXPECT_EQ(List(table), "n5 110, n10 100, n3 90, n8 80, n1 70, n6 60, n11 50, n4 40, n9 30, n2 20, ");
    ConfigFile none = ConfigFile::FromMemory("<score>\nscore = 999\n</score>\n");
    EXPECT_FALSE(table.Read(&none));
    EXPECT_EQ(List(table), "");
}

} // namespace
