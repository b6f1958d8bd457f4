// The table of scores: order, ties, a full table, names, and its way through the configuration file.
#include "config/config_file.h"
#include "config/config_writer.h"
#include "play/kolvex.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string List(const HighScoreTable& table) {
    std::string text;
    for (int rank = 0; rank < HighScoreTable::Size; rank++) {
        if (table[rank].score == 0) continue;
        text += std::string(table[rank].name.data()) + ' ' + std::to_string(table[rank].score) + ", ";
    }
    return text;
}

TEST(HighScores, BestStandFirstAndANewScoreBehindItsEquals) {
    HighScoreTable table;
    EXPECT_EQ(table.FindSlot(0), -1);
    EXPECT_EQ(table.Insert("nobody", 0), -1);
    EXPECT_EQ(table.Insert("a", 500), 0);
    EXPECT_EQ(table.Insert("b", 300), 1);
    EXPECT_EQ(table.Insert("c", 400), 1);
    EXPECT_EQ(table.Insert("d", 300), 3);
    EXPECT_EQ(table.Insert("e", 300), 4);
    EXPECT_EQ(table.Insert("f", 4000000000U), 0) << "scores have no sign";
    // The sort swaps, so a new best one may reorder equal ones behind it.
    EXPECT_EQ(List(table), "f 4000000000, a 500, c 400, d 300, e 300, b 300, ");
    table.Clear();
    EXPECT_EQ(List(table), "");
}

TEST(HighScores, FullTableTakesOnlyHigherScores) {
    HighScoreTable table;
    for (int i = 1; i <= 10; i++)
        table.Insert(std::to_string(i).c_str(), static_cast<std::uint32_t>(i) * 100);
    EXPECT_EQ(table.FindSlot(100), -1);
    EXPECT_EQ(table.Insert("late", 100), -1);
    EXPECT_EQ(table.FindSlot(101), 9);
    EXPECT_EQ(table.Insert("just", 101), 9);
    EXPECT_EQ(table.Insert("third", 800), 3);
    EXPECT_EQ(List(table), "10 1000, 9 900, 8 800, third 800, 7 700, 6 600, 5 500, 4 400, 3 300, 2 200, ");
    // Two that are lowest: the first of them gives way.
    table.Clear();
    for (int i = 0; i < 10; i++)
        table.Insert(i < 2 ? "high" : std::to_string(i).c_str(), i < 2 ? 900 : 50);
    EXPECT_EQ(table.Insert("new", 60), 2);
    EXPECT_EQ(List(table).find(" 2 50"), std::string::npos);
    EXPECT_NE(List(table).find(" 3 50"), std::string::npos);
}

TEST(HighScores, NamesAreCutTo19Bytes) {
    HighScoreTable table;
    table.Insert("abcdefghijklmnopqrstuvwxyz", 20);
    table.Insert(nullptr, 10);
    EXPECT_STREQ(table[0].name.data(), "abcdefghijklmnopqrs");
    EXPECT_STREQ(table[1].name.data(), "");
    table.Insert("ab", 30);
    EXPECT_STREQ(table[0].name.data(), "ab");
}

class ScoreFile : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(ScoreFile, ComesBackAsItWasWritten) {
    WriteFile("config.cfg", "; head\n<quarvello>\n  showgrid = 1\n  old = 2\n</quarvello>\n; tail\n");
    Kolvex rules;
    rules.showgrid = false;
    rules.highScores.Insert("Ann Two Words", 1200);
    rules.highScores.Insert("<score>", 40);
    rules.highScores.Insert("quo\"te", 3000000000U);
    rules.highScores.Insert("", 7);
    rules.Save("config.cfg");
    EXPECT_EQ(ReadFile("config.cfg"),
              "; head\n<quarvello>\n  showgrid = 0\n  <highscores>\n"
              "    <score>\n      score = -1294967296\n      name = \"quo'te\"\n    </score>\n\n"
              "    <score>\n      score = 1200\n      name = \"Ann Two Words\"\n    </score>\n\n"
              "    <score>\n      score = 40\n      name = \"<score>\"\n    </score>\n\n"
              "    <score>\n      score = 7\n      name = \"\"\n    </score>\n\n"
              "  </highscores>\n\n</quarvello>\n; tail\n");
    Kolvex loaded;
    loaded.Load("config.cfg");
    EXPECT_FALSE(loaded.showgrid);
    EXPECT_EQ(List(loaded.highScores), "quo'te 3000000000, Ann Two Words 1200, <score> 40,  7, ");
    loaded.Save("config.cfg");
    Kolvex again;
    again.Load("config.cfg");
    EXPECT_EQ(List(again.highScores), List(loaded.highScores));
}

TEST_F(ScoreFile, DefaultsStandForWhatIsMissing) {
    Kolvex rules;
    rules.showgrid = false;
    rules.highScores.Insert("kept", 5);
    rules.Load("none.cfg");
    EXPECT_TRUE(rules.showgrid);
    EXPECT_EQ(ReadLog(), "");

    WriteFile("config.cfg", "<highscores>\n<score>\nscore = 9\n</score>\n</highscores>\n");
    rules.Load("config.cfg");
    EXPECT_TRUE(rules.showgrid);
    EXPECT_EQ(List(rules.highScores), " 9, ") << "the table is looked for without the block, too";
    EXPECT_EQ(ReadLog(), "Kolvex::ReadParameters()\nKolvex::Load [WARNING] - Quarvello block not found\n");

    WriteFile("config.cfg", "<quarvello>\n</quarvello>\n");
    rules.Load("config.cfg");
    EXPECT_FALSE(rules.showgrid);
    EXPECT_EQ(List(rules.highScores), "");
}

TEST_F(ScoreFile, ReadsAnyOrderAndKeepsTheTenBest) {
    std::string text = "<highscores>\n";
    for (int i = 0; i < 12; i++) {
        text += "<score>\nname = \"n" + std::to_string(i) + "\"\nscore = " + std::to_string(i * 7 % 12 * 10) +
                "\n</score>\n";
    }
    ConfigFile file = ConfigFile::FromMemory(text + "</highscores>\n<score>\nscore = 999\n</score>\n");
    HighScoreTable table;
    EXPECT_TRUE(table.Read(&file));
    EXPECT_EQ(List(table), "n5 110, n10 100, n3 90, n8 80, n1 70, n6 60, n11 50, n4 40, n9 30, n2 20, ");
    ConfigFile none = ConfigFile::FromMemory("<score>\nscore = 999\n</score>\n");
    EXPECT_FALSE(table.Read(&none));
    EXPECT_EQ(List(table), "");
    EXPECT_FALSE(table.Read(nullptr));
}

} // namespace
