// The block writer: layout to the byte, what stays of the old file, and that no moment of a save loses
// anything.
#include "config/config_reader.h"
#include "config/config_writer.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class Writer : public ::testing::Test {
protected:
    TemporaryFolder folder;
};

void SaveScores(const char* path, int showgrid, int scores) {
    INI_Writer writer;
    writer.WriteExistantFile(path, "quarvello");
    writer.WriteInt(showgrid, "showgrid");
    writer.OpenBlock("highscores");
    for (int i = 0; i < scores; ++i) {
        writer.OpenBlock("score");
        writer.WriteInt(1200 - i, "score");
        writer.WriteString("Ana Bel", "name");
        writer.CloseBlock("score");
    }
}

TEST_F(Writer, WritesTheLayoutAndKeepsTheRest) {
    WriteFile("config.cfg", "; head\r\n<video>\r\n  width = 1\r\n</video>\r\n<quarvello>\r\n; gone\r\n  old "
                            "= 2\r\n</quarvello>\r\n; tail\r\n"
                            "<gui>\r\n</gui>");
    SaveScores("config.cfg", 1, 1);
    EXPECT_EQ(ReadFile("config.cfg"), "; head\n<video>\n  width = 1\n</video>\n<quarvello>\n"
                                      "  showgrid = 1\n"
                                      "  <highscores>\n"
                                      "    <score>\n"
                                      "      score = 1200\n"
                                      "      name = \"Ana Bel\"\n"
                                      "    </score>\n\n"
                                      "  </highscores>\n\n"
                                      "</quarvello>\n; tail\n<gui>\n</gui>");
    EXPECT_FALSE(std::filesystem::exists("~tmpconfig.cfg"));
}

TEST_F(Writer, AppendsAMissingBlockAndCreatesAMissingFile) {
    WriteFile("config.cfg", "<video>\n</video>");
    {
        INI_Writer writer;
        writer.WriteExistantFile("config.cfg", "gui");
        writer.WriteFloat(0.5F, "left");
    }
    EXPECT_EQ(ReadFile("config.cfg"), "<video>\n</video>\n\n<gui>\n  left = 0.500000\n</gui>\n");
    {
        INI_Writer writer;
        writer.WriteExistantFile("sub.cfg", "a");
        writer.Close();
        writer.WriteInt(1, "late");
    }
    EXPECT_EQ(ReadFile("sub.cfg"), "\n<a>\n</a>\n");
    EXPECT_EQ(
        ReadLog(),
        "INI_Writer::WriteExistantFile [ERROR] - The block gui is not found in file, creating block at the "
        "end of the file config.cfg\n"
        "INI_Writer::WriteExistantFile [ERROR] - File sub.cfg is not found for reading, creating it instead\n"
        "INI_Writer::WriteExistantFile [ERROR] - The block a is not found in file, creating block at the end "
        "of the file sub.cfg\n"
        "INI_Writer::WriteInt [WARNING] - Cannot write value, file is not ready!\n");
}

TEST_F(Writer, RefusesWhatItCannotDoAndChangesNothing) {
    WriteFile("config.cfg", "<a>\n  x = 1\n</a>\n");
    INI_Writer writer;
    writer.WriteExistantFile("", "a");
    writer.WriteExistantFile("config.cfg", nullptr);
    writer.WriteExistantFile("no/such/folder/config.cfg", "a");
    writer.OpenBlock("b");
    writer.CloseBlock("b");
    writer.Close();
    EXPECT_EQ(ReadFile("config.cfg"), "<a>\n  x = 1\n</a>\n");
    EXPECT_TRUE(Logged("The specified blockname (a) or filename () are incorrect\n"));
    EXPECT_TRUE(Logged("Cannot write to the output file no/such/folder/~tmpconfig.cfg\n"));
}

TEST_F(Writer, ClosesInnerBlocksWithTheOuterAndASaveUnderWayWithTheNext) {
    INI_Writer writer;
    writer.WriteExistantFile("one.cfg", "a");
    writer.OpenBlock("outer");
    writer.OpenBlock("inner");
    writer.CloseBlock("never opened");
    writer.CloseBlock("outer");
    writer.WriteInt(3, "x");
    writer.WriteExistantFile("two.cfg", "b");
    writer.Close();
    EXPECT_EQ(ReadFile("one.cfg"),
              "\n<a>\n  <outer>\n    <inner>\n    </inner>\n\n  </outer>\n\n  x = 3\n</a>\n");
    EXPECT_TRUE(Logged("[WARNING] - File ~tmpone.cfg is already opened, closing it\n"));
    // A bad name, too, leaves the writer closed and what was under way finished.
    writer.WriteExistantFile("three.cfg", "c");
    writer.WriteExistantFile("four.cfg", "");
    writer.WriteInt(4, "y");
    EXPECT_EQ(ReadFile("three.cfg"), "\n<c>\n</c>\n");
}

