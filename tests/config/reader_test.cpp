// The block reader: what is found, what it reads as, and where the position stands afterwards.
#include "config/config_reader.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <random>
#include <string>
#include <sys/stat.h>

namespace {

ConfigFile Text(std::string_view content) {
    return ConfigFile::FromMemory(content);
}

TEST(Reader, ReadsEveryWayToWriteAKeyLine) {
    ConfigFile file = Text("<video>\n\t WIDTH = 640\nheight=480\nbpp 32\nname = \"Two words\"\nplain = word\n"
                           "open = \"open\nspeed = .5\nsize = x12 34\nsign = -\nhalf = 0.5e1\n</video>\n");
    ASSERT_TRUE(INI_FindBlock("VIDEO", &file));
    EXPECT_EQ(INI_ReadInt("width", &file), 640);
    EXPECT_EQ(INI_ReadInt("Height", &file), 480);
    EXPECT_EQ(INI_ReadInt("bpp", &file), 32);
    EXPECT_STREQ(INI_ReadString("name", &file), "Two words");
    EXPECT_STREQ(INI_ReadString("plain", &file), "");
    EXPECT_STREQ(INI_ReadString("open", &file), "open");
    EXPECT_EQ(INI_ReadFloat("speed", &file), 5.0F) << "every byte before the first digit or sign is skipped";
    EXPECT_EQ(INI_ReadInt("size", &file), 12);
    EXPECT_EQ(INI_ReadInt("sign", &file), 0);
    EXPECT_EQ(INI_ReadFloat("half", &file), 5.0F);
    EXPECT_EQ(INI_ReadInt("wid", &file), 0) << "a key is not found by its beginning";
    EXPECT_TRUE(INI_SkipBlock("video", &file));
}

TEST(Reader, AKeyWithoutValueDoesNotMatchAndTheSearchGoesOn) {
    ConfigFile file = Text("<a>\nwidth=\nwidthx = 5\nwidth = 7\n</a>\n");
    ASSERT_TRUE(INI_FindBlock("a", &file));
    EXPECT_EQ(INI_ReadInt("width", &file), 7);
    EXPECT_STREQ(lineBuffer.data(), "width = 7");
}

TEST(Reader, ClampsNumbersThatDoNotFit) {
    ConfigFile file =
        Text("<a>\nbig = 99999999999999999999\nsmall = -99999999999999999999\nhuge = 1e99\nminus = -1e99\n"
             "inf = +inf\nnan = -nan\n</a>\n");
    ASSERT_TRUE(INI_FindBlock("a", &file));
    EXPECT_EQ(INI_ReadInt("big", &file), INT_MAX);
    EXPECT_EQ(INI_ReadInt("small", &file), INT_MIN);
    EXPECT_EQ(INI_ReadFloat("huge", &file), FLT_MAX);
    EXPECT_EQ(INI_ReadFloat("minus", &file), -FLT_MAX);
    EXPECT_EQ(INI_ReadFloat("inf", &file), 0.0F);
    EXPECT_EQ(INI_ReadFloat("nan", &file), 0.0F);
}

TEST(Reader, TagsStandAloneOnTheirLine) {
    ConfigFile file = Text("<a> ; text behind the tag\n  < b>\n <b>\t \nx = 1\n</b> end\n</B>\ny = 2\n");
    EXPECT_FALSE(INI_FindBlock("a", &file));
    ASSERT_TRUE(INI_FindBlock("b", &file));
    EXPECT_TRUE(INI_SkipBlock("b", &file));
    EXPECT_STREQ(INI_ReadLine(&file), "y = 2");
}

TEST(Reader, PositionsAfterSearches) {
    ConfigFile file = Text(
        "<outer>\nkey = 1\n<item>\nkey = 2\n</item>\n<item>\nlate = 3\n</item>\n</outer>\n<item>\n</item>\n");
    ASSERT_TRUE(INI_FindBlock("outer", &file));
    const std::size_t start = file.Position();
    EXPECT_EQ(INI_ReadInt("late", &file), 0) << "keys behind an inner block's end are not seen";
    EXPECT_FALSE(INI_FindNextBlock("missing", &file));
    EXPECT_STREQ(lineBuffer.data(), "</item>") << "the line that ended the search";
    EXPECT_FALSE(INI_FindKey("missing", &file));
    EXPECT_EQ(file.Position(), start);
    EXPECT_EQ(INI_ReadInt("key", &file), 1);
    int items = 0;
    while (INI_FindNextBlock("item", &file)) {
        ++items;
        EXPECT_TRUE(INI_SkipBlock("item", &file));
    }
    EXPECT_EQ(items, 2) << "the list ends with the outer block";
    EXPECT_TRUE(INI_SkipBlock("outer", &file));
    EXPECT_FALSE(INI_SkipBlock("outer", &file));
    EXPECT_TRUE(file.AtEnd());
    EXPECT_FALSE(INI_FindNextBlock("item", &file)) << "at the end every forward search fails";
    EXPECT_TRUE(INI_FindBlock("outer", &file)) << "a search from the start comes back";
}

TEST(Reader, ListsOfLinesSkipCommentsAndEndAtBlanksAndTags) {
    ConfigFile file = Text("<input>\r\n;first\r\nbind a b\r\n   ; behind blanks\r\n\r\nbind c "
                           "d\r\n</input>\r\nafter\n   \nlast");
    ASSERT_TRUE(INI_FindBlock("input", &file));
    EXPECT_STREQ(INI_ReadLine(&file), "bind a b");
    EXPECT_STREQ(INI_ReadLine(&file), "bind c d");
    EXPECT_STREQ(INI_ReadLine(&file), "");
    EXPECT_STREQ(INI_ReadLine(&file), "after");
    EXPECT_STREQ(INI_ReadLine(&file), "") << "a line of only blanks ends a list";
    EXPECT_STREQ(INI_ReadLine(&file), "last") << "the last line needs no line feed";
    EXPECT_STREQ(INI_ReadLine(&file), "");
}

TEST(Reader, NulBytesEndLinesAndLongLinesAreCut) {
    const std::string content =
        std::string("one\0two\n", 8) + std::string(600, 'x') + "\nkey = 1\n\x80\xff z\x80\n";
    ConfigFile file = Text(content);
    EXPECT_STREQ(INI_NextLine(&file), "one");
    EXPECT_STREQ(INI_NextLine(&file), "two");
    EXPECT_EQ(std::string(INI_NextLine(&file)), std::string(511, 'x'));
    EXPECT_EQ(INI_ReadInt("key", &file), 1);
    EXPECT_STREQ(INI_NextLine(&file), "key = 1");
    EXPECT_STREQ(INI_NextLine(&file), "\x80\xff z");
}

TEST(Reader, TrimsInPlace) {
    char left[] = " \t a b ";
    INI_TrimLeft(left);
    EXPECT_STREQ(left, "a b ");
    char right[] = "a\x80 \r\x7f";
    INI_TrimRight(right);
    EXPECT_STREQ(right, "a");
    char single[] = "\x01";
    INI_TrimRight(single);
    EXPECT_STREQ(single, "\x01") << "a line of one byte is left alone";
}

TEST(Reader, WithoutAFileThereIsNoBlock) {
    ConfigFile closed("no/such/file.cfg");
    EXPECT_FALSE(closed.IsOpen());
    for (ConfigFile* file : {&closed, static_cast<ConfigFile*>(nullptr)}) {
        EXPECT_FALSE(INI_FindBlock("a", file));
        EXPECT_FALSE(INI_FindNextBlock("a", file));
        EXPECT_FALSE(INI_SkipBlock("a", file));
        EXPECT_EQ(INI_ReadInt("a", file), 0);
        EXPECT_STREQ(INI_ReadString("a", file), "");
        EXPECT_STREQ(INI_ReadLine(file), "");
    }
    EXPECT_FALSE(ConfigFile("/").IsOpen()) << "a folder is no file";
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_FALSE(ConfigFile("pipe").IsOpen()) << "nobody writes into it";
}

// A stream reader written down byte by byte, to hold the view-based one against.
std::string NextLineByBytes(const std::string& content, std::size_t& position, bool& end) {
    for (;;) {
        int c = position < content.size() ? static_cast<unsigned char>(content[position++]) : -1;
        if (c == '\n' || c == '\r') continue;
        std::string line;
        while (c > 0 && c != '\n') {
            if (line.size() < ConfigLineLength) line += static_cast<char>(c);
            c = position < content.size() ? static_cast<unsigned char>(content[position++]) : -1;
        }
        if (c == -1) end = true;
        if (!line.empty() && line[0] == ';') continue;
        while (!line.empty() && (line[0] == ' ' || line[0] == '\t'))
            line.erase(0, 1);
        while (line.size() > 1 && (line.back() < 33 || line.back() > 126))
            line.pop_back();
        return line;
    }
}

TEST(Reader, AgreesWithAByteWiseReaderOnRandomFiles) {
    std::mt19937 random(1);
    static constexpr std::string_view Alphabet("a;<>/= \t\n\n\r\"1-\0\x80", 16);
    for (int round = 0; round < 3000; ++round) {
        std::string content;
        for (unsigned length = random() % 60; length > 0; --length)
            content += Alphabet[random() % Alphabet.size()];
        ConfigFile file = Text(content);
        std::size_t position = 0;
        bool end = false;
        for (int line = 0; line < 64 && !end; ++line) {
            const std::string expected = NextLineByBytes(content, position, end);
            ASSERT_EQ(INI_NextLine(&file), expected) << "round " << round << " line " << line;
            ASSERT_EQ(file.AtEnd(), end) << "round " << round << " line " << line;
            ASSERT_EQ(file.Position(), position) << "round " << round << " line " << line;
        }
    }
}

} // namespace
