// The block writer: layout to the byte, what stays of the old file, and that no moment of a save loses
// anything.
#include "config/config_reader.h"
#include "config/config_writer.h"
#include "platform/file_bytes.h"
#include "support/failing_calls.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <set>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class Writer : public ::testing::Test {
protected:
    TemporaryFolder folder;
};

// What lies in the folder, in the order of the names.
std::string Names() {
    std::set<std::string> sorted;
    for (const auto& entry : fs::directory_iterator("."))
        sorted.insert(entry.path().filename());
    std::string names;
    for (const std::string& name : sorted)
        names += name + ' ';
    return names;
}

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

// One line each, and the file stays what it is.
TEST_F(Writer, AFileThatCannotBeReadOrWrittenIsNeverReplaced) {
    fs::create_directory("folder.cfg");
    fs::create_symlink("loop.cfg", "loop.cfg");
    ASSERT_EQ(mkfifo("pipe.cfg", 0600), 0);
    WriteFile("large.cfg", "<quarvello>\n</quarvello>\n");
    fs::resize_file("large.cfg", platform::FileBytes::MaxSize + 1);
    WriteFile("locked.cfg", "mine");
    fs::permissions("locked.cfg", fs::perms::owner_read);
    for (const std::string name : {"folder.cfg", "loop.cfg", "pipe.cfg", "large.cfg", "locked.cfg"}) {
        const fs::file_type type = fs::symlink_status(name).type();
        std::remove("log.txt");
        SaveScores(name.c_str(), 1, 2);
        EXPECT_EQ(ReadLog(), "INI_Writer::WriteExistantFile [ERROR] - File " + name +
                                 (name == "locked.cfg" ? " is read-only" : " cannot be read") +
                                 ", it stays as it is\n");
        EXPECT_EQ(fs::symlink_status(name).type(), type) << name;
    }
    EXPECT_EQ(fs::file_size("large.cfg"), platform::FileBytes::MaxSize + 1);
    EXPECT_EQ(ReadFile("locked.cfg"), "mine");
    EXPECT_EQ(Names(), "folder.cfg large.cfg locked.cfg log.txt loop.cfg pipe.cfg ");
}

TEST_F(Writer, KeepsTheModeAndWritesThroughLinks) {
    WriteFile("elsewhere/real.cfg", "<quarvello>\n</quarvello>\n");
    fs::permissions("elsewhere/real.cfg", fs::perms(0640));
    fs::create_symlink("real.cfg", "elsewhere/link.cfg");
    fs::create_symlink("elsewhere/link.cfg", "config.cfg");
    SaveScores("config.cfg", 1, 0);
    EXPECT_TRUE(fs::is_symlink("config.cfg"));
    EXPECT_TRUE(fs::is_symlink("elsewhere/link.cfg"));
    EXPECT_NE(ReadFile("elsewhere/real.cfg").find("showgrid = 1"), std::string::npos);
    EXPECT_EQ(fs::status("elsewhere/real.cfg").permissions(), fs::perms(0640));
    umask(027);
    SaveScores("new.cfg", 1, 0);
    umask(022);
    EXPECT_EQ(fs::status("new.cfg").permissions(), fs::perms(0640)) << "as any file that the program makes";
}

TEST_F(Writer, SavesSeveralBlocksInOneStep) {
    WriteFile("config.cfg", "<a>\n  x = 1\n</a>\n; between\n<b>\n</b>\n");
    INI_Writer writer;
    for (const char* block : {"b", "c", "a"}) {
        writer.RewriteBlock("config.cfg", block);
        writer.WriteString(block, "name");
        EXPECT_EQ(ReadFile("config.cfg"), "<a>\n  x = 1\n</a>\n; between\n<b>\n</b>\n");
    }
    writer.Close();
    EXPECT_EQ(ReadFile("config.cfg"), "<a>\n  name = \"a\"\n</a>\n; between\n<b>\n  name = \"b\"\n</b>\n"
                                      "\n<c>\n  name = \"c\"\n</c>\n");
}