TEST_F(Writer, WhateverIsTypedComesBack) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string name;
        for (unsigned length = 1 + random() % 19; length > 0; --length)
            name += static_cast<char>(1 + random() % 255);
        {
            INI_Writer writer;
            writer.WriteExistantFile("config.cfg", "player");
            writer.WriteString(name.c_str(), "name");
        }
        for (char& c : name) {
            const auto byte = static_cast<unsigned char>(c);
            if (c == '"') c = '\'';
            if (byte < 32 || byte == 127) c = ' ';
        }
        ConfigFile file("config.cfg");
        ASSERT_TRUE(INI_FindBlock("player", &file));
        ASSERT_EQ(INI_ReadString("name", &file), name);
    }
}

TEST_F(Writer, ABlockWithoutItsEndLeavesACopyOfTheOldFile) {
    const std::string damaged = "<gui>\n  left = 1\n<quarvello>\n  showgrid = 1\n</quarvello>\n";
    WriteFile("config.cfg", damaged);
    {
        INI_Writer writer;
        writer.WriteExistantFile("config.cfg", "gui");
    }
    EXPECT_EQ(ReadFile("config.cfg"), "<gui>\n</gui>\n");
    EXPECT_EQ(ReadFile("config.cfg.bak"), damaged);
}

// The child saves one block after the other until it is killed; whatever the moment, the file is whole. Each
// child has saved once before its end draws near, and begins with the other block than the one before it, so
// that both remain.
TEST_F(Writer, AKillAtAnyMomentLeavesTheOldOrTheNewBlock) {
    SaveScores("config.cfg", 0, 10);
    std::mt19937 random(3);
    int both[2] = {0, 0};
    for (int round = 0; round < 220; ++round) {
        int saved[2];
        ASSERT_EQ(pipe(saved), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int save = round + 1;; ++save) {
                SaveScores("config.cfg", save % 2, 10);
                if (save == round + 1 && write(saved[1], "", 1) != 1) _exit(1);
            }
        }
        close(saved[1]);
        char once = 0;
        ASSERT_EQ(read(saved[0], &once, 1), 1);
        close(saved[0]);
        usleep(random() % 4000);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ConfigFile file("config.cfg");
        ASSERT_TRUE(INI_FindBlock("quarvello", &file)) << "round " << round;
        ++both[INI_ReadInt("showgrid", &file) != 0];
        ASSERT_TRUE(INI_FindBlock("highscores", &file));
        int entries = 0;
        for (; INI_FindNextBlock("score", &file); ++entries) {
            ASSERT_EQ(INI_ReadInt("score", &file), 1200 - entries);
            ASSERT_TRUE(INI_SkipBlock("score", &file));
        }
        ASSERT_EQ(entries, 10) << "round " << round;
        ASSERT_TRUE(INI_SkipBlock("highscores", &file));
        ASSERT_TRUE(INI_SkipBlock("quarvello", &file));
    }
    EXPECT_GT(both[0], 0);
    EXPECT_GT(both[1], 0);
}

// A limit on the size of files stands in for a full disk: writing fails in the middle.
TEST_F(Writer, AFullDiskLeavesTheOldFileAndLogsTheError) {
    const std::string old = "<quarvello>\n  showgrid = 1\n</quarvello>\n" + std::string(3000, ';') + "\n";
    WriteFile("config.cfg", old);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {2000, 2000};
        setrlimit(RLIMIT_FSIZE, &limit);
        SaveScores("config.cfg", 0, 10);
        _exit(0);
    }
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadFile("config.cfg"), old);
    EXPECT_FALSE(std::filesystem::exists("~tmpconfig.cfg"));
    EXPECT_TRUE(Logged("INI_Writer::Close [ERROR] - Cannot write the file config.cfg, the old one stays\n"));
}

} // namespace
