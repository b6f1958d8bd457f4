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
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

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

TEST_F(Writer, AppendsMissingBlocksAndSavesSeveralInOneStep) {
    const std::string old = "<a>\n  x = 1\n</a>\n; end";
    WriteFile("config.cfg", old);
    INI_Writer writer;
    for (const char* block : {"c", "a"}) {
        writer.RewriteBlock("config.cfg", block);
        writer.WriteFloat(0.5F, block);
        EXPECT_EQ(ReadFile("config.cfg"), old);
    }
    // A save under way is finished by the next, and by a bad name, with all that is open in it.
    writer.WriteExistantFile("one.cfg", "b");
    EXPECT_EQ(ReadFile("config.cfg"), "<a>\n  a = 0.500000\n</a>\n; end\n\n<c>\n  c = 0.500000\n</c>\n");
    writer.OpenBlock("outer");
    writer.OpenBlock("inner");
    writer.CloseBlock("never opened");
    writer.CloseBlock("outer");
    writer.WriteExistantFile("two.cfg", "");
    writer.WriteInt(4, "late");
    EXPECT_EQ(ReadFile("one.cfg"), "\n<b>\n  <outer>\n    <inner>\n    </inner>\n\n  </outer>\n\n</b>\n");
    writer.WriteExistantFile("no/such/folder/config.cfg", "a");
    EXPECT_TRUE(Logged("file is not ready!") && Logged("Cannot write to the output file no/such"));
}

TEST_F(Writer, WhateverIsTypedComesBack) {
    std::string typed, back;
    for (int c = 1; c < 256; ++c) {
        typed += static_cast<char>(c);
        back += static_cast<char>(c == '"' ? '\'' : c < 32 || c == 127 ? ' ' : c);
    }
    {
        INI_Writer writer;
        writer.WriteExistantFile("config.cfg", "player");
        writer.WriteString(typed.c_str(), "name");
    }
    ConfigFile file("config.cfg");
    ASSERT_TRUE(INI_FindBlock("player", &file));
    EXPECT_EQ(INI_ReadString("name", &file), back);
}

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
        EXPECT_TRUE(ReadLog().ends_with(name + (name == "locked.cfg" ? " is read-only" : " cannot be read") +
                                        ", it stays as it is\n"));
        EXPECT_EQ(fs::symlink_status(name).type(), type) << name;
    }
    EXPECT_EQ(fs::file_size("large.cfg"), platform::FileBytes::MaxSize + 1);
    EXPECT_EQ(ReadFile("locked.cfg"), "mine");
}

TEST_F(Writer, KeepsTheModeFollowsItsLinksAndNoneThatArePlanted) {
    WriteFile("victim", "untouched");
    WriteFile("elsewhere/real.cfg", "<quarvello>\n");
    fs::permissions("elsewhere/real.cfg", fs::perms(0640));
    fs::create_symlink("elsewhere/real.cfg", "config.cfg");
    const fs::path temporary = "elsewhere/~tmpreal.cfg";
    WriteFile("elsewhere/someone-elses-file1", "");
    WriteFile(temporary.string() + ".AbCdE1", "left by a kill");
    for (const char* planted : {"", ".AbCdE2", ".bak.AbCdE3"})
        fs::create_symlink("../victim", temporary.string() + planted);
    fs::create_symlink("../victim", "elsewhere/real.cfg.bak");
    SaveScores("config.cfg", 1, 0);
    EXPECT_TRUE(fs::is_symlink("config.cfg"));
    EXPECT_EQ(ReadFile("victim"), "untouched");
    fs::current_path("elsewhere");
    EXPECT_EQ(fs::status("real.cfg").permissions(), fs::perms(0640));
    EXPECT_NE(ReadFile("real.cfg").find("showgrid = 1"), std::string::npos);
    EXPECT_EQ(ReadFile("real.cfg.bak"), "<quarvello>\n") << "a block without end swallows what follows it";
    EXPECT_EQ(Names(), "real.cfg real.cfg.bak someone-elses-file1 ~tmpreal.cfg ~tmpreal.cfg.AbCdE2 "
                       "~tmpreal.cfg.bak.AbCdE3 ");
}

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
                ASSERT_TRUE(!copied || found == old || ReadFile("config.cfg.bak") == old) << call;
                save();
                ASSERT_EQ(ReadFile("config.cfg"), saved);
                ASSERT_EQ(Names(), copied ? "config.cfg config.cfg.bak log.txt " : "config.cfg log.txt ");
            }
            EXPECT_GT(call, 20) << "calls of a save";
        }
    }
}

// The other saves a block of its own, over and over; it may just have saved what it had no time to tell.
TEST_F(Writer, KillsAndAnotherProgramLoseNothing) {
    std::mt19937 random(3);
    WriteFile("config.cfg", "<ours>\n</ours>\n<other>\n</other>\n");
    const auto save = [](const char* block, int number) {
        INI_Writer writer;
        writer.WriteExistantFile("config.cfg", block);
        writer.WriteInt(number, "save");
    };
    int last = 0;
    for (int round = 0; round < 300; ++round) {
        int saved[2];
        ASSERT_EQ(pipe(saved), 0);
        const pid_t other = fork();
        if (other == 0) {
            for (int number = last + 1;; ++number) {
                save("other", number);
                if (write(saved[1], &number, sizeof number) != sizeof number) _exit(1);
                usleep(1000); // no game saves without a break
            }
        }
        close(saved[1]);
        ASSERT_EQ(read(saved[0], &last, sizeof last), sizeof last) << "it has saved once";
        save("ours", round);
        for (unsigned more = random() % 4; more > 0; --more)
            ASSERT_EQ(read(saved[0], &last, sizeof last), sizeof last);
        kill(other, SIGKILL);
        waitpid(other, nullptr, 0);
        while (read(saved[0], &last, sizeof last) == sizeof last) {
        }
        close(saved[0]);
        const std::string ours =
            "<ours>\n  save = " + std::to_string(round) + "\n</ours>\n<other>\n  save = ";
        const std::string found = ReadFile("config.cfg");
        const bool untold = found == ours + std::to_string(last + 1) + "\n</other>\n";
        ASSERT_TRUE(untold || found == ours + std::to_string(last) + "\n</other>\n")
            << found << "after " << last;
        last += untold;
    }
    save("ours", 0);
    EXPECT_EQ(Names(), "config.cfg ");
}

} // namespace