// Only what a save that died has left behind is removed.
TEST_F(Writer, PlantedNamesDoNothing) {
    WriteFile("victim", "untouched");
    WriteFile("~tmpconfig.cfg.AbCdE1", "left by a kill");
    WriteFile("~tmpconfig.cfg.AbCdE12", "somebody's");
    fs::create_symlink("victim", "~tmpconfig.cfg.AbCdE2");
    fs::create_symlink("victim", "~tmpconfig.cfg");
    ASSERT_EQ(mkfifo("~tmpconfig.cfg.AbCdE3", 0600), 0);
    WriteFile("config.cfg", "<quarvello>\n");
    fs::create_symlink("victim", "config.cfg.bak");
    SaveScores("config.cfg", 1, 0);
    EXPECT_EQ(ReadFile("victim"), "untouched");
    EXPECT_EQ(ReadFile("config.cfg.bak"), "<quarvello>\n");
    EXPECT_EQ(Names(), "config.cfg config.cfg.bak log.txt victim ~tmpconfig.cfg ~tmpconfig.cfg.AbCdE12 "
                       "~tmpconfig.cfg.AbCdE2 ~tmpconfig.cfg.AbCdE3 ");
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

// Whatever happens at whatever call, the file is the old or the new one, and the next save leaves nothing
// behind.
TEST_F(Writer, EveryCallOfASaveMayFailOrBeTheLast) {
    const auto save = [] { SaveScores("config.cfg", 0, 10); };
    // The second block has no end, so that a copy of the old file is kept first.
    for (const std::string old :
         {"<gui>\n</gui>\n<quarvello>\n</quarvello>\n", "<quarvello>\n<gui>\n</gui>\n"}) {
        WriteFile("config.cfg", old);
        save();
        const std::string saved = ReadFile("config.cfg");
        const bool copied = fs::exists("config.cfg.bak");
        for (const int error : {EIO, EACCES, EMFILE, ENOSPC, Dies}) {
            int call = 1;
            for (bool failed = true; failed; ++call) {
                WriteFile("config.cfg", old);
                fs::remove("config.cfg.bak");
                failed = DoWithFailingCall(save, call, error);
                const std::string found = ReadFile("config.cfg");
                ASSERT_TRUE(found == saved || (failed && found == old))
                    << error << " at call " << call << found;
                ASSERT_TRUE(!copied || found == old || ReadFile("config.cfg.bak") == old)
                    << error << " at call " << call;
                save();
                ASSERT_EQ(ReadFile("config.cfg"), saved);
                ASSERT_EQ(Names(), copied ? "config.cfg config.cfg.bak log.txt " : "config.cfg log.txt ");
            }
            EXPECT_GT(call, 20) << "calls of a save";
        }
    }
}

// Two programs save one block each, over and over, while a third looks.
TEST_F(Writer, TwoProgramsInOneFolderLoseNothingOfEachOther) {
    constexpr int Saves = 100;
    pid_t programs[2];
    for (int& program : programs) {
        program = fork();
        ASSERT_GE(program, 0);
        if (program != 0) continue;
        for (int save = 1; save <= Saves; ++save) {
            INI_Writer writer;
            writer.WriteExistantFile("config.cfg", &program == programs ? "first" : "second");
            writer.WriteInt(save, "save");
        }
        _exit(0);
    }
    for (int running = 2; running > 0;) {
        const ConfigFile file("config.cfg");
        ASSERT_TRUE(file.IsMissing() || file.Content().ends_with("\n</second>\n") ||
                    file.Content().ends_with("\n</first>\n"));
        if (waitpid(-1, nullptr, WNOHANG) > 0) --running;
    }
    ConfigFile file("config.cfg");
    for (const char* block : {"first", "second"}) {
        ASSERT_TRUE(INI_FindBlock(block, &file));
        EXPECT_EQ(INI_ReadInt("save", &file), Saves);
    }
    EXPECT_EQ(Names(), "config.cfg log.txt ");
}

// The child saves one block after the other until it is killed. Each child has saved once before its end
// draws near, and begins with the other block than the one before it, so that both remain.
TEST_F(Writer, AKillAtAnyMomentLeavesTheOldOrTheNewBlock) {
    std::string contents[2];
    for (int showgrid : {0, 1}) {
        SaveScores("config.cfg", showgrid, 10);
        contents[showgrid] = ReadFile("config.cfg");
    }
    std::mt19937 random(3);
    int seen[2] = {0, 0};
    for (int round = 0; round < 1000; ++round) {
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
        usleep(random() % 2000);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string found = ReadFile("config.cfg");
        ASSERT_TRUE(found == contents[0] || found == contents[1]) << "round " << round << found;
        ++seen[found == contents[1]];
    }
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0);
    SaveScores("config.cfg", 1, 10);
    EXPECT_EQ(Names(), "config.cfg log.txt ");
}

} // namespace
